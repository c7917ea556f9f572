#include "platform/system/paths.h"

#include "platform/erro.h"
#include "platform/system/output.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStorageInfo>

#include <array>
#include <optional>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <sys/statvfs.h>
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr bool HasDrives =
#ifdef Q_OS_WIN
    true;
#else
    false;
#endif

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

// 0x80 to 0x9F; the rest of Windows-1252 is Latin-1. Its five empty places keep their control code.
constexpr std::array<char16_t, 32> Windows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

QString sys::ToNative(const QString& path) {
    QString native = path;
    native.replace(u'\\', u'/');
    if constexpr (HasDrives) {
        return native;
    }
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

// Asks for the access right instead of opening: where closing any descriptor of a file drops all
// the locks that this process holds on it, a trial opening would unlock an open catalogue.
bool sys::CanRead(const QString& path) {
    const QFileInfo info(ToNative(path));
    return info.exists() && !info.isDir() && info.isReadable();
}

bool sys::Exists(const QString& path) {
    return QFileInfo::exists(ToNative(path));
}

bool sys::SameVolume(const QString& folder, const QString& other) {
    return QStorageInfo(ToNative(folder)).rootPath() == QStorageInfo(ToNative(other)).rootPath();
}

sys::FolderListings::FolderListings() {
    KeptListings().emplace();
}

sys::FolderListings::~FolderListings() {
    KeptListings().reset();
}

QString sys::ToShown(const QString& path) {
    return QDir::toNativeSeparators(ToNative(path));
}

bool sys::IsInside(const QString& folder, const QString& path) {
    QFileInfo there(QDir::cleanPath(ToNative(path)));
    while (!there.exists() && !there.isRoot()) {
        there.setFile(there.path());
    }
    const QString inside = QFileInfo(ToNative(folder)).canonicalFilePath();
    const QString place = there.canonicalFilePath();
    return !inside.isEmpty() && (place == inside || place.startsWith(inside + u'/'));
}

QByteArray sys::ReadBytes(const QString& path) {
    const QString native = ToNative(path);
    QFile file(native);
    // Asked about only afterwards: the toolkit's answer can be no while another program puts a new
    // file in place of the old one.
    if (!file.open(QIODevice::ReadOnly)) {
        throw Erro(QFileInfo::exists(native) ? Erro::PathFileAccess : Erro::FileNotFound);
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        throw Erro(Erro::PathFileAccess);
    }
    return bytes;
}

QString sys::DecodeText(const QByteArray& bytes) {
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : DecodeWindows1252(bytes);
}

QString sys::DecodeWindows1252(const QByteArray& bytes) {
    QString text = QString::fromLatin1(bytes);
    for (QChar& character : text) {
        if (character >= u'\x80' && character <= u'\x9f') {
            character = Windows1252.at(character.unicode() - 0x80);
        }
    }
    return text;
}

QString sys::ReadText(const QString& path) {
    return DecodeText(ReadBytes(path));
}

void sys::WriteWhole(const QString& path, const QByteArray& bytes, Access access) {
    const QString native = ToNative(path);
    QSaveFile file(native);  // a name of its own beside the old file, flushed before it takes over
    if (!file.open(QIODevice::WriteOnly)) {
        throw Erro(QFileInfo(native).dir().exists() ? Erro::PathFileAccess : Erro::PathNotFound);
    }
    if (access == Access::OwnerOnly &&
        !file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
        throw Erro(Erro::PathFileAccess);
    }
    // Flushed here, since the commit would forget why it failed.
    if (file.write(bytes) != bytes.size() || !file.flush() || !file.commit()) {
        throw Erro(WriteFailure(file));
    }
}

void sys::Delete(const QString& path) {
    QFile file(ToNative(path));
    if (!file.exists()) {
        throw Erro(Erro::FileNotFound);
    }
    if (QFileInfo(file).isDir()) {
        throw Erro(Erro::PathFileAccess);
    }
    if constexpr (HasDrives) {
        // There a read-only file refuses to go; elsewhere only the folder's rights count.
        file.setPermissions(file.permissions() | QFileDevice::WriteUser);
    }
    if (!file.remove()) {
        throw Erro(Erro::PermissionDenied);
    }
}

void sys::MakeDirectory(const QString& path) {
    const QString native = ToNative(path);
    if (QDir().mkdir(native)) {
        return;
    }
    const bool parentMissing = !QFileInfo::exists(QFileInfo(QDir::cleanPath(native)).path());
    throw Erro(parentMissing ? Erro::PathNotFound : Erro::PathFileAccess);
}

QString sys::ProgramFolder() {
    return QCoreApplication::applicationDirPath();
}

QString sys::MachineFolder(const QString& product) {
    const QString base = HasDrives ? qEnvironmentVariable("ProgramData") : u"/etc"_s;
    const QString folder = base + u'/' + product;
    return QFileInfo(folder).isDir() ? folder : QString();
}

QString sys::UserDataFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return !folder.isEmpty() && QDir().mkpath(folder) ? folder : QString();
}

quint32 sys::VolumeSerial(const QString& root) {
#ifdef Q_OS_WIN
    DWORD serial = 0;
    const std::wstring native = QDir::toNativeSeparators(ToNative(root)).toStdWString();
    return GetVolumeInformationW(native.c_str(), nullptr, 0, &serial, nullptr, nullptr, nullptr, 0)
               ? serial
               : 0;
#else
    struct statvfs volume = {};
    if (statvfs(QFile::encodeName(ToNative(root)).constData(), &volume) != 0) {
        return 0;
    }
    const quint64 id = volume.f_fsid;
    return static_cast<quint32>(id ^ (id >> 32));
#endif
}
