#pragma once

#include <QProcess>
#include <QStringList>

// Runs settings_peer, or a copy of it, to its end; what it printed.
inline QString RunPeer(const QStringList& arguments,
                       const QString& program = QStringLiteral(TARVO_SETTINGS_PEER)) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        qFatal("settings_peer: %s", qPrintable(process.errorString()));
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}
