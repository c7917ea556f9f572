#include "platform/system/http_transfer.h"

#include "platform/sizes.h"
#include "platform/system/sockets.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>
#include <vector>

using namespace std::chrono_literals;

namespace sys::http {

namespace {

using Clock = std::chrono::steady_clock;

// How long a wait lasts at most before the idle function has its turn.
constexpr auto Slice = 20ms;
constexpr qsizetype LongestHead = 256_KiB;
constexpr int TooLarge = 100;  // of libcurl, by name only since 8.6
constexpr long ReceiveBuffer = 256_KiB;

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
    if (events && QCoreApplication::instance()) {
        fd_set readable = {};
        fd_set writable = {};
        fd_set failed = {};
        int last = -1;
        curl_multi_fdset(multi, &readable, &writable, &failed, &last);
        WaitForSockets(SocketsIn(readable, last), SocketsIn(writable, last), Slice);
        return;
    }
    curl_multi_poll(multi, nullptr, 0, int(Slice.count()), nullptr);
}

}  // namespace

void UrlCleanup::operator()(CURLU* url) const {
    curl_url_cleanup(url);
}

Url UrlOf(const QByteArray& host, const QByteArray& path) {
    Url url(curl_url());
    const qsizetype query = path.indexOf('?');
    const QByteArray target = '/' + (query < 0 ? path : path.left(query));
    const bool ok = url && curl_url_set(url.get(), CURLUPART_SCHEME, "http", 0) == CURLUE_OK &&
                    curl_url_set(url.get(), CURLUPART_HOST, host.constData(), 0) == CURLUE_OK &&
                    curl_url_set(url.get(), CURLUPART_PATH, target.constData(), 0) == CURLUE_OK &&
                    (query < 0 || curl_url_set(url.get(), CURLUPART_QUERY,
                                               path.mid(query + 1).constData(), 0) == CURLUE_OK);
    return ok ? std::move(url) : nullptr;
}

void Client::Cleanup::operator()(CURLM* multi) const {
    curl_multi_cleanup(multi);
}

Client::Client(const QString& agentName, std::function<void()> idleFunction)
    : agent(agentName.toUtf8()),
      idle(std::move(idleFunction)),
      multi(Initialised() ? curl_multi_init() : nullptr) {}

void Transfer::EasyCleanup::operator()(CURL* easy) const {
    curl_easy_cleanup(easy);
}

void Transfer::ListCleanup::operator()(curl_slist* list) const {
    curl_slist_free_all(list);
}

Transfer::Transfer(const Client& client, const QByteArray& verb, Url url)
    : client_(client), url_(std::move(url)), easy_(url_ ? curl_easy_init() : nullptr) {
    if (IsOpen()) {
        Prepare(verb);
    }
}

Transfer::~Transfer() {
    Drop();
}

void Transfer::Prepare(const QByteArray& verb) {
    Set(CURLOPT_CURLU, url_.get());
    Set(CURLOPT_CUSTOMREQUEST, verb.constData());
    Set(CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_0));
    Set(CURLOPT_USERAGENT, client_.agent.constData());
    Set(CURLOPT_PROTOCOLS_STR, "http");
    Set(CURLOPT_FOLLOWLOCATION, 0L);
    // Names come out of lists that are checked elsewhere; here they are asked for as written.
    Set(CURLOPT_PATH_AS_IS, 1L);
    Set(CURLOPT_NOSIGNAL, 1L);
    // The end of a request must not wait for a look-up that still hangs in its thread.
    Set(CURLOPT_QUICK_EXIT, 1L);
    Set(CURLOPT_BUFFERSIZE, ReceiveBuffer);
    SetTimeouts(timeouts_);
    Set(CURLOPT_HEADERFUNCTION, &Transfer::OnHeadLine);
    Set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    Set(CURLOPT_WRITEFUNCTION, &Transfer::OnBody);
    Set(CURLOPT_WRITEDATA, static_cast<void*>(this));
    AddHeader("Accept:");  // an empty one takes libcurl's own away
    AddHeader("Pragma: no-cache");
    AddHeader("Connection: Keep-Alive");
}

bool Transfer::AddHeader(const QByteArray& line) {
    curl_slist* longer = curl_slist_append(headers_.get(), line.constData());
    if (!longer) {
        return false;
    }
    static_cast<void>(headers_.release());  // it is the beginning of the longer one
    headers_.reset(longer);
    Set(CURLOPT_HTTPHEADER, headers_.get());
    return true;
}

void Transfer::Begin() {
    Drop();
    moved_ = headDone_ = ended_ = false;
    code_ = Ok;
    headBytes_ = consumed_ = 0;
    realm_.clear();
    length_.clear();
    body_.clear();
    attached_ = curl_multi_add_handle(client_.multi.get(), easy_.get()) == CURLM_OK;
    if (!attached_) {
        Finish(Internal);
    }
}

void Transfer::Drop() {
    if (attached_) {
        curl_multi_remove_handle(client_.multi.get(), easy_.get());
        attached_ = false;
    }
}

void Transfer::Finish(int how) {
    ended_ = true;
    code_ = how;
}

void Transfer::CollectEnd() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(client_.multi.get(), &left)) {
        if (message->msg == CURLMSG_DONE && message->easy_handle == easy_.get() && !ended_) {
            // A head line that never ends is given up by libcurl itself, as if memory were short.
            const CURLcode result = message->data.result;
            const bool headless = !headDone_ && IsConnected() &&
                                  (result == CURLE_OUT_OF_MEMORY || result == TooLarge);
            Finish(headless ? int(InvalidAnswer) : CodeOf(result));
        }
    }
}

