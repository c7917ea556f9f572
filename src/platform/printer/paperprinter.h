#pragma once

#include "platform/printer/printer.h"

#include <QFont>
#include <QPainter>

#include <memory>

class QFileDevice;
class QPagedPaintDevice;
class QPdfWriter;
class QPrinter;

namespace printer {

// The printer of the toolkit, with everything that its dialog has set. Pages are written as a PDF:
// into the file that the user has named, or into a temporary one that goes to the print system's
// queue as a whole. The toolkit could hand it over itself, but does not tell when the print system
// refuses it. Where printers are no queues that take a PDF, the toolkit's own way is left.
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
    void SubmitFile();

    std::unique_ptr<QPrinter> printer_;
    std::unique_ptr<QFileDevice> file_;
    std::unique_ptr<QPdfWriter> pdf_;  // in the printer's place
    QPainter painter_;
};

}  // namespace printer
