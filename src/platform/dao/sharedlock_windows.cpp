#include "platform/dao/sharedlock.h"

#include <sqlite3.h>

namespace {

// Levels of the engine's locks in between hold the bytes of readers shared, and others that only
// one may.
constexpr int ReservedLevel = 2;
constexpr int ExclusiveLevel = 4;

}  // namespace

void* dao::HandleOfSharedLock(sqlite3* handle) {
    int level = 0;
    void* file = nullptr;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_LOCKSTATE, &level);
    if (level >= ReservedLevel && level < ExclusiveLevel) {
        sqlite3_file_control(handle, "main", SQLITE_FCNTL_WIN32_GET_HANDLE, &file);
    }
    return file;
}
