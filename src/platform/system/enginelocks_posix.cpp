#include "platform/system/enginelocks.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <fcntl.h>
#include <limits>
#include <map>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <utility>
#include <vector>

namespace {

// Byte ranges of one file that this process holds, and the one descriptor by which it took them:
// another one of the same file could not let them go, and would be kept out by them.
struct Held {
    int descriptor;
    std::vector<std::pair<off_t, off_t>> ranges;  // beginning and end
};

std::map<std::pair<dev_t, ino_t>, Held> held;

bool LocksByOpenFile(int descriptor, dev_t device) {
    constexpr unsigned Kinds[] = {0xFF534D42, 0xFE534D42, 0x65735546};  // CIFS, SMB2, FUSE
    static std::map<dev_t, bool> known;  // to ask a server each time would take its time
    const auto [entry, isNew] = known.try_emplace(device, false);
    struct statfs system = {};
    if (isNew && fstatfs(descriptor, &system) == 0) {
        entry->second = std::ranges::count(Kinds, static_cast<unsigned>(system.f_type)) > 0;
    }
    return entry->second;
}

bool Set(int descriptor, struct flock range, short type) {
    range.l_type = type;
    return fcntl(descriptor, F_SETLK, &range) == 0;
}

// There one's own shared lock is in the way of an exclusive one, and an exclusive one stays beneath
// a shared one: the old lock goes before the new one comes. Nobody comes between the two, because
// an engine that turns a shared lock into an exclusive one, or back, holds yet another lock that
// keeps newcomers out.
bool Change(int descriptor, const struct flock& range) {
    const short before = range.l_type == F_WRLCK ? F_RDLCK : F_WRLCK;
    if (!Set(descriptor, range, F_UNLCK)) {
        return false;
    }
    if (Set(descriptor, range, range.l_type)) {
        return true;
    }
    const int why = errno;
    Set(descriptor, range, before);
    errno = why;
    return false;
}

int SetLock(int descriptor, struct flock& range) {
    struct stat file = {};
    if (range.l_whence != SEEK_SET || fstat(descriptor, &file) != 0 ||
        !LocksByOpenFile(descriptor, file.st_dev)) {
        return fcntl(descriptor, F_SETLK, &range);
    }
    const auto entry = held.try_emplace({file.st_dev, file.st_ino}, Held{descriptor, {}}).first;
    auto& [through, ranges] = entry->second;
    const std::pair wanted(range.l_start, range.l_len == 0 ? std::numeric_limits<off_t>::max()
                                                           : range.l_start + range.l_len);
    const bool has = std::ranges::count(ranges, wanted) > 0;
    const bool lets = range.l_type == F_UNLCK;
    const bool done = has && !lets ? Change(through, range) : Set(through, range, range.l_type);
    const int why = errno;
    if (done && lets) {
        std::erase_if(ranges, [&wanted](const auto& own) {
            return own.first >= wanted.first && own.second <= wanted.second;
        });
    } else if (done && !has) {
        ranges.push_back(wanted);
    }
    if (ranges.empty()) {
        held.erase(entry);
    }
    errno = why;
    return done ? 0 : -1;
}

int Fcntl(int descriptor, int command, ...) {
    std::va_list rest;
    va_start(rest, command);
    const auto argument = va_arg(rest, std::intptr_t);
    va_end(rest);
    if (command == F_SETLK) {
        return SetLock(descriptor, *reinterpret_cast<struct flock*>(argument));
    }
    return fcntl(descriptor, command, argument);
}

}  // namespace

sys::SystemCall sys::EngineLockCall() {
    return reinterpret_cast<SystemCall>(&Fcntl);
}
