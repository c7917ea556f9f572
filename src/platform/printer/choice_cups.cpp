#include "platform/forms/owner.h"
#include "platform/printer/choice.h"
#include "platform/printer/printdialog.h"

#include <QComboBox>
#include <QEvent>
#include <QPrintDialog>
#include <QPrinter>

using namespace Qt::StringLiterals;

namespace printer {
namespace {

constexpr int LettersOfAName = 28;

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

}  // namespace

// A file stands among the printers there.
bool Choose(QPrinter& printer, int flags) {
    QPrintDialog dialog(&printer);
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
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace printer
