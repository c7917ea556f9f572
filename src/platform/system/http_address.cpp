#include "platform/system/http_address.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace sys::http {
namespace {

bool IsHex(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

}  // namespace

QByteArray EscapePath(const QString& path) {
    const QByteArray bytes = path.toUtf8();
    QByteArray escaped;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const char c = bytes.at(i);
        const bool isEscape =
            c == '%' && i + 2 < bytes.size() && IsHex(bytes.at(i + 1)) && IsHex(bytes.at(i + 2));
        escaped +=
            isEscape ? QByteArray(1, c) : QByteArray(1, c).toPercentEncoding("/?=&:@!$'()*+,;");
    }
    return escaped;
}

QString ProxyOfTheSystem() {
    for (const char* variable : {"http_proxy", "all_proxy", "ALL_PROXY"}) {
        QString address = qEnvironmentVariable(variable);
        if (address.isEmpty()) {
            continue;
        }
        if (!address.contains("://"_L1)) {
            address.prepend("http://"_L1);
        }
        const QUrl url(address);
        return url.port() < 0 ? url.host() : url.host() + u':' + QString::number(url.port());
    }
    return {};
}

}  // namespace sys::http
