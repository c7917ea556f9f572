#include "platform/system/output.h"

#include "platform/system/paths.h"

#include <QFileInfo>
#include <QStorageInfo>

#include <filesystem>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

#ifdef Q_OS_WIN

// A folder's names need no flush of their own there.
void FlushNative(const QString& native) {
    QFile file(native);
    if (QFileInfo(file).isDir()) {
        return;
    }
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) || _commit(file.handle()) != 0) {
        throw Erro(Erro::PathFileAccess);
    }
}

#else

void FlushNative(const QString& native) {
    const int descriptor = open(QFile::encodeName(native).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        throw Erro(Erro::PathFileAccess);
    }
    const int failure = fsync(descriptor) == 0 ? 0 : errno;
    close(descriptor);
    // EINVAL: a file system of the network that cannot do more than it does anyway.
    if (failure != 0 && failure != EINVAL) {
        throw Erro(failure == ENOSPC ? Erro::DiskFull : Erro::PathFileAccess);
    }
}

#endif

}  // namespace

Erro::Code sys::WriteFailure(const QFileDevice& file) {
    if (file.error() == QFileDevice::ResourceError) {
        return Erro::DiskFull;
    }
    // Of a write that was cut short the toolkit does not hand the reason on. What did not fit was
    // less than its buffer or a block.
    constexpr qint64 Little = 64 * 1024;
    const QStorageInfo disk(QFileInfo(file.fileName()).path());
    return disk.isValid() && disk.bytesAvailable() < Little ? Erro::DiskFull : Erro::PathFileAccess;
}

sys::Output::Output(const QString& path) : file_(ToNative(path)) {
    if (!file_.open(QIODevice::WriteOnly)) {
        throw Erro(WriteFailure(file_));
    }
}

void sys::Output::Write(const char* bytes, qsizetype size) {
    if (file_.write(bytes, size) != size) {
        throw Erro(WriteFailure(file_));
    }
}

void sys::Output::Close() {
    if (!file_.flush()) {
        throw Erro(WriteFailure(file_));
    }
    file_.close();
}

void sys::Flush(const QString& path) {
    const QString native = ToNative(path);
    if (!QFileInfo::exists(native)) {
        throw Erro(Erro::FileNotFound);
    }
    FlushNative(native);
}

void sys::Replace(const QString& from, const QString& to) {
    const QString source = ToNative(from);
    const QString target = ToNative(to);
    if (!QFileInfo::exists(source)) {
        throw Erro(Erro::FileNotFound);
    }
    if (QFileInfo(target).isDir()) {
        throw Erro(Erro::PathFileAccess);
    }
#ifdef Q_OS_WIN
    // There a read-only file refuses to be replaced.
    QFile(target).setPermissions(QFile(target).permissions() | QFileDevice::WriteUser);
#endif
    std::error_code error;
    std::filesystem::rename(QFileInfo(source).filesystemFilePath(),
                            QFileInfo(target).filesystemFilePath(), error);
    if (error) {
        const bool refused =
            error == std::errc::permission_denied || error == std::errc::operation_not_permitted;
        throw Erro(refused ? Erro::PermissionDenied : Erro::PathFileAccess);
    }
}

void sys::MakeExecutable(const QString& path) {
    QFile file(ToNative(path));
    if (!file.exists()) {
        throw Erro(Erro::FileNotFound);
    }
    const QFileDevice::Permissions rights = QFileDevice::ExeOwner | QFileDevice::ExeUser |
                                            QFileDevice::ExeGroup | QFileDevice::ExeOther;
    if (!file.setPermissions(file.permissions() | rights)) {
        throw Erro(Erro::PermissionDenied);
    }
}
