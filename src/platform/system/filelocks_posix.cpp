#include "platform/system/filelocks_native.h"

#include <cerrno>
#include <fcntl.h>

// A lock that belongs to the open file instead of the process.
sys::Outcome sys::TryLock(const QFile& file) {
    struct flock range = {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_start = ProbedByte;
    range.l_len = 1;
    if (fcntl(file.handle(), F_OFD_SETLK, &range) == 0) {
        return Outcome::Granted;
    }
    return errno == EAGAIN || errno == EACCES ? Outcome::Taken : Outcome::Impossible;
}
