#pragma once

#include <QPixmap>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVariant>

class QTextDocument;

namespace printer {

inline constexpr int vbPRORPortrait = 1;
inline constexpr int vbPRORLandscape = 2;
inline constexpr int vbPixels = 3;

// What pages are printed on: a text cursor, a font and a count of pages. All positions and sizes
// are printer pixels, from the top left corner of the printable area. A document begins with the
// first thing that is printed; before that nothing can fail for want of a printer. One that is
// dropped without EndDoc does not come out.
//
// A class of its own for what moves the cursor, with the marks on the paper behind virtual
// functions: a test puts a device there that keeps what it is told, with sizes of its own choice.
class Printer {
public:
    Printer() = default;
    virtual ~Printer() = default;
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    // vbPRORPortrait or vbPRORLandscape; before the first print of a document.
    virtual void SetOrientation(int orientation) = 0;
    // Pixels are the only unit; Erro 5 for another one.
    void SetScaleMode(int mode);
    // 1440 divided by the dots per inch.
    virtual float TwipsPerPixelX() const = 0;
    // Of the printable area, pixels; known once the orientation is set.
    virtual double PageHeight() const = 0;

    // For the text that is printed next. A name that the printer does not have is Erro 5, and the
    // font stays as it was.
    virtual void SetFontName(const QString& name) { font_.name = name; }
    void SetFontSize(double points) { font_.points = points; }
    void SetFontBold(bool bold) { font_.bold = bold; }
    void SetFontItalic(bool italic) { font_.italic = italic; }

    // The text cursor: where the top left corner of the next text goes.
    float CurrentX() const { return x_; }
    float CurrentY() const { return y_; }
    void SetCurrentX(double x) { x_ = static_cast<float>(x); }
    void SetCurrentY(double y) { y_ = static_cast<float>(y); }

    // Prints a value in its plain form, a fraction behind a comma, Null as nothing. The cursor
    // moves to the text's end; PrintLine sets it to the left edge of the page, one line of the
    // present font further down.
    void Print(const QVariant& value);
    void PrintLine(const QVariant& value);

    int Page() const { return page_; }  // of the page being printed, from 1
    void NewPage();
    void PaintPicture(const QPixmap& picture, double x, double y, double width, double height);
    // Formatted text, from the top of a page on over as many as it takes, each with its number at
    // the foot. The document is laid out for the paper and keeps that.
    void PrintDocument(QTextDocument& document);
    // Ends the last page and hands the document over. Nothing happens when nothing was printed.
    void EndDoc();

protected:
    struct Font {
        QString name;
        double points = 8;
        bool bold = false;
        bool italic = false;
    };
    const Font& TextFont() const { return font_; }

    // The marks. Begin is called once for a document, before anything else of it, and again after a
    // failure of it.
    virtual void Begin() = 0;
    virtual void DrawText(QPointF topLeft, const QString& text) = 0;
    virtual double TextWidth(const QString& text) const = 0;
    virtual double LineHeight() const = 0;
    virtual void DrawPicture(const QRectF& place, const QPixmap& picture) = 0;
    virtual void DrawDocument(QTextDocument& document) = 0;  // turns pages by NewPage
    virtual void NextPage() = 0;
    virtual void End() = 0;

private:
    void BeginOnce();

    Font font_;
    float x_ = 0;
    float y_ = 0;
    int page_ = 1;
    bool begun_ = false;
};

}  // namespace printer
