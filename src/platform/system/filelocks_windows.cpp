#include "platform/system/filelocks_native.h"

#include <io.h>
#include <windows.h>

namespace {

OVERLAPPED PlaceOf(qint64 from) {
    OVERLAPPED place = {};
    place.Offset = DWORD(from & 0xFFFFFFFF);
    place.OffsetHigh = DWORD(from >> 32);
    return place;
}

bool Lock(HANDLE file, qint64 from, qint64 bytes, DWORD kind) {
    OVERLAPPED place = PlaceOf(from);
    return LockFileEx(file, kind | LOCKFILE_FAIL_IMMEDIATELY, 0, DWORD(bytes), 0, &place);
}

bool Unlock(HANDLE file, qint64 from, qint64 bytes) {
    OVERLAPPED place = PlaceOf(from);
    return UnlockFileEx(file, 0, DWORD(bytes), 0, &place);
}

}  // namespace

sys::Outcome sys::TryLock(const QFile& file) {
    if (Lock(HANDLE(_get_osfhandle(file.handle())), ProbedByte, 1, LOCKFILE_EXCLUSIVE_LOCK)) {
        return Outcome::Granted;
    }
    const DWORD reason = GetLastError();
    return reason == ERROR_LOCK_VIOLATION || reason == ERROR_IO_PENDING ? Outcome::Taken
                                                                        : Outcome::Impossible;
}

// One's own shared lock would be in the way of the exclusive one, and goes for that moment. Should
// it not come back, from a share that is gone, the other bytes still keep every writer out.
std::optional<qint64> sys::ProcessThatLocks(const QString&, void* own, qint64 from, qint64 bytes) {
    constexpr DWORD Shared = 0;
    if (own == nullptr || !Unlock(own, from, bytes)) {
        return std::nullopt;
    }
    const bool alone = Lock(own, from, bytes, LOCKFILE_EXCLUSIVE_LOCK);
    if (alone) {
        Unlock(own, from, bytes);
    }
    Lock(own, from, bytes, Shared);
    return alone ? std::nullopt : std::optional<qint64>(0);
}

sys::LockHolder sys::DescribeProcess(qint64) {
    return {};
}
