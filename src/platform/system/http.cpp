#include "platform/system/http.h"

#include "platform/secret.h"
#include "platform/system/http_address.h"
#include "platform/system/http_transfer.h"

#include <QUrl>

#include <utility>

namespace sys::http {

namespace {

int lastCode = Ok;

int End(int code) {
    lastCode = code;
    return code;
}

}  // namespace

int LastCode() {
    return lastCode;
}

// --- Session

struct Session::Private {
    Private(const QString& agent, std::function<void()> idle) : client(agent, std::move(idle)) {}
    Client client;
    QByteArray proxyUser;
    QByteArray proxyPassword;
    const secret::WipeAtEnd<QByteArray> withoutProxyUser{proxyUser};
    const secret::WipeAtEnd<QByteArray> withoutProxyPassword{proxyPassword};
};

Session::Session(const QString& agent, std::function<void()> idle)
    : d_(new Private(agent, std::move(idle))) {
    End(IsOpen() ? Ok : Internal);
}

Session::~Session() = default;

bool Session::IsOpen() const {
    return d_->client.multi != nullptr;
}

// --- Connection

Connection::Connection(Session& session, const QString& host) : session_(session) {
    const QByteArray ascii = QUrl::toAce(host);
    const QByteArray name = ascii.isEmpty() ? host.toUtf8() : ascii;
    if (!name.isEmpty() && UrlOf(name, {})) {
        host_ = name;
    }
    End(IsOpen() ? Ok : InvalidAddress);
}

// --- Request

struct Request::Private {
    Private(Session::Private& owner, const QByteArray& verb, Url url)
        : session(owner), transfer(owner.client, verb, std::move(url)) {}
    void SetProxyCredentials(const QByteArray& newUser, const QByteArray& newPassword) {
        user = newUser;
        password = newPassword;
        if (!user.isEmpty() || !password.isEmpty()) {
            transfer.SetProxyCredentials(user, password);
        }
    }

    Session::Private& session;
    Transfer transfer;
    QByteArray user;
    QByteArray password;
    const secret::WipeAtEnd<QByteArray> withoutUser{user};
    const secret::WipeAtEnd<QByteArray> withoutPassword{password};
};

Request::Request(Connection& connection, const QByteArray& verb, const QString& path) {
    Url url = connection.IsOpen() ? UrlOf(connection.host_, EscapePath(path)) : nullptr;
    const int failure = url ? Internal : InvalidAddress;
    Session::Private& session = *connection.session_.d_;
    d_ = std::make_unique<Private>(session, verb, std::move(url));
    if (!IsOpen()) {
        End(failure);
        return;
    }
    d_->SetProxyCredentials(session.proxyUser, session.proxyPassword);
    End(Ok);
}

Request::~Request() = default;

bool Request::IsOpen() const {
    return d_->transfer.IsOpen();
}

bool Request::AddHeader(const QByteArray& line) {
    return End(d_->transfer.AddHeader(line) ? Ok : Internal) == Ok;
}

void Request::SetTimeouts(const Timeouts& timeouts) {
    d_->transfer.SetTimeouts(timeouts);
}

void Request::IgnoreUnknownAuthority() {
    d_->transfer.IgnoreUnknownAuthority();
}

void Request::SetProxyCredentials(const QString& user, const QString& password) {
    d_->SetProxyCredentials(user.toUtf8(), password.toUtf8());
}

bool Request::Send() {
    Transfer& transfer = d_->transfer;
    transfer.Begin();
    transfer.AwaitHead();
    if (transfer.EndCode() != Ok && !transfer.HasHead()) {
        transfer.Drop();
        return End(transfer.EndCode()) == Ok;
    }
    if (transfer.Status() != StatusProxyAuthentication) {
        d_->session.proxyUser = d_->user;
        d_->session.proxyPassword = d_->password;
    }
    return End(Ok) == Ok;
}

int Request::Status() const {
    return d_->transfer.Status();
}

qsizetype Request::Read(char* buffer, qsizetype capacity) {
    Transfer& transfer = d_->transfer;
    transfer.AwaitBody();
    if (transfer.HasBody()) {
        End(Ok);
        return transfer.TakeBody(buffer, capacity);
    }
    return End(transfer.EndCode()) == Ok ? 0 : -1;
}

QString Request::ProxyName() const {
    return ProxyOfTheSystem();
}

QString Request::ProxyRealm() const {
    return d_->transfer.ProxyRealm();
}

}  // namespace sys::http
