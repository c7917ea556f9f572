#include "support/servers.h"

namespace testing_support {
namespace {

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

// The interpreter that serves knows sockets.
int FreePort() {
    return OutputOf("python3", {"-c",
                                "import socket; s = socket.create_server(('127.0.0.1', 0)); "
                                "print(s.getsockname()[1])"})
        .toInt();
}

bool WaitForPort(int port) {
    const QString tries =
        u"import socket, time\n"
        "while socket.socket().connect_ex(('127.0.0.1', %1)): time.sleep(.05)"_s;
    QProcess process;
    process.start(u"python3"_s, {u"-c"_s, tries.arg(port)});
    return process.waitForFinished(Patience);
}

}  // namespace testing_support
