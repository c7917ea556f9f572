#include "platform/printer/paperprinter.h"

#include "platform/erro.h"
#include "platform/forms/application.h"
#include "platform/forms/font.h"
#include "platform/system/output.h"

#include <QAbstractTextDocumentLayout>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace printer {
namespace {

constexpr double PointsPerInch = 72;

// A formatted document is laid out in pixels of a screen of this density.
constexpr double DocumentDotsPerInch = 96;
constexpr double DocumentMargin = 36;

// Heights of a font, as parts of its size. Taken from the outlines at a size at which nothing is
// rounded, so that a page breaks at the same line whatever the printer's resolution.
struct Heights {
    double ascent;
    double line;
};

Heights HeightsOf(QFont font) {
    constexpr int Pixels = 2048;
    font.setPixelSize(Pixels);
    font.setHintingPreference(QFont::PreferNoHinting);
    const QFontMetricsF metrics(font);
    return {metrics.ascent() / Pixels, metrics.height() / Pixels};
}

// A description may have been pasted with line ends in it; the printer knows one line.
QString OneLine(QString text) {
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control) {
            c = u' ';
        }
    }
    return text;
}

template <typename File>
std::unique_ptr<QFileDevice> Opened(std::unique_ptr<File> file) {
    if (!file->open(QIODevice::WriteOnly)) {
        throw FileError(*file);
    }
    return file;
}

// A device or a pipe is written to as it stands: to put a new file in its place would destroy it.
std::unique_ptr<QFileDevice> FileFor(const QString& path) {
    const QFileInfo info(path);
    if (info.exists() && !info.isFile() && !info.isDir()) {
        return Opened(std::make_unique<QFile>(path));
    }
    auto file = std::make_unique<QSaveFile>(path);
    file->setDirectWriteFallback(true);  // a file of one's own in a folder that is not
    return Opened(std::move(file));
}

}  // namespace

Erro FileError(const QFileDevice& file) {
    const auto named = [&](Erro::Code code) {
        return Erro(code,
                    Erro(code).Description() + u"\n"_s + QDir::toNativeSeparators(file.fileName()));
    };
    if (file.error() == QFileDevice::PermissionsError) {
        return named(Erro::PermissionDenied);
    }
    const bool folder = QFileInfo(QFileInfo(file.fileName()).absolutePath()).isDir();
    return named(folder ? sys::WriteFailure(file) : Erro::PathNotFound);
}

PaperPrinter::PaperPrinter(std::unique_ptr<QPrinter> printer) : printer_(std::move(printer)) {
    Printer::SetFontName(forms::FontFamily());
}

PaperPrinter::~PaperPrinter() {
    if (painter_.isActive()) {
        if (!pdf_) {
            printer_->abort();
        }
        painter_.end();
    }
}

QPagedPaintDevice& PaperPrinter::Device() const {
    if (pdf_) {
        return *pdf_;
    }
    return *printer_;
}

void PaperPrinter::SetOrientation(int orientation) {
    printer_->setPageOrientation(orientation == vbPRORLandscape ? QPageLayout::Landscape
                                                                : QPageLayout::Portrait);
}

float PaperPrinter::TwipsPerPixelX() const {
    return 1440.0F / static_cast<float>(printer_->resolution());
}

double PaperPrinter::PageHeight() const {
    return printer_->pageLayout().paintRectPixels(printer_->resolution()).height();
}

void PaperPrinter::SetFontName(const QString& name) {
    if (!QFontDatabase::hasFamily(name)) {
        throw Erro(Erro::InvalidArgument);
    }
    Printer::SetFontName(name);
}

double PaperPrinter::PixelsOf(double points) const {
    return points * printer_->resolution() / PointsPerInch;
}

QFont PaperPrinter::CurrentFont() const {
    const Font& wanted = TextFont();
    QFont font(wanted.name);
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(wanted.points);
    font.setBold(wanted.bold);
    font.setItalic(wanted.italic);
    return font;
}

void PaperPrinter::OpenFile(std::unique_ptr<QFileDevice> file) {
    file_ = std::move(file);
    pdf_ = std::make_unique<QPdfWriter>(file_.get());
    pdf_->setResolution(printer_->resolution());
    pdf_->setPageLayout(printer_->pageLayout());
    pdf_->setTitle(printer_->docName());
    pdf_->setCreator(forms::ProgramTitle());
}

void PaperPrinter::CommitFile() {
    const auto file = std::move(file_);
    auto* save = qobject_cast<QSaveFile*>(file.get());
    // Flushed here, since the commit would forget why it failed.
    if (!file->flush() || (save && !save->commit())) {
        throw FileError(*file);
    }
}

void PaperPrinter::Begin() {
    if (!printer_->outputFileName().isEmpty()) {
        OpenFile(FileFor(printer_->outputFileName()));
    } else if (!printer_->isValid() || printer_->outputFormat() == QPrinter::PdfFormat) {
        throw Erro(Erro::PrinterError);  // neither a printer nor a file
    } else {
        BeginOnQueue();
    }
    if (!painter_.begin(&Device())) {
        throw Erro(Erro::PrinterError);
    }
    // The other way would leave specks around the lines of a drawing.
    painter_.setRenderHint(QPainter::LosslessImageRendering);
}

void PaperPrinter::DrawText(QPointF topLeft, const QString& text) {
    const QFont font = CurrentFont();
    painter_.setFont(font);
    const double ascent = HeightsOf(font).ascent * PixelsOf(TextFont().points);
    painter_.drawText(topLeft + QPointF(0, ascent), OneLine(text));
}

double PaperPrinter::TextWidth(const QString& text) const {
    return QFontMetricsF(CurrentFont(), &Device()).horizontalAdvance(OneLine(text));
}

double PaperPrinter::LineHeight() const {
    return HeightsOf(CurrentFont()).line * PixelsOf(TextFont().points);
}

void PaperPrinter::DrawPicture(const QRectF& place, const QPixmap& picture) {
    painter_.drawPixmap(place, picture, QRectF(picture.rect()));
}

void PaperPrinter::DrawDocument(QTextDocument& document) {
    const double scale = printer_->resolution() / DocumentDotsPerInch;
    const QRectF paper(0, 0, Device().width() / scale, Device().height() / scale);
    const QRectF body =
        paper.adjusted(DocumentMargin, DocumentMargin, -DocumentMargin, -DocumentMargin);
    document.setPageSize(body.size());
    const int pages = document.pageCount();
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    for (int page = 0; page < pages; ++page) {
        if (page > 0) {
            NewPage();
        }
        painter_.save();
        painter_.scale(scale, scale);
        painter_.setFont(document.defaultFont());
        painter_.drawText(paper, Qt::AlignHCenter | Qt::AlignBottom,
                          u"%1/%2"_s.arg(page + 1).arg(pages));
        painter_.translate(body.left(), body.top() - page * body.height());
        context.clip = QRectF(0, page * body.height(), body.width(), body.height());
        painter_.setClipRect(context.clip);
        document.documentLayout()->draw(&painter_, context);
        painter_.restore();
    }
}

void PaperPrinter::NextPage() {
    if (!Device().newPage()) {
        throw Erro(Erro::PrinterError);
    }
}

void PaperPrinter::End() {
    painter_.end();
    pdf_.reset();
    if (printer_->outputFileName().isEmpty()) {
        EndOnQueue();
    } else {
        CommitFile();
    }
}

}  // namespace printer
