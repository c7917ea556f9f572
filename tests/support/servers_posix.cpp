#include "support/servers.h"

constexpr int Patience = 60000;  // milliseconds

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
