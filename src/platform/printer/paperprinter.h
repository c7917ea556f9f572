#pragma once

#include "platform/erro.h"
#include "platform/printer/printer.h"

#include <QFont>
#include <QPainter>

#include <memory>

class QFileDevice;
class QPagedPaintDevice;
class QPdfWriter;
class QPrinter;

namespace printer {

// Why this file could not be opened or written; names it.
Erro FileError(const QFileDevice& file);

// The printer of the toolkit, with everything that its dialog has set. Pages are written as a PDF:
// into the file that the user has named, or, where printers are queues that take one, into a
// temporary one that goes to the queue as a whole. The toolkit could hand it over itself, but does
// not tell when the print system refuses it. On Windows the toolkit draws on the printer, in the
// printer's own resolution.
//
// A file takes its name only when it is whole: what was there before stays until then, and a disk
// that fills up on the way is noticed.
//
// Fails with Erro 482 (printer), the description saying why, and for a file with 61, 70, 75 or 76;
// the description then names the file.
class PaperPrinter final : public Printer {
public:
    explicit PaperPrinter(std::unique_ptr<QPrinter> printer);
    ~PaperPrinter() override;

    void SetOrientation(int orientation) override;
    float TwipsPerPixelX() const override;
    double PageHeight() const override;
    void SetFontName(const QString& name) override;

private:
    void Begin() override;
    void DrawText(QPointF topLeft, const QString& text) override;
    double TextWidth(const QString& text) const override;
    double LineHeight() const override;
    void DrawPicture(const QRectF& place, const QPixmap& picture) override;
    void DrawDocument(QTextDocument& document) override;
    void NextPage() override;
    void End() override;

    QPagedPaintDevice& Device() const;
    QFont CurrentFont() const;
    double PixelsOf(double points) const;
    void OpenFile(std::unique_ptr<QFileDevice> file);
    void CommitFile();
    // Before the first and after the last mark of a document for a printer. What happens there is
    // the system's affair: paperprinter_cups.cpp, paperprinter_windows.cpp.
    void BeginOnQueue();
    void EndOnQueue();

    std::unique_ptr<QPrinter> printer_;
    std::unique_ptr<QFileDevice> file_;
    std::unique_ptr<QPdfWriter> pdf_;  // in the printer's place
    QPainter painter_;
};

}  // namespace printer
