#pragma once

namespace sys {

// What a database engine is to call in place of fcntl(2), so that its locks hold on file systems
// that keep them by open file instead of by process: SMB's, and whatever is mounted by a user's
// program. Null where the system's own locks will do. For engines that lock, as SQLite does, a
// range shared first and exclusively later, wait for nothing, and keep a file open while it holds a
// lock.
using SystemCall = void (*)();
SystemCall EngineLockCall();

}  // namespace sys
