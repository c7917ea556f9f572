#include "platform/system/http.h"

#include "platform/secret.h"
#include "platform/system/http_address.h"
#include "platform/system/sockets.h"

#include <QCoreApplication>
#include <QUrl>

#include <algorithm>
#include <curl/curl.h>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace sys::http {

namespace {

using Clock = std::chrono::steady_clock;

// How long a wait lasts at most before the idle function has its turn.
constexpr auto Slice = 20ms;
constexpr qsizetype LongestHead = 256 * 1024;
constexpr long ReceiveBuffer = 256 * 1024;

constexpr int ProxyAuthenticationRequired = 407;

int lastCode = Ok;

int End(int code) {
    lastCode = code;
    return code;
}

// Once, before any other thread could be there.
bool Initialised() {
    static const bool done = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return done;
}

int CodeOf(CURLcode result) {
    switch (result) {
        case CURLE_OK:
            return Ok;
        case CURLE_OPERATION_TIMEDOUT:
            return Timeout;
        case CURLE_URL_MALFORMAT:
            return InvalidAddress;
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_RESOLVE_PROXY:
            return NameNotResolved;
        case CURLE_COULDNT_CONNECT:
            return CannotConnect;
        case CURLE_PARTIAL_FILE:
        case CURLE_GOT_NOTHING:
            return ConnectionAborted;
        case CURLE_RECV_ERROR:
        case CURLE_SEND_ERROR:
            return ConnectionReset;
        case CURLE_PEER_FAILED_VERIFICATION:
            return InvalidAuthority;
        case CURLE_WEIRD_SERVER_REPLY:
        case CURLE_UNSUPPORTED_PROTOCOL:
        case CURLE_BAD_CONTENT_ENCODING:
            return InvalidAnswer;
        default:
            return Internal;
    }
}

// A slice at most. With events the program goes on living meanwhile.
void Wait(CURLM* multi, bool events) {
#ifndef Q_OS_WIN  // whose fd_set holds no range of numbers
    if (events && QCoreApplication::instance()) {
        fd_set readable;
        fd_set writable;
        fd_set failed;
        FD_ZERO(&readable);
        FD_ZERO(&writable);
        FD_ZERO(&failed);
        int last = -1;
        curl_multi_fdset(multi, &readable, &writable, &failed, &last);
        std::vector<int> reading;
        std::vector<int> writing;
        for (int socket = 0; socket <= last; ++socket) {
            if (FD_ISSET(socket, &readable)) {
                reading.push_back(socket);
            }
            if (FD_ISSET(socket, &writable)) {
                writing.push_back(socket);
            }
        }
        WaitForSockets(reading, writing, Slice);
        return;
    }
#endif
    Q_UNUSED(events);
    curl_multi_poll(multi, nullptr, 0, int(Slice.count()), nullptr);
}

struct UrlCleanup {
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
};
using Url = std::unique_ptr<CURLU, UrlCleanup>;

Url UrlOf(const QByteArray& host, const QByteArray& path) {
    Url url(curl_url());
    const qsizetype query = path.indexOf('?');
    const QByteArray target = '/' + (query < 0 ? path : path.left(query));
    const bool ok =
        url && curl_url_set(url.get(), CURLUPART_SCHEME, "http", 0) == CURLUE_OK &&
        curl_url_set(url.get(), CURLUPART_HOST, host.constData(), 0) == CURLUE_OK &&
        curl_url_set(url.get(), CURLUPART_PATH, target.constData(), 0) == CURLUE_OK &&
        (query < 0 || curl_url_set(url.get(), CURLUPART_QUERY, path.mid(query + 1).constData(),
                                   0) == CURLUE_OK);
    return ok ? std::move(url) : nullptr;
}

}  // namespace

int LastCode() {
    return lastCode;
}

// --- Session

struct Session::Private {
    struct MultiCleanup {
        void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
    };

    ~Private() {
        secret::Wipe(proxyUser);
        secret::Wipe(proxyPassword);
    }

    QByteArray agent;
    std::function<void()> idle;
    std::unique_ptr<CURLM, MultiCleanup> multi;
    QByteArray proxyUser;
    QByteArray proxyPassword;
};

Session::Session(const QString& agent, std::function<void()> idle)
    : d_(new Private) {
    d_->agent = agent.toUtf8();
    d_->idle = std::move(idle);
    if (Initialised()) {
        d_->multi.reset(curl_multi_init());
    }
    End(IsOpen() ? Ok : Internal);
}

Session::~Session() = default;

