#include "support/servers.h"

#include <QRegularExpression>

void WrongServer::Put(const AnyText& name, const QByteArray& content) const {
    Write(Folder() + u'/' + name, content);
}

void WrongServer::Clear() const {
    QDir(Folder()).removeRecursively();
    QDir().mkpath(Folder());
    QFile::remove(folder_.filePath("log"_L1));
}

QStringList WrongServer::Requests() const {
    const QString log = folder_.filePath("log"_L1);
    const QString heads = QFile::exists(log) ? sys::ReadText(log) : QString();
    return heads.split("\r\n"_L1).filter(QRegularExpression(u"^(GET|POST) "_s));
}

QString Like(const QString& text, const AnyText& pattern) {
    const QRegularExpression like(
        QRegularExpression::anchoredPattern(
            QRegularExpression::escape(pattern).replace("\\*"_L1, ".*"_L1)),
        QRegularExpression::DotMatchesEverythingOption);
    return like.match(text).hasMatch() ? pattern : text;
}

int FreePort() {
    return WrongServer().Port();
}

ProxySetting::ProxySetting(int port, const QByteArray& scheme) {
    for (const char* name : {"no_proxy", "NO_PROXY", "all_proxy", "ALL_PROXY"}) {
        qunsetenv(name);
    }
    if (port == 0) {
        qunsetenv("http_proxy");
    } else {
        qputenv("http_proxy", scheme + "://127.0.0.1:" + QByteArray::number(port));
    }
}

ProxySetting::~ProxySetting() {
    qunsetenv("http_proxy");
}
