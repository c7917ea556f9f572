#include "platform/forms/chevron.h"

#include <QPainter>

namespace forms {

void PaintChevron(QPainter& painter, const QPointF& middle, const QColor& colour, qreal degrees) {
    constexpr qreal Half = 3.5;
    constexpr qreal Rise = Half / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5));
    painter.translate(middle);
    painter.rotate(degrees);
    painter.drawPolyline(QPolygonF{{-Half, -Rise}, {0, Rise}, {Half, -Rise}});
    painter.restore();
}

}  // namespace forms
