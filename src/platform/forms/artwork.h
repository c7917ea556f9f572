#pragma once

#include <QPixmap>
#include <QRectF>
#include <QString>

#include <memory>

class QPainter;

namespace forms {

// A painted drawing, an SVG of the resources under ":/artwork/". Each drawing exists twice: at rest
// and with every button lit. Both come from the one file with another style sheet
// (artwork/repouso.css and artwork/aceso.css, on top of artwork/estilo.css), so that places cannot
// drift. Coordinates are design pixels.
class Artwork {
public:
    enum class State { Rest, Lit };

    // `name` without folder and ending, such as "pesquisa". Drawings are loaded once and shared.
    // Throws Erro 53 when there is none.
    static std::shared_ptr<Artwork> Load(const QString& name);

    QSize Size() const;  // design pixels

    // Paints the part `source` of the drawing at `target`'s place and size.
    void Paint(QPainter& painter, const QRectF& target, const QRectF& source, State state);

private:
    explicit Artwork(const QString& name);
    const QPixmap& Rendered(State state, qreal ratio);

    QString name_;
    QSize size_;
    struct Picture {
        QPixmap pixmap;
        qreal ratio = 0;
    };
    Picture pictures_[2];
};

}  // namespace forms
