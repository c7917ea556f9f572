#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

// Plain HTTP/1.0 on port 80: what an update server needs, and no more. Nothing is cached, a
// redirect is not followed (its status is the answer), and the proxy is that of the system
// (http_proxy, no_proxy). libcurl is called in http_transfer.cpp alone.
//
// One thread: a call returns when it has its answer. While it waits for a name, a connection or
// bytes, the program's events have their turn if the session has an idle function, which is called
// every few milliseconds. An exception of it rises out of the call; the request can then only be
// dropped. Without one a call simply blocks.
namespace sys::http {

// How a call ended, under the numbers by which support desks know these failures.
enum Code : int {
    Ok = 0,
    Timeout = 12002,
    Internal = 12004,
    InvalidAddress = 12005,
    NameNotResolved = 12007,
    CannotConnect = 12029,
    ConnectionAborted = 12030,  // closed before the whole answer was there
    ConnectionReset = 12031,
    InvalidAuthority = 12045,  // the proxy's certificate is signed by nobody known
    InvalidAnswer = 12152,     // no HTTP, or a head without end
};

// Code of the last call of this namespace that could fail.
int LastCode();

// The longest wait for each; a byte that arrives begins a new wait.
struct Timeouts {
    std::chrono::milliseconds connect{60000};  // the look-up of the name included
    std::chrono::milliseconds receive{60000};
    std::chrono::milliseconds send{60000};
};

// Holds the open connections, and what let an earlier request through the proxy. Outlives its
// connections and requests.
class Session {
public:
    explicit Session(const QString& agent, std::function<void()> idle = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    bool IsOpen() const;

private:
    friend class Request;
    struct Private;
    std::unique_ptr<Private> d_;
};

// One host. Nothing goes over the network before the first request.
class Connection {
public:
    // `host` is a name or an address without scheme, port or user.
    Connection(Session& session, const QString& host);

    bool IsOpen() const { return !host_.isEmpty(); }

private:
    friend class Request;
    Session& session_;
    QByteArray host_;
};

class Request {
public:
    // `path` without the leading "/", with its query if it has one. It may hold any character: what
    // an address does not allow is escaped as UTF-8. An escape that is there already stays.
    Request(Connection& connection, const QByteArray& verb, const QString& path);
    ~Request();
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

    bool IsOpen() const;

    bool AddHeader(const QByteArray& line);  // "Name: value"
    void SetTimeouts(const Timeouts& timeouts);
    // For the next Send: a proxy certificate that nobody known has signed will do.
    void IgnoreUnknownAuthority();
    // For the next Send: Basic, Digest or NTLM, whichever is the strongest that the proxy offers.
    // Later requests of the session begin with what let this one through.
    void SetProxyCredentials(const QString& user, const QString& password);

    // Sends it, for the first time or again, and returns when the head of the answer is there.
    bool Send();

    int Status() const;  // of the answer

    // The next bytes of the body, at most `capacity`; 0 at its end, -1 on a failure. A body that is
    // shorter than the server announced is a failure; of a longer one the rest is left out.
    qsizetype Read(char* buffer, qsizetype capacity);

    // Who asks for user and password when the status is 407.
    QString ProxyName() const;   // host and port
    QString ProxyRealm() const;  // what the proxy calls its area, perhaps empty

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace sys::http
