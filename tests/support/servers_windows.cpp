#include "support/servers.h"

#include <QThread>

namespace {

constexpr int Patience = 60000;  // milliseconds

// The servers of the tests run outside: tests/windows/unit.py looks into this folder for files that
// ask for one, and writes beside each the port of what it has started.
QString Desk() {
    const QString folder = qEnvironmentVariable("TARVO_SERVERS");
    if (folder.isEmpty()) {
        qFatal("TARVO_SERVERS names no folder");
    }
    return folder;
}

}  // namespace

WrongServer::WrongServer(const AnyText& certified) {
    QDir().mkpath(Folder());
    asked_ = Desk() + u'/' + QString::number(QRandomGenerator::global()->generate());
    Write(asked_ + u".part"_s, Folder().toUtf8() + '\n' + folder_.filePath("log"_L1).toUtf8() +
                                   '\n' + certified.toUtf8());
    QFile::rename(asked_ + u".part"_s, asked_ + u".ask"_s);
    for (int waited = 0; port_ == 0; waited += 20) {
        if (waited > Patience) {
            qFatal("the server did not start");
        }
        QThread::msleep(20);
        QFile answer(asked_ + u".port"_s);
        if (answer.open(QIODevice::ReadOnly)) {
            port_ = answer.readAll().trimmed().toInt();
        }
    }
}

// The port goes when nobody answers there any more.
WrongServer::~WrongServer() {
    QFile::remove(asked_ + u".ask"_s);
    for (int waited = 0; waited < Patience && QFile::exists(asked_ + u".port"_s); waited += 20) {
        QThread::msleep(20);
    }
}
