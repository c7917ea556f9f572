#include "platform/system/paths.h"
#include "platform/system/paths_native.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <windows.h>

using namespace Qt::StringLiterals;

const Qt::CaseSensitivity sys::NameCase = Qt::CaseInsensitive;

QString sys::ToNative(const QString& path) {
    return QString(path).replace(u'\\', u'/');
}

// Nothing to keep: the file system itself finds names without regard to case.
sys::FolderListings::FolderListings() = default;
sys::FolderListings::~FolderListings() = default;

// Behind the prefix a path may be longer than 260 characters, but must be whole and plain. One that
// gets near it has it already, because the engine and we ourselves hang endings on it.
QString sys::ToSystem(const QString& path) {
    constexpr qsizetype Long = 240;
    const QString whole =
        QDir::toNativeSeparators(QDir::cleanPath(QFileInfo(ToNative(path)).absoluteFilePath()));
    if (whole.size() < Long || whole.startsWith("\\\\?\\"_L1)) {
        return whole;
    }
    return whole.startsWith("\\\\"_L1) ? u"\\\\?\\UNC"_s + whole.mid(1) : u"\\\\?\\"_s + whole;
}

// A read-only file refuses to be deleted or replaced.
void sys::LetGo(const QString& native) {
    QFile file(native);
    file.setPermissions(file.permissions() | QFileDevice::WriteUser);
}

QString sys::MachineFolder(const QString& product) {
    const QString folder = qEnvironmentVariable("ProgramData") + u'/' + product;
    return QFileInfo(folder).isDir() ? folder : QString();
}

// Of this computer alone: a profile that travels must not carry what is bound to it.
QString sys::UserDataRoot() {
    const QString told = qEnvironmentVariable("LOCALAPPDATA");
    return !told.isEmpty() ? QDir::fromNativeSeparators(told)
                           : QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

QString sys::SharedMemoryFolder() {
    return QDir::tempPath();
}

quint32 sys::VolumeSerial(const QString& root) {
    DWORD serial = 0;
    const std::wstring native = QDir::toNativeSeparators(ToNative(root)).toStdWString();
    return GetVolumeInformationW(native.c_str(), nullptr, 0, &serial, nullptr, nullptr, nullptr, 0)
               ? serial
               : 0;
}
