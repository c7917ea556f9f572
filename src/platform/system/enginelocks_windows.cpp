#include "platform/system/enginelocks.h"

sys::SystemCall sys::EngineLockCall() {
    return nullptr;
}
