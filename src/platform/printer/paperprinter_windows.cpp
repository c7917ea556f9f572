#include "platform/printer/paperprinter.h"

#include <QPdfWriter>
#include <QPrinter>

#include <vector>
#include <windows.h>
#include <winspool.h>

using namespace Qt::StringLiterals;

namespace printer {
namespace {

// "%1" is the printer.
constexpr auto Gone = u"A impressora \"%1\" não existe mais.";
constexpr auto Stopped = u"A impressora \"%1\" está parada.";

[[noreturn]] void Refuse(const char16_t* text, const QString& name) {
    QString reason = QString::fromUtf16(text);
    reason.replace("%1"_L1, name);
    throw Erro(Erro::PrinterError, Erro(Erro::PrinterError).Description() + u'\n' + reason);
}

// The system's word for what stands behind the name; 0 where it keeps it to itself.
DWORD StateOf(HANDLE printer) {
    DWORD size = 0;
    GetPrinterW(printer, 2, nullptr, 0, &size);
    std::vector<BYTE> bytes(size);
    if (size < sizeof(PRINTER_INFO_2W) || !GetPrinterW(printer, 2, bytes.data(), size, &size)) {
        return 0;
    }
    return reinterpret_cast<const PRINTER_INFO_2W*>(bytes.data())->Status;
}

}  // namespace

// A printer that stands still would take the pages and keep them: whoever waits at it must know.
void PaperPrinter::BeginOnQueue() {
    const QString name = printer_->printerName();
    HANDLE printer = nullptr;
    if (!OpenPrinterW(name.toStdWString().data(), &printer, nullptr)) {
        Refuse(Gone, name);
    }
    const DWORD state = StateOf(printer);
    ClosePrinter(printer);
    if (state & PRINTER_STATUS_PENDING_DELETION) {
        Refuse(Gone, name);
    }
    if (state & PRINTER_STATUS_PAUSED) {
        Refuse(Stopped, name);
    }
}

// The pages are with the print system as they are drawn.
void PaperPrinter::EndOnQueue() {}

}  // namespace printer