bool Session::IsOpen() const {
    return d_->multi != nullptr;
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
    struct EasyCleanup {
        void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
    };
    struct ListCleanup {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    explicit Private(Session::Private& owner) : session(owner) {}
    ~Private() {
        Detach();
        secret::Wipe(user);
        secret::Wipe(password);
    }

    Session::Private& session;
    Url url;
    std::unique_ptr<curl_slist, ListCleanup> headers;
    std::unique_ptr<CURL, EasyCleanup> easy;
    Timeouts timeouts;
    QByteArray user;
    QByteArray password;

    // Of the answer under way.
    bool attached = false;
    bool moved = false;     // bytes have arrived since somebody looked
    bool headDone = false;  // the head that counts: not one that libcurl answers by itself
    bool ended = false;
    int code = Ok;  // how it ended
    qsizetype headBytes = 0;
    QString realm;
    QByteArray body;
    qsizetype consumed = 0;

    template <typename Value>
    void Set(CURLoption option, Value value) {
        curl_easy_setopt(easy.get(), option, value);
    }

    void Prepare(const QByteArray& verb);
    bool AddHeader(const QByteArray& line);
    void Attach();
    void Detach();
    void Finish(int how);
    void CollectEnd();
    bool IsConnected() const;
    int Status() const;
    bool HasBody() const { return consumed < body.size(); }
    template <typename Ready>
    void WaitFor(Ready ready);

    void TakeHeadLine(QByteArrayView line);
    static size_t OnHeadLine(char* data, size_t size, size_t count, void* self);
    static size_t OnBody(char* data, size_t size, size_t count, void* self);
};

void Request::Private::Prepare(const QByteArray& verb) {
    Set(CURLOPT_CURLU, url.get());
    Set(CURLOPT_CUSTOMREQUEST, verb.constData());
    Set(CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_0));
    Set(CURLOPT_USERAGENT, session.agent.constData());
    Set(CURLOPT_PROTOCOLS_STR, "http");
    Set(CURLOPT_FOLLOWLOCATION, 0L);
    // Names come out of lists that are checked elsewhere; here they are asked for as written.
    Set(CURLOPT_PATH_AS_IS, 1L);
    Set(CURLOPT_NOSIGNAL, 1L);
    // The end of a request must not wait for a look-up that still hangs in its thread.
    Set(CURLOPT_QUICK_EXIT, 1L);
    Set(CURLOPT_BUFFERSIZE, ReceiveBuffer);
    Set(CURLOPT_HEADERFUNCTION, &Private::OnHeadLine);
    Set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    Set(CURLOPT_WRITEFUNCTION, &Private::OnBody);
    Set(CURLOPT_WRITEDATA, static_cast<void*>(this));
    AddHeader("Accept:");  // an empty one takes libcurl's own away
    AddHeader("Pragma: no-cache");
    AddHeader("Connection: Keep-Alive");
}

bool Request::Private::AddHeader(const QByteArray& line) {
    curl_slist* longer = curl_slist_append(headers.get(), line.constData());
    if (!longer) {
        return false;
    }
    static_cast<void>(headers.release());  // it is the beginning of the longer one
    headers.reset(longer);
    Set(CURLOPT_HTTPHEADER, headers.get());
    return true;
}

void Request::Private::Attach() {
    Detach();
    moved = headDone = ended = false;
    code = Ok;
    headBytes = consumed = 0;
    realm.clear();
    body.clear();
    Set(CURLOPT_CONNECTTIMEOUT_MS, long(timeouts.connect.count()));
    if (!user.isEmpty() || !password.isEmpty()) {
        Set(CURLOPT_PROXYAUTH, long(CURLAUTH_BASIC | CURLAUTH_DIGEST | CURLAUTH_NTLM));
        Set(CURLOPT_PROXYUSERNAME, user.constData());
        Set(CURLOPT_PROXYPASSWORD, password.constData());
    }
    attached = curl_multi_add_handle(session.multi.get(), easy.get()) == CURLM_OK;
    if (!attached) {
        Finish(Internal);
    }
}

void Request::Private::Detach() {
    if (attached) {
        curl_multi_remove_handle(session.multi.get(), easy.get());
        attached = false;
    }
}

void Request::Private::Finish(int how) {
    ended = true;
    code = how;
}

void Request::Private::CollectEnd() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(session.multi.get(), &left)) {
        if (message->msg == CURLMSG_DONE && message->easy_handle == easy.get() && !ended) {
            Finish(CodeOf(message->data.result));
        }
    }
}

bool Request::Private::IsConnected() const {
    curl_off_t microseconds = 0;
    curl_easy_getinfo(easy.get(), CURLINFO_PRETRANSFER_TIME_T, &microseconds);
    return microseconds > 0;
}

int Request::Private::Status() const {
    long status = 0;
    curl_easy_getinfo(easy.get(), CURLINFO_RESPONSE_CODE, &status);
    return static_cast<int>(status);
}

