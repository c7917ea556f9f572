#include "support/servers.h"

#include <QRandomGenerator>
#include <QThread>

#include <winsock2.h>

namespace testing_support {
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

bool IsOpen(int port) {
    [[maybe_unused]] static const int started = [] {
        WSADATA data;
        return WSAStartup(MAKEWORD(2, 2), &data);
    }();
    const SOCKET descriptor = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(quint16(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool open =
        connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    closesocket(descriptor);
    return open;
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

WrongServer::~WrongServer() {
    QFile::remove(asked_ + u".ask"_s);
}

int FreePort() {
    int port = 0;
    do {
        port = QRandomGenerator::global()->bounded(20000, 30000);
    } while (IsOpen(port));
    return port;
}

bool WaitForPort(int port) {
    for (int waited = 0; waited < Patience; waited += 50) {
        if (IsOpen(port)) {
            return true;
        }
        QThread::msleep(50);
    }
    return false;
}

}  // namespace testing_support
