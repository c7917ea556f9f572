#include "platform/printer/printqueue.h"

#include "platform/erro.h"

#include <QFile>

#include <cups/cups.h>
#include <iterator>
#include <memory>

using namespace Qt::StringLiterals;

namespace printer {
namespace {

constexpr int PatienceMs = 30000;  // for each answer of the server

struct Close {
    void operator()(http_t* http) const { httpClose(http); }
    void operator()(ipp_t* message) const { ippDelete(message); }
};
using Connection = std::unique_ptr<http_t, Close>;
using Message = std::unique_ptr<ipp_t, Close>;

class Options {
public:
    Options() = default;
    ~Options() { cupsFreeOptions(count_, options_); }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;

    void Add(const QByteArray& name, const QByteArray& value) {
        count_ = cupsAddOption(name.constData(), value.constData(), count_, &options_);
    }
    int Count() const { return count_; }
    cups_option_t* Data() const { return options_; }

private:
    int count_ = 0;
    cups_option_t* options_ = nullptr;
};

// "%1" is the queue.
constexpr auto Gone = u"A impressora \"%1\" não existe mais.";
constexpr auto NotAccepting = u"A impressora \"%1\" não está aceitando trabalhos.";
constexpr auto Stopped = u"A impressora \"%1\" está parada.";
constexpr auto NoAnswer = u"O sistema de impressão não responde.";
constexpr auto NotAllowed = u"A impressora \"%1\" não permite a impressão por este usuário.";
constexpr auto Refused = u"O sistema de impressão recusou o trabalho.";

struct Reason {
    ipp_status_t status;
    const char16_t* text;
};
constexpr Reason Reasons[] = {
    {IPP_STATUS_ERROR_NOT_FOUND, Gone},
    {IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS, NotAccepting},
    {IPP_STATUS_ERROR_SERVICE_UNAVAILABLE, NoAnswer},
    {IPP_STATUS_ERROR_INTERNAL, NoAnswer},  // of the library: the connection broke off
    {IPP_STATUS_ERROR_FORBIDDEN, NotAllowed},
    {IPP_STATUS_ERROR_NOT_AUTHENTICATED, NotAllowed},
    {IPP_STATUS_ERROR_NOT_AUTHORIZED, NotAllowed},
};

[[noreturn]] void Refuse(const char16_t* text, const QString& queue) {
    QString reason = QString::fromUtf16(text);
    reason.replace("%1"_L1, queue);
    throw Erro(Erro::PrinterError, Erro(Erro::PrinterError).Description() + u'\n' + reason);
}

// Of the request before, which has failed.
[[noreturn]] void RefuseForLastError(const QString& queue) {
    const ipp_status_t status = cupsLastError();
    for (const Reason& reason : Reasons) {
        if (reason.status == status) {
            Refuse(reason.text, queue);
        }
    }
    Refuse(Refused, queue);
}

Connection Connect(const QString& queue) {
    Connection http(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                                 PatienceMs, nullptr));
    if (!http) {
        Refuse(NoAnswer, queue);
    }
    httpSetTimeout(
        http.get(), PatienceMs / 1000.0, [](http_t*, void*) { return 0; }, nullptr);
    return http;
}

void AskWhetherItPrints(http_t* http, const QString& queue) {
    char uri[HTTP_MAX_URI];
    httpAssembleURIf(HTTP_URI_CODING_ALL, uri, sizeof uri, "ipp", nullptr, "localhost", 0,
                     "/printers/%s", queue.toLocal8Bit().constData());
    const char* const wanted[] = {"printer-state", "printer-is-accepting-jobs"};
    ipp_t* request = ippNewRequest(IPP_OP_GET_PRINTER_ATTRIBUTES);
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri);
    ippAddStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                  static_cast<int>(std::size(wanted)), nullptr, wanted);
    const Message answer(cupsDoRequest(http, request, "/"));  // which frees the request
    if (!answer || ippGetStatusCode(answer.get()) > IPP_STATUS_OK_EVENTS_COMPLETE) {
        RefuseForLastError(queue);
    }
    const auto find = [&answer](const char* name, ipp_tag_t type) {
        return ippFindAttribute(answer.get(), name, type);
    };
    ipp_attribute_t* accepting = find(wanted[1], IPP_TAG_BOOLEAN);
    if (accepting && !ippGetBoolean(accepting, 0)) {
        Refuse(NotAccepting, queue);
    }
    ipp_attribute_t* state = find(wanted[0], IPP_TAG_ENUM);
    if (state && ippGetInteger(state, 0) == IPP_PSTATE_STOPPED) {
        Refuse(Stopped, queue);
    }
}

}  // namespace

void Submit(const Job& job) {
    const Connection http = Connect(job.queue);
    AskWhetherItPrints(http.get(), job.queue);
    Options options;
    for (const auto& [name, value] : job.options) {
        options.Add(name, value);
    }
    const int number = cupsPrintFile2(
        http.get(), job.queue.toLocal8Bit().constData(), QFile::encodeName(job.file).constData(),
        job.title.toUtf8().constData(), options.Count(), options.Data());
    if (number == 0) {
        RefuseForLastError(job.queue);
    }
}

}  // namespace printer