// Lets the transfer run until `ready` holds or it has ended. Asked for bytes it fetches one buffer
// and no more, so that a caller who takes his time is not flooded.
template <typename Ready>
void Request::Private::WaitFor(Ready ready) {
    Clock::time_point quietSince = Clock::now();
    while (!ready() && !ended) {
        int running = 0;
        if (curl_multi_perform(session.multi.get(), &running) != CURLM_OK) {
            Finish(Internal);
            return;
        }
        CollectEnd();
        if (ready() || ended) {
            return;
        }
        const Clock::time_point now = Clock::now();
        // Until the connection stands, libcurl itself watches the time.
        if (std::exchange(moved, false) || !IsConnected()) {
            quietSince = now;
        } else if (now - quietSince > std::max(timeouts.receive, timeouts.send)) {
            Finish(Timeout);
            return;
        }
        const Clock::time_point begin = Clock::now();
        Wait(session.multi.get(), session.idle != nullptr);
        if (session.idle) {
            session.idle();
        }
        // A box that stood open in between kept everybody waiting.
        const auto waited = Clock::now() - begin;
        quietSince += std::max(waited - 2 * Slice, Clock::duration::zero());
    }
}

void Request::Private::TakeHeadLine(QByteArrayView line) {
    constexpr QByteArrayView Asks = "proxy-authenticate:";
    const QByteArray text = line.trimmed().toByteArray();
    if (text.toLower().startsWith(Asks)) {
        const QByteArray mark = "realm=\"";
        const qsizetype begin = text.toLower().indexOf(mark);
        const qsizetype end = begin < 0 ? -1 : text.indexOf('"', begin + mark.size());
        if (end > 0) {
            realm = QString::fromUtf8(text.mid(begin + mark.size(), end - begin - mark.size()));
        }
    }
    // Neither an interim answer nor a 407 that libcurl is about to answer is the head that counts;
    // a 407 that is one shows by its body or by its end.
    const int status = Status();
    headDone = text.isEmpty() && status >= 200 && status != ProxyAuthenticationRequired;
}

size_t Request::Private::OnHeadLine(char* data, size_t size, size_t count, void* self) {
    auto& request = *static_cast<Private*>(self);
    request.moved = true;
    request.headBytes += qsizetype(size * count);
    if (request.headBytes > LongestHead) {
        request.Finish(InvalidAnswer);
        return 0;
    }
    request.TakeHeadLine(QByteArrayView(data, qsizetype(size * count)));
    return size * count;
}

size_t Request::Private::OnBody(char* data, size_t size, size_t count, void* self) {
    auto& request = *static_cast<Private*>(self);
    request.moved = request.headDone = true;
    request.body.append(data, qsizetype(size * count));
    return size * count;
}

Request::Request(Connection& connection, const QByteArray& verb, const QString& path)
    : d_(new Private(*connection.session_.d_)) {
    d_->url = connection.IsOpen() ? UrlOf(connection.host_, EscapePath(path)) : nullptr;
    if (d_->url) {
        d_->easy.reset(curl_easy_init());
    }
    if (!IsOpen()) {
        End(d_->url ? Internal : InvalidAddress);
        return;
    }
    d_->user = d_->session.proxyUser;
    d_->password = d_->session.proxyPassword;
    d_->Prepare(verb);
    End(Ok);
}

Request::~Request() = default;

bool Request::IsOpen() const {
    return d_->easy != nullptr;
}

bool Request::AddHeader(const QByteArray& line) {
    return End(d_->AddHeader(line) ? Ok : Internal) == Ok;
}

void Request::SetTimeouts(const Timeouts& timeouts) {
    d_->timeouts = timeouts;
}

void Request::IgnoreUnknownAuthority() {
    d_->Set(CURLOPT_PROXY_SSL_VERIFYPEER, 0L);
}

void Request::SetProxyCredentials(const QString& user, const QString& password) {
    d_->user = user.toUtf8();
    d_->password = password.toUtf8();
}

bool Request::Send() {
    d_->Attach();
    d_->WaitFor([this] { return d_->headDone; });
    if (d_->ended && d_->code != Ok && !d_->headDone) {
        d_->Detach();
        return End(d_->code) == Ok;
    }
    if (d_->Status() != ProxyAuthenticationRequired) {
        d_->session.proxyUser = d_->user;
        d_->session.proxyPassword = d_->password;
    }
    return End(Ok) == Ok;
}

int Request::Status() const {
    return d_->Status();
}

qsizetype Request::Read(char* buffer, qsizetype capacity) {
    d_->WaitFor([this] { return d_->HasBody(); });
    if (d_->HasBody()) {
        const qsizetype size = std::min(capacity, d_->body.size() - d_->consumed);
        std::copy_n(d_->body.constData() + d_->consumed, size, buffer);
        d_->consumed += size;
        if (!d_->HasBody()) {
            d_->body.resize(0);
            d_->consumed = 0;
        }
        End(Ok);
        return size;
    }
    return End(d_->code) == Ok ? 0 : -1;
}

QString Request::ProxyName() const {
    return ProxyOfTheSystem();
}

QString Request::ProxyRealm() const {
    return d_->realm;
}

}  // namespace sys::http
