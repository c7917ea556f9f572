#include "platform/system/filelocks.h"

#include "platform/system/filelocks_native.h"
#include "platform/system/paths.h"

#include <QFile>
#include <QFileInfo>
#include <QList>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

// The kernel writes blanks, tabs, line ends and backslashes in a path as "\040".
QString Unescaped(const QByteArray& field) {
    QByteArray path;
    for (qsizetype i = 0; i < field.size(); ++i) {
        bool octal = false;
        const int code = field.mid(i + 1, 3).toInt(&octal, 8);
        if (field.at(i) == '\\' && octal) {
            path += char(code);
            i += 3;
        } else {
            path += field.at(i);
        }
    }
    return QString::fromUtf8(path);
}

// There a lock may be another computer's, and the number that of one of its processes.
bool IsOfManyComputers(const QString& type) {
    static constexpr QLatin1StringView Types[] = {"nfs"_L1,  "cifs"_L1,          "smb"_L1,
                                                  "9p"_L1,   "ceph"_L1,          "ocfs2"_L1,
                                                  "gfs2"_L1, "fuse.glusterfs"_L1};
    return std::any_of(std::begin(Types), std::end(Types),
                       [&](QLatin1StringView known) { return type.startsWith(known); });
}

bool LiesBelow(const QString& path, const QString& folder) {
    return path == folder || folder == "/"_L1 || path.startsWith(folder + u'/');
}

}  // namespace

// Each line: "36 35 98:0 / /srv/dados rw,noatime shared:1 - cifs //casa/dados rw,nobrl". A later
// mount hides an earlier one on the same folder.
sys::Mount sys::MountIn(const QByteArray& mountinfo, const QString& path) {
    Mount found;
    QString deepest;
    for (const QByteArray& line : mountinfo.split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        const qsizetype dash = fields.indexOf("-");
        if (dash < 6 || fields.size() < dash + 4) {
            continue;
        }
        const QString folder = Unescaped(fields.at(4));
        if (!LiesBelow(path, folder) || folder.size() < deepest.size()) {
            continue;
        }
        deepest = folder;
        found.type = QString::fromUtf8(fields.at(dash + 1));
        found.options = QString::fromUtf8(fields.at(5) + ',' + fields.at(dash + 3)).split(u',');
    }
    return found;
}

sys::Mount sys::MountOf(const QString& path) {
    QFile table(u"/proc/self/mountinfo"_s);
    if (!table.open(QIODevice::ReadOnly)) {
        return {};
    }
    return MountIn(table.readAll(), QFileInfo(ToNative(path)).canonicalFilePath());
}

QString sys::LocalLocksOption(const Mount& mount) {
    struct Rule {
        QLatin1StringView type;  // the beginning of the file system's name
        QLatin1StringView option;
    };
    static constexpr Rule Rules[] = {
        {"cifs"_L1, "nobrl"_L1},
        {"cifs"_L1, "nolock"_L1},
        {"smb"_L1, "nobrl"_L1},
        {"smb"_L1, "nolock"_L1},
        {"nfs"_L1, "nolock"_L1},
        {"nfs"_L1, "local_lock=all"_L1},
        {"nfs"_L1, "local_lock=posix"_L1},
    };
    for (const Rule& rule : Rules) {
        if (mount.type.startsWith(rule.type) && mount.options.contains(rule.option)) {
            return rule.option;
        }
    }
    return {};
}

sys::LockAnswer sys::ProbeLock(const QString& path) {
    const QString native = ToNative(path);
    QFile first(native);
    QFile second(native);
    constexpr auto Existing = QIODevice::ReadWrite | QIODevice::ExistingOnly;
    if (!first.open(Existing) || !second.open(Existing)) {
        return LockAnswer::Unknown;
    }
    switch (TryLock(first)) {
        case Outcome::Impossible:
            return LockAnswer::Refused;
        case Outcome::Taken:
            return LockAnswer::Kept;  // by somebody who probes at this very moment
        case Outcome::Granted:
            break;
    }
    return TryLock(second) == Outcome::Granted ? LockAnswer::Ignored : LockAnswer::Kept;
}

std::optional<sys::LockHolder> sys::FindLock(const QString& path, void* own, qint64 from,
                                             qint64 bytes) {
    const std::optional<qint64> process = ProcessThatLocks(ToNative(path), own, from, bytes);
    if (!process) {
        return std::nullopt;
    }
    return IsOfManyComputers(MountOf(path).type) ? LockHolder() : DescribeProcess(*process);
}
