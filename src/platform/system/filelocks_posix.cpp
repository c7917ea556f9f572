#include "platform/system/filelocks_native.h"

#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <unordered_map>

using namespace Qt::StringLiterals;

namespace {

// Never closed, as filelocks.h says.
int OpenForQuestions(const QString& native) {
    static auto* descriptors = new std::unordered_map<QString, int>;
    const auto entry = descriptors->try_emplace(native, -1).first;
    if (entry->second < 0) {
        entry->second = open(QFile::encodeName(native).constData(), O_RDONLY | O_CLOEXEC);
    }
    return entry->second;
}

}  // namespace

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

std::optional<qint64> sys::ProcessThatLocks(const QString& native, void* /*own*/, qint64 from,
                                            qint64 bytes) {
    struct flock range = {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_start = from;
    range.l_len = bytes;
    const int descriptor = OpenForQuestions(native);
    if (descriptor < 0 || fcntl(descriptor, F_GETLK, &range) != 0 || range.l_type == F_UNLCK) {
        return std::nullopt;
    }
    return range.l_pid;
}

sys::LockHolder sys::DescribeProcess(qint64 process) {
    const QString folder = u"/proc/%1"_s.arg(process);
    QFile name(folder + u"/comm"_s);
    if (process <= 0 || !name.open(QIODevice::ReadOnly)) {
        return {};
    }
    return {QString::fromUtf8(name.readAll()).trimmed(), QFileInfo(folder).owner()};
}
