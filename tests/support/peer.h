#pragma once

#include "support/test.h"

#include <QProcess>

// Another computer; tests/session/peer.cpp tells for what it can be told.
class Peer {
public:
    explicit Peer(const QString& folder, const QStringList& through = {}) {
        QStringList command = through;
        command << QStringLiteral(TARVO_PEER) << folder;
        process_.start(command.takeFirst(), command);
        opened_ = Answer();
    }
    ~Peer() { Kill(); }

    const QString& Opened() const { return opened_; }

    void Tell(const AnyText& line) { process_.write(line.toUtf8() + '\n'); }

    QString Answer() {
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(60000)) {
                return u"no answer"_s;
            }
        }
        return QString::fromUtf8(process_.readLine()).trimmed();
    }

    QString Ask(const AnyText& line) {
        Tell(line);
        return Answer();
    }

    // Asleep in the middle of whatever it does.
    void Stop() {
        QProcess::execute(u"kill"_s, {u"-STOP"_s, QString::number(process_.processId())});
    }

    // As a power cut would: nothing is let go in order.
    void Kill() {
        process_.kill();
        process_.waitForFinished();
    }

private:
    QProcess process_;
    QString opened_;
};
