#pragma once

#include <QByteArray>
#include <QString>

namespace sys::http {

// A path as it goes into an address: what is not allowed there is escaped as UTF-8. An escape that
// is there already stays, since base addresses come escaped and file names do not.
QByteArray EscapePath(const QString& path);

// Host and port of the proxy that the environment names for http; empty without one.
QString ProxyOfTheSystem();

}  // namespace sys::http
