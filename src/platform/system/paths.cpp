#include "platform/system/paths.h"

#include "platform/erro.h"
#include "platform/system/output.h"
#include "platform/system/output_native.h"
#include "platform/system/paths_native.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>

#include <array>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// How long somebody may be at a file: another program that writes or reads it at the same moment.
constexpr auto ToWrite = 3s;
constexpr auto ToRead = 1s;

// 0x80 to 0x9F; the rest of Windows-1252 is Latin-1. Its five empty places keep their control code.
constexpr std::array<char16_t, 32> Windows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

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

QString sys::ToShown(const QString& path) {
    return QDir::toNativeSeparators(ToNative(path));
}

bool sys::IsInside(const QString& folder, const QString& path) {
    QFileInfo there(QDir::cleanPath(ToNative(path)));
    while (!there.exists() && there.path() != there.filePath()) {
        there.setFile(there.path());
    }
    const QString inside = QFileInfo(ToNative(folder)).canonicalFilePath();
    const QString place = there.canonicalFilePath();
    return !inside.isEmpty() &&
           (place.compare(inside, NameCase) == 0 || place.startsWith(inside + u'/', NameCase));
}

QByteArray sys::ReadBytes(const QString& path) {
    const QString native = ToNative(path);
    QFile file(native);
    // Asked about only afterwards: the toolkit's answer can be no while another program puts a new
    // file in place of the old one.
    for (const QDeadlineTimer end(ToRead); !file.open(QIODevice::ReadOnly);) {
        if (!QFileInfo::exists(native)) {
            throw Erro(Erro::FileNotFound);
        }
        if (!AwaitRelease(end)) {
            throw Erro(Erro::PathFileAccess);
        }
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
    for (const QDeadlineTimer end(ToWrite);;) {
        // Has a name of its own beside the old file, and is flushed before it takes over.
        QSaveFile file(native);
        if (!file.open(QIODevice::WriteOnly)) {
            throw Erro(QFileInfo(native).dir().exists() ? Erro::PathFileAccess
                                                        : Erro::PathNotFound);
        }
        if (access == Access::OwnerOnly &&
            !file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
            throw Erro(Erro::PathFileAccess);
        }
        // Flushed here, since the commit would forget why it failed.
        if (file.write(bytes) == bytes.size() && file.flush() && file.commit()) {
            return;
        }
        if (file.error() != QFileDevice::RenameError || !AwaitRelease(end)) {
            throw Erro(WriteFailure(file));
        }
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
    LetGo(file.fileName());
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

QString sys::UserDataFolder() {
    const QString folder = UserDataRoot();
    return !folder.isEmpty() && QDir().mkpath(folder) ? folder : QString();
}
