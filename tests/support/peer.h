#pragma once

#include "support/test.h"

#include <QCoreApplication>

// Plays another computer that shares the catalogue: a process that does what it is told, line by
// line, and answers each line with one, "erro N" for an Erro. It opens its data folder first;
// without one it prints where it would look for it.
//   lock True|False   what BloquearBancoDados() says
//   value QUERY       the first value
//   hold QUERY        begins to read and does not come to the end
//   run STATEMENT
//   loop STATEMENT    again and again, until somebody ends the process
int PlayPeer(int argc, char** argv);
[[maybe_unused]] static const bool peer_of_a_copy = RegisterProgram("peer", PlayPeer);

class Peer {
public:
    explicit Peer(const QString& folder, const QStringList& through = {}) {
        QStringList command = through;
        command << QCoreApplication::applicationFilePath() << List("--play", "peer") << folder;
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
