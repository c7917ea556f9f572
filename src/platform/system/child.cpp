#include "platform/system/child.h"

#include "platform/erro.h"

#include <QFileInfo>

#include <cstring>

namespace sys {

Child::Child(const QString& program, const QStringList& arguments,
             std::chrono::milliseconds patience)
    : patience_(patience) {
    if (!QFileInfo(program).isFile()) {
        throw Erro(Erro::FileNotFound);
    }
    process_.setStandardErrorFile(QProcess::nullDevice());
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.start(program, arguments);
    if (!process_.waitForStarted()) {
        throw Erro(Erro::PermissionDenied);
    }
}

Child::~Child() {
    process_.kill();
    process_.waitForFinished();
}

bool Child::Read(char* bytes, qsizetype size) {
    while (size > 0) {
        if (at_ == block_.size()) {
            // What came with the end of the process is still there to be read.
            if (process_.bytesAvailable() == 0 &&
                !process_.waitForReadyRead(static_cast<int>(patience_.count())) &&
                process_.bytesAvailable() == 0) {
                silent_ = process_.state() != QProcess::NotRunning;
                return false;
            }
            block_ = process_.readAllStandardOutput();
            at_ = 0;
            continue;
        }
        const qsizetype piece = std::min(size, block_.size() - at_);
        std::memcpy(bytes, block_.constData() + at_, static_cast<std::size_t>(piece));
        at_ += piece;
        bytes += piece;
        size -= piece;
    }
    return true;
}

}  // namespace sys