bool Transfer::IsConnected() const {
    curl_off_t microseconds = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_PRETRANSFER_TIME_T, &microseconds);
    return microseconds > 0;
}

int Transfer::Status() const {
    long status = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    return static_cast<int>(status);
}

// Lets the transfer run until `ready` holds or it has ended. Asked for bytes it fetches one buffer
// and no more, so that a caller who takes his time is not flooded.
template <typename Ready>
void Transfer::WaitFor(Ready ready) {
    Clock::time_point quietSince = Clock::now();
    while (!ready() && !ended_) {
        int running = 0;
        if (curl_multi_perform(client_.multi.get(), &running) != CURLM_OK) {
            Finish(Internal);
            return;
        }
        CollectEnd();
        if (ready() || ended_) {
            return;
        }
        const Clock::time_point now = Clock::now();
        // Until the connection stands, libcurl itself watches the time.
        if (std::exchange(moved_, false) || !IsConnected()) {
            quietSince = now;
        } else if (now - quietSince > std::max(timeouts_.receive, timeouts_.send)) {
            Finish(Timeout);
            return;
        }
        const Clock::time_point begin = Clock::now();
        Wait(client_.multi.get(), client_.idle != nullptr);
        if (client_.idle) {
            client_.idle();
        }
        // A box that stood open in between kept everybody waiting.
        const auto waited = Clock::now() - begin;
        quietSince += std::max(waited - 2 * Slice, Clock::duration::zero());
    }
}

// An answer whose body is not what it seems, or has two lengths: whoever reads it might take one
// for the other.
bool Transfer::IsFair(const QByteArray& name, const QByteArray& value) {
    if (name == "content-encoding") {
        return value.toLower() == "identity";  // nothing else was asked for
    }
    if (name != "content-length") {
        return true;
    }
    const bool same = length_.isEmpty() || length_ == value;
    length_ = value;
    return same && !value.contains(',');
}

void Transfer::TakeHeadLine(QByteArrayView line) {
    constexpr QByteArrayView Asks = "proxy-authenticate:";
    const QByteArray text = line.trimmed().toByteArray();
    if (text.startsWith("HTTP/")) {
        length_.clear();  // of an answer that libcurl has answered by itself
    }
    if (text.toLower().startsWith(Asks)) {
        const QByteArray mark = "realm=\"";
        const qsizetype begin = text.toLower().indexOf(mark);
        const qsizetype end = begin < 0 ? -1 : text.indexOf('"', begin + mark.size());
        if (end > 0) {
            realm_ = QString::fromUtf8(text.mid(begin + mark.size(), end - begin - mark.size()));
        }
    }
    // Neither an interim answer nor a 407 that libcurl is about to answer is the head that counts;
    // a 407 that is one shows by its body or by its end.
    const int status = Status();
    headDone_ = text.isEmpty() && status >= 200 && status != StatusProxyAuthentication;
}

// Of libcurl's two sizes the first is always 1.
size_t Transfer::OnHeadLine(char* data, size_t /*one*/, size_t size, void* self) {
    auto& transfer = *static_cast<Transfer*>(self);
    transfer.moved_ = true;
    transfer.headBytes_ += qsizetype(size);
    if (transfer.headBytes_ > LongestHead) {
        transfer.Finish(InvalidAnswer);
        return 0;
    }
    const QByteArrayView line(data, qsizetype(size));
    const qsizetype colon = line.indexOf(':');
    if (colon > 0 && !transfer.IsFair(line.first(colon).trimmed().toByteArray().toLower(),
                                      line.sliced(colon + 1).trimmed().toByteArray())) {
        transfer.Finish(InvalidAnswer);
        return 0;
    }
    transfer.TakeHeadLine(line);
    return size;
}

size_t Transfer::OnBody(char* data, size_t /*one*/, size_t size, void* self) {
    auto& transfer = *static_cast<Transfer*>(self);
    transfer.moved_ = transfer.headDone_ = true;
    transfer.body_.append(data, qsizetype(size));
    return size;
}

void Transfer::SetTimeouts(const Timeouts& timeouts) {
    timeouts_ = timeouts;
    Set(CURLOPT_CONNECTTIMEOUT_MS, long(timeouts.connect.count()));
}

void Transfer::IgnoreUnknownAuthority() {
    Set(CURLOPT_PROXY_SSL_VERIFYPEER, 0L);
}

void Transfer::SetProxyCredentials(const QByteArray& user, const QByteArray& password) {
    Set(CURLOPT_PROXYAUTH, long(CURLAUTH_BASIC | CURLAUTH_DIGEST | CURLAUTH_NTLM));
    Set(CURLOPT_PROXYUSERNAME, user.constData());
    Set(CURLOPT_PROXYPASSWORD, password.constData());
}

void Transfer::AwaitHead() {
    WaitFor([this] { return headDone_; });
}

void Transfer::AwaitBody() {
    WaitFor([this] { return HasBody(); });
}

qsizetype Transfer::TakeBody(char* buffer, qsizetype capacity) {
    const qsizetype size = std::min(capacity, body_.size() - consumed_);
    std::copy_n(body_.constData() + consumed_, size, buffer);
    consumed_ += size;
    if (!HasBody()) {
        body_.resize(0);
        consumed_ = 0;
    }
    return size;
}

}  // namespace sys::http
