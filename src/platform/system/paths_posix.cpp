#include "platform/system/paths.h"
#include "platform/system/paths_native.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>

#include <optional>
#include <sys/statvfs.h>

using namespace Qt::StringLiterals;

namespace {

// The names of a folder by their folded form. Of several that differ in case only the first in code
// order, so that the choice does not hang on the order of the directory.
using Listing = QHash<QString, QString>;

Listing ListingOf(const QString& folder) {
    Listing listing;
    const QStringList entries =
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System, QDir::Unsorted);
    listing.reserve(entries.size());
    for (const QString& entry : entries) {
        QString& found = listing[entry.toCaseFolded()];
        if (found.isEmpty() || entry < found) {
            found = entry;
        }
    }
    return listing;
}

// By folder; nothing while nobody wants them kept.
std::optional<QHash<QString, Listing>>& KeptListings() {
    static std::optional<QHash<QString, Listing>> kept;
    return kept;
}

// The entry of `folder` whose name differs from `name` in case only; empty when there is none.
QString EntryOfAnyCase(const QString& folder, const QString& name) {
    auto& kept = KeptListings();
    if (!kept) {
        return ListingOf(folder).value(name.toCaseFolded());
    }
    auto listing = kept->find(folder);
    if (listing == kept->end()) {
        listing = kept->insert(folder, ListingOf(folder));
    }
    const QString entry = listing->value(name.toCaseFolded());
    // What has been renamed or taken away since is not there any more.
    return entry.isEmpty() || QFileInfo::exists(folder + entry) ? entry : QString();
}

// Only called for a name that is not there as written: it may list a directory for each piece.
QString FindOfAnyCase(const QString& native) {
    const QStringList pieces = native.split(u'/');
    QString path = pieces.first();
    for (qsizetype i = 1; i < pieces.size(); ++i) {
        const QString folder = path + u'/';
        QString next = folder + pieces.at(i);
        if (!pieces.at(i).isEmpty() && !QFileInfo::exists(next)) {
            const QString entry = EntryOfAnyCase(folder, pieces.at(i));
            if (entry.isEmpty()) {
                return (QStringList{path} + pieces.mid(i)).join(u'/');
            }
            next = folder + entry;
        }
        path = next;
    }
    return path;
}

}  // namespace

const Qt::CaseSensitivity sys::NameCase = Qt::CaseSensitive;

QString sys::ToNative(const QString& path) {
    QString native = path;
    native.replace(u'\\', u'/');
    if (native.startsWith("C:/"_L1, Qt::CaseInsensitive)) {
        native.remove(0, 2);
    }
    if (native.isEmpty() || QFileInfo::exists(native)) {
        return native;
    }
    if (!native.startsWith(u'/')) {
        return FindOfAnyCase("./"_L1 + native).mid(2);
    }
    return FindOfAnyCase(native);
}

sys::FolderListings::FolderListings() {
    KeptListings().emplace();
}

sys::FolderListings::~FolderListings() {
    KeptListings().reset();
}

QString sys::ToSystem(const QString& path) {
    return ToNative(path);
}

// Only the folder's rights count.
void sys::LetGo(const QString&) {}

QString sys::MachineFolder(const QString& product) {
    const QString folder = u"/etc/"_s + product;
    return QFileInfo(folder).isDir() ? folder : QString();
}

QString sys::UserDataRoot() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

QString sys::SharedMemoryFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return folder.isEmpty() ? QDir::tempPath() : folder;
}

quint32 sys::VolumeSerial(const QString& root) {
    struct statvfs volume = {};
    if (statvfs(QFile::encodeName(ToNative(root)).constData(), &volume) != 0) {
        return 0;
    }
    const quint64 id = volume.f_fsid;
    return static_cast<quint32>(id ^ (id >> 32));
}
