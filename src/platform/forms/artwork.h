#pragma once

#include <QPixmap>
#include <QRectF>
#include <QString>

#include <memory>
#include <vector>

class QPainter;
class QSvgRenderer;

namespace forms {

// A painted drawing, an SVG of the resources under ":/artwork/". Each drawing exists twice: at rest
// and with every button lit. Both come from the one file with another style sheet
// (artwork/repouso.css and artwork/aceso.css, on top of artwork/estilo.css), so that places cannot
// drift. Coordinates are design pixels.
class Artwork {
public:
    enum class State { Rest, Lit };

    // `name` without folder and ending, such as "pesquisa". Drawings are loaded once and shared.
    // Throws Erro 53 when there is none, 481 when it can't be read.
    static std::shared_ptr<Artwork> Load(const QString& name);

    // Where drawings and sheets are read from, ":/artwork" at the start. For tools and tests.
    static void SetFolder(const QString& folder);

    // The drawing's SVG with the styles resolved, for use outside the program. Throws as Load.
    static QByteArray Resolved(const QString& name, State state);

    ~Artwork();

    QSize Size() const { return size_; }  // design pixels

    // Paints the part `source` of the drawing at `target`'s place and size. The drawing is laid on
    // whole device pixels: two parts painted at their places in one drawing fit without a seam.
    void Paint(QPainter& painter, const QRectF& target, const QRectF& source, State state);

private:
    explicit Artwork(const QString& name);
    QSvgRenderer& Renderer(State state);
    const QPixmap& Rendered(State state, qreal ratio, const QRect& part);

    QString name_;
    QSize size_;
    std::unique_ptr<QSvgRenderer> renderers_[2];
    // What has been painted, in the device pixels of the last ratio: the whole drawing at rest, and
    // of the lit one only the buttons, since on a dense screen a whole picture takes many
    // megabytes.
    struct Picture {
        State state;
        QRect part;
        QPixmap pixmap;
    };
    std::vector<Picture> pictures_;
    qreal ratio_ = 0;
};

}  // namespace forms
