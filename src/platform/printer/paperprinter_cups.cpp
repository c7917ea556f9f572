#include "platform/printer/paperprinter.h"
#include "platform/printer/printqueue.h"

#include <QDir>
#include <QPaintEngine>
#include <QPdfWriter>
#include <QPrintEngine>
#include <QPrinter>
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace printer {
namespace {

std::unique_ptr<QFileDevice> TemporaryFile() {
    auto file = std::make_unique<QTemporaryFile>(QDir::tempPath() + u"/tarvo-XXXXXX.pdf"_s);
    if (!file->open()) {
        throw FileError(*file);
    }
    return file;
}

// The choices of the dialog, under the print system's names.
QList<JobOption> OptionsOf(const QPrinter& printer) {
    QList<JobOption> options;
    const auto add = [&options](const QByteArray& name, const QByteArray& value) {
        options.push_back({name, value});
    };
    const bool landscape = printer.pageLayout().orientation() == QPageLayout::Landscape;
    const QPrinter::DuplexMode duplex = printer.duplex();
    add("media", printer.pageLayout().pageSize().key().toLocal8Bit());
    if (printer.copyCount() > 1) {
        add("copies", QByteArray::number(printer.copyCount()));
        if (printer.collateCopies()) {
            add("Collate", "True");
        }
    }
    if (duplex == QPrinter::DuplexNone) {
        add("sides", "one-sided");
    } else if (duplex == QPrinter::DuplexShortSide ||
               (duplex == QPrinter::DuplexAuto && landscape)) {
        add("sides", "two-sided-short-edge");
    } else {
        add("sides", "two-sided-long-edge");
    }
    if (landscape) {
        add("landscape", "");
    }
    if (printer.colorMode() == QPrinter::GrayScale) {
        add("print-color-mode", "monochrome");
    }
    // What the dialog's further pages have set: names and values by turns.
    constexpr auto DialogOptions = QPrintEngine::PrintEnginePropertyKey(0xfe00);
    const QStringList further = printer.printEngine()->property(DialogOptions).toStringList();
    for (qsizetype i = 0; i + 1 < further.size(); i += 2) {
        add(further[i].toLocal8Bit(), further[i + 1].toLocal8Bit());
    }
    return options;
}

}  // namespace

void PaperPrinter::BeginOnQueue() {
    if (printer_->paintEngine()->type() == QPaintEngine::Pdf) {
        OpenFile(TemporaryFile());
    }
}

void PaperPrinter::EndOnQueue() {
    if (!file_) {
        return;
    }
    const auto file = std::move(file_);
    if (!file->flush()) {
        throw FileError(*file);
    }
    // A queue may stand in the dialog with a set of options of its own, which follows its name.
    const QString queue = printer_->printerName().section(u'/', 0, 0);
    Submit({queue, printer_->docName(), file->fileName(), OptionsOf(*printer_)});
}

}  // namespace printer
