#include "support/servers.h"

#include <QThread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace testing_support {
namespace {

sockaddr_in Loopback(int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(quint16(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

constexpr int Patience = 60000;  // milliseconds

}  // namespace

WrongServer::WrongServer(const AnyText& certified) {
    QDir().mkpath(Folder());
    QStringList arguments = {QStringLiteral(TARVO_SERVER), Folder(), folder_.filePath("log"_L1)};
    if (!certified.isEmpty()) {
        arguments << folder_.filePath(u"certificate"_s) << folder_.filePath(u"key"_s);
        OutputOf("openssl",
                 {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                  "-nodes", "-batch", "-out", arguments.at(3), "-keyout", arguments.at(4),
                  "-addext", u"subjectAltName="_s + certified});
    }
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(u"python3"_s, arguments);
    while (!process_.canReadLine()) {
        if (!process_.waitForReadyRead(Patience)) {
            qFatal("the server did not start");
        }
    }
    port_ = process_.readLine().trimmed().toInt();
}

WrongServer::~WrongServer() {
    process_.closeWriteChannel();
    process_.waitForFinished(Patience);
}

int FreePort() {
    const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = Loopback(0);
    socklen_t size = sizeof address;
    auto* general = reinterpret_cast<sockaddr*>(&address);
    if (bind(descriptor, general, size) != 0 || getsockname(descriptor, general, &size) != 0) {
        qFatal("no free port");
    }
    close(descriptor);
    return ntohs(address.sin_port);
}

bool WaitForPort(int port) {
    for (int waited = 0; waited < Patience; waited += 50) {
        const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address = Loopback(port);
        const bool open =
            connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
        close(descriptor);
        if (open) {
            return true;
        }
        QThread::msleep(50);
    }
    return false;
}

}  // namespace testing_support
