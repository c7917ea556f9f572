#include "platform/erro.h"
#include "platform/system/output_native.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

// Who has a file open there stands in nobody's way.
bool sys::AwaitRelease(const QDeadlineTimer&) {
    return false;
}

bool sys::OpenOutput(QFile& file) {
    return file.open(QIODevice::WriteOnly);
}

void sys::FlushNative(const QString& path) {
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
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

void sys::ReplaceNative(const QString& from, const QString& to) {
    std::error_code error;
    std::filesystem::rename(QFileInfo(from).filesystemFilePath(),
                            QFileInfo(to).filesystemFilePath(), error);
    if (error) {
        const bool refused =
            error == std::errc::permission_denied || error == std::errc::operation_not_permitted;
        throw Erro(refused ? Erro::PermissionDenied : Erro::PathFileAccess);
    }
}
