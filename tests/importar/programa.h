#pragma once

#include "support/test.h"

namespace testing_support {

// What a program says, behind its exit code and a blank.
inline QString SaidBy(const QString& program, const AnyTexts& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished(-1);
    return QString::number(process.exitCode()) + u' ' + QString::fromUtf8(process.readAll());
}

// The same of a shell that may mount disks, with what is left in `folder` then on lines behind it;
// nothing where the system lets nobody have disks of his own.
inline QString SaidAlone(const QString& command, const QString& folder) {
    const QStringList alone = List("--user", "--map-root-user", "--mount");
    if (QProcess::execute(u"unshare"_s, alone + List("true")) != 0) {
        return {};
    }
    return SaidBy(u"unshare"_s,
                  alone + List("sh", "-c", command + u"; echo \" $?\"; ls -A '%1'"_s.arg(folder)));
}

}  // namespace testing_support
