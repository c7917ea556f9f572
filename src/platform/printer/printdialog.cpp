#include "platform/printer/printdialog.h"

#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/owner.h"
#include "platform/printer/paperprinter.h"

#include <QComboBox>
#include <QEvent>
#include <QPrintDialog>
#include <QPrinter>

#include <utility>

using namespace Qt::StringLiterals;

namespace printer {
namespace {

// A page is handed over as a PDF, which has no dots of its own. The toolkit's 1200 for it would be
// too fine: positions on a page are held in 16 bits.
constexpr int DotsPerInch = 600;

constexpr int LettersOfAName = 28;

PrintDialogHandler& Handler() {
    static PrintDialogHandler handler;
    return handler;
}

// Keeps a widget hidden whatever else shows it.
class Hider : public QObject {
public:
    explicit Hider(QWidget* widget) : QObject(widget) {
        widget->hide();
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ShowToParent) {
            static_cast<QWidget*>(watched)->hide();
        }
        return false;
    }
};

// The dialog's option alone leaves the choices of the print system, which come to nothing in a
// file, and the dialog shows them again with each printer that is chosen.
void HidePageRanges(const QPrintDialog& dialog) {
    for (const auto name : {"gbPrintRange"_L1, "pageSetLabel"_L1, "pageSetCombo"_L1}) {
        if (auto* choice = dialog.findChild<QWidget*>(name)) {
            new Hider(choice);
        }
    }
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
    if (flags & cdlPDNoPageNums) {
        HidePageRanges(dialog);
    }
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
    printer->setResolution(DotsPerInch);
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
