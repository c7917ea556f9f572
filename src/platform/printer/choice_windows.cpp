#include "platform/forms/application.h"
#include "platform/printer/choice.h"
#include "platform/printer/printdialog.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace printer {
namespace {

// The system's dialog only complains then. A PDF can be printed elsewhere.
bool ChooseFile(QPrinter& printer) {
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    const QString path = QFileDialog::getSaveFileName(
        QApplication::activeWindow(), u"Nenhuma impressora instalada: salvar em PDF"_s,
        documents.filePath(u"Catálogo.pdf"_s), u"PDF (*.pdf)"_s);
    printer.setOutputFileName(path);
    return !path.isEmpty();
}

}  // namespace

bool Choose(QPrinter& printer, int flags) {
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        return ChooseFile(printer);
    }
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    dialog.setOption(QAbstractPrintDialog::PrintToFile, !(flags & cdlPDHidePrintToFile));
    dialog.setOption(QAbstractPrintDialog::PrintCollateCopies, flags & cdlPDUseDevModeCopies);
    dialog.setOption(QAbstractPrintDialog::PrintSelection, !(flags & cdlPDNoSelection));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, !(flags & cdlPDNoPageNums));
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace printer
