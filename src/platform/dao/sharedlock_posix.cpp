#include "platform/dao/sharedlock.h"

void* dao::HandleOfSharedLock(sqlite3* /*handle*/) {
    return nullptr;
}
