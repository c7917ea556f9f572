#pragma once

#include "platform/system/http.h"

#include <curl/curl.h>

// What http.cpp stands on: libcurl, which http_transfer.cpp alone calls.
namespace sys::http {

constexpr int StatusProxyAuthentication = 407;

struct UrlCleanup {
    void operator()(CURLU* url) const;
};
using Url = std::unique_ptr<CURLU, UrlCleanup>;

// `path` is escaped and without the leading "/", with its query if it has one. Null for what is no
// address.
Url UrlOf(const QByteArray& host, const QByteArray& path);

// The open connections, and what all transfers over them share.
struct Client {
    struct Cleanup {
        void operator()(CURLM* multi) const;
    };

    Client(const QString& agentName, std::function<void()> idleFunction);

    QByteArray agent;
    std::function<void()> idle;
    std::unique_ptr<CURLM, Cleanup> multi;  // null without libcurl
};

// One request, which may be sent several times, and the answer under way. What it waits for has
// come or will not come: then it has ended.
class Transfer {
public:
    Transfer(const Client& client, const QByteArray& verb, Url url);
    ~Transfer();
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    bool IsOpen() const { return easy_ != nullptr; }

    bool AddHeader(const QByteArray& line);
    void SetTimeouts(const Timeouts& timeouts);
    void IgnoreUnknownAuthority();
    void SetProxyCredentials(const QByteArray& user, const QByteArray& password);

    void Begin();  // drops an answer under way
    void Drop();
    void AwaitHead();
    void AwaitBody();

    bool HasHead() const { return headDone_; }
    bool HasBody() const { return consumed_ < body_.size(); }
    int EndCode() const { return code_; }  // Ok while it has not ended
    int Status() const;
    const QString& ProxyRealm() const { return realm_; }
    qsizetype TakeBody(char* buffer, qsizetype capacity);

private:
    struct EasyCleanup {
        void operator()(CURL* easy) const;
    };
    struct ListCleanup {
        void operator()(curl_slist* list) const;
    };

    template <typename Value>
    void Set(CURLoption option, Value value) {
        curl_easy_setopt(easy_.get(), option, value);
    }

    void Prepare(const QByteArray& verb);
    void Finish(int how);
    void CollectEnd();
    bool IsConnected() const;
    template <typename Ready>
    void WaitFor(Ready ready);

    bool IsFair(const QByteArray& name, const QByteArray& value);
    void TakeHeadLine(QByteArrayView line);
    static size_t OnHeadLine(char* data, size_t size, size_t count, void* self);
    static size_t OnBody(char* data, size_t size, size_t count, void* self);

    const Client& client_;
    Url url_;
    std::unique_ptr<curl_slist, ListCleanup> headers_;
    std::unique_ptr<CURL, EasyCleanup> easy_;
    Timeouts timeouts_;

    // Of the answer under way.
    bool attached_ = false;
    bool moved_ = false;     // bytes have arrived since somebody looked
    bool headDone_ = false;  // the head that counts: not one that libcurl answers by itself
    bool ended_ = false;
    int code_ = Ok;  // how it ended
    qsizetype headBytes_ = 0;
    QString realm_;
    QByteArray length_;  // as the head tells it
    QByteArray body_;
    qsizetype consumed_ = 0;
};

}  // namespace sys::http
