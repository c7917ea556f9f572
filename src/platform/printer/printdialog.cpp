#include "platform/printer/printdialog.h"

#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/printer/choice.h"
#include "platform/printer/paperprinter.h"

#include <QPaintEngine>
#include <QPrinter>

#include <utility>

using namespace Qt::StringLiterals;

namespace printer {
namespace {

// A PDF has no dots of its own. The toolkit's 1200 for it would be
// too fine: positions on a page are held in 16 bits.
constexpr int DotsPerInch = 600;

PrintDialogHandler& Handler() {
    static PrintDialogHandler handler;
    return handler;
}

std::unique_ptr<Printer> AskUser(int flags) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setDocName(forms::ProgramTitle());
    printer->setPageOrientation(QPageLayout::Landscape);
    const forms::AwaitingUser waiting;
    if (!Choose(*printer, flags)) {
        return nullptr;
    }
    if (printer->paintEngine()->type() == QPaintEngine::Pdf) {
        printer->setResolution(DotsPerInch);
    }
    return std::make_unique<PaperPrinter>(std::move(printer));
}

}  // namespace

std::unique_ptr<Printer> PrintDialog::ShowPrinter() const {
    const PrintDialogHandler handler = Handler();
    auto printer = handler ? handler(flags_) : AskUser(flags_);
    if (!printer) {
        throw Erro(Erro::Cancelled);
    }
    return printer;
}

void SetPrintDialogHandler(PrintDialogHandler handler) {
    Handler() = std::move(handler);
}

}  // namespace printer
