#include "platform/system/filelocks_native.h"

#include <io.h>
#include <windows.h>

sys::Outcome sys::TryLock(const QFile& file) {
    OVERLAPPED place = {};
    place.Offset = DWORD(ProbedByte & 0xFFFFFFFF);
    place.OffsetHigh = DWORD(ProbedByte >> 32);
    if (LockFileEx(HANDLE(_get_osfhandle(file.handle())),
                   LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) {
        return Outcome::Granted;
    }
    const DWORD reason = GetLastError();
    return reason == ERROR_LOCK_VIOLATION || reason == ERROR_IO_PENDING ? Outcome::Taken
                                                                        : Outcome::Impossible;
}

// The system doesn't tell, and would count the locks of this very program among the others.
std::optional<qint64> sys::ProcessThatLocks(const QString&, qint64, qint64) {
    return std::nullopt;
}

sys::LockHolder sys::DescribeProcess(qint64) {
    return {};
}
