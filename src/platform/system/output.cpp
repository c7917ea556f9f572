#include "platform/system/output.h"

#include "platform/sizes.h"
#include "platform/system/output_native.h"
#include "platform/system/paths.h"
#include "platform/system/paths_native.h"

#include <QFileInfo>
#include <QStorageInfo>

Erro::Code sys::WriteFailure(const QFileDevice& file) {
    if (file.error() == QFileDevice::ResourceError) {
        return Erro::DiskFull;
    }
    // Of a write that was cut short the toolkit does not hand the reason on. What did not fit was
    // less than its buffer or a block.
    constexpr qint64 Little = 64_KiB;
    const QStorageInfo disk(QFileInfo(file.fileName()).path());
    return disk.isValid() && disk.bytesAvailable() < Little ? Erro::DiskFull : Erro::PathFileAccess;
}

sys::Output::Output(const QString& path) : file_(ToNative(path)) {
    if (!OpenOutput(file_)) {
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
    LetGo(target);
    ReplaceNative(source, target);
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
