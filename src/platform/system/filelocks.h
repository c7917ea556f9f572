#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

// Whether a lock on a file keeps other computers out. Path texts as in paths.h.
namespace sys {

// Where a path lies, as the system tells it; empty where it tells nothing.
struct Mount {
    QString type;         // "ext4", "cifs", "nfs4"
    QStringList options;  // those of the mount and those of the file system
};
Mount MountOf(const QString& path);
// The same out of a text in the form of Linux's /proc/self/mountinfo; `path` is absolute.
Mount MountIn(const QByteArray& mountinfo, const QString& path);

// The option of that mount that lets locks end at this computer ("nobrl", "nolock", "local_lock"),
// empty without one.
QString LocalLocksOption(const Mount& mount);

enum class LockAnswer {
    Kept,     // a lock that is held is refused to another
    Ignored,  // it is granted twice
    Refused,  // it is granted to nobody: the file system has no locks, or its lock service is away
    Unknown,  // the file cannot be opened for writing
};
// Takes a lock on a byte of an existing file that nobody else uses, twice, and lets it go again.
// The content is left alone. Not for a file that this process has open as a database: closing it
// here would let go the locks that the engine holds of it.
LockAnswer ProbeLock(const QString& path);

// Who holds a lock; both empty where the system can't tell, as of another computer's: neither SMB
// nor NFS carries its name, and who only reads leaves nothing in the folder that would hold it.
struct LockHolder {
    QString program;
    QString user;
    friend bool operator==(const LockHolder&, const LockHolder&) = default;
};
// The holder of a lock, of another process, on these bytes of a file, that would keep this one from
// writing there; nothing where there is none. The file stays open to this process until its end:
// closing it would let go the locks that a database engine holds of it.
// Windows tells of no lock. There `own` is tried, a handle that holds the bytes shared and, by a
// lock of other bytes, keeps every other writer out: for a moment it holds them alone. Null, and
// there is no answer. Any other open file counts there as another process.
std::optional<LockHolder> FindLock(const QString& path, void* own, qint64 from, qint64 bytes);

}  // namespace sys
