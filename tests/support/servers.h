#pragma once

#include "support/test.h"

// Servers on the loopback for the time of a test. Each is reached as the system's proxy: the
// program speaks to port 80 only, which a test cannot have.
// server.py, with the files of a folder and all its ways of doing wrong.
class WrongServer {
public:
    // With the name that a certificate of its own gives it ("IP:127.0.0.1"), it speaks TLS.
    explicit WrongServer(const AnyText& certified = {});
    ~WrongServer();

    QString Folder() const { return folder_.filePath(u"www"_s); }
    // Writes a file below Folder().
    void Put(const AnyText& name, const QByteArray& content) const;
    // Takes files and noted requests away again.
    void Clear() const;
    int Port() const { return port_; }
    // First lines of the requests so far.
    QStringList Requests() const;

private:
    QTemporaryDir folder_;
    QProcess process_;
    QString asked_;  // where servers are asked for by a file
    int port_ = 0;
};

// The environment's proxy, for the life of the object; port 0 for none.
class ProxySetting {
public:
    explicit ProxySetting(int port, const QByteArray& scheme = "http");
    ~ProxySetting();
};

// `pattern` itself where `text` is like it, each * in it standing for anything; else the text. For
// a comparison with the pattern that says what came instead.
QString Like(const QString& text, const AnyText& pattern);

// A port where nobody listens, at least a moment ago.
int FreePort();
