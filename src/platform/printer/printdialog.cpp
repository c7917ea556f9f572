#include "platform/printer/printdialog.h"

#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/owner.h"
#include "platform/printer/paperprinter.h"

#include <QComboBox>
#include <QPaintEngine>
#include <QPrintDialog>
#include <QPrinter>

#include <utility>

namespace printer {
namespace {

// A page that is handed over as a PDF, to a file or to a print system, has no dots of its own. The
// toolkit's 1200 for it would be too fine: positions on a page are held in 16 bits.
constexpr int PdfDotsPerInch = 600;

constexpr int LettersOfAName = 28;

PrintDialogHandler& Handler() {
    static PrintDialogHandler handler;
    return handler;
}

std::unique_ptr<Printer> AskUser(int flags) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setDocName(forms::ProgramTitle());
    printer->setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialog(printer.get());
    dialog.setOption(QAbstractPrintDialog::PrintToFile, true);
    dialog.setOption(QAbstractPrintDialog::PrintCollateCopies, flags & cdlPDUseDevModeCopies);
    dialog.setOption(QAbstractPrintDialog::PrintSelection, !(flags & cdlPDNoSelection));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, !(flags & cdlPDNoPageNums));
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
    // The printers' names come in when the dialog is shown, and it does not grow for them then.
    for (QComboBox* list : dialog.findChildren<QComboBox*>()) {
        list->setMinimumContentsLength(LettersOfAName);
    }
    dialog.adjustSize();
    forms::PlaceOverActiveForm(dialog);
    dialog.move(dialog.x(), dialog.y() - dialog.height() / 2);  // its options fold out below
    const forms::AwaitingUser waiting;
    if (dialog.exec() != QDialog::Accepted) {
        return nullptr;
    }
    if (printer->paintEngine()->type() == QPaintEngine::Pdf) {
        printer->setResolution(PdfDotsPerInch);
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
