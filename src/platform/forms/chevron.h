#pragma once

#include <QPointF>

class QColor;
class QPainter;

namespace forms {

// The two strokes of an arrow without a shaft, 7 design pixels broad. `degrees` turns it clockwise
// from pointing down.
void PaintChevron(QPainter& painter, const QPointF& middle, const QColor& colour,
                  qreal degrees = 0);

}  // namespace forms
