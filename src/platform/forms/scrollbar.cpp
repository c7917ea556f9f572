#include "platform/forms/chevron.h"
#include "platform/forms/controls.h"
#include "platform/forms/theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace forms {

ScrollBar::ScrollBar(const QString& name, Qt::Orientation orientation, QWidget* parent)
    : QScrollBar(orientation, parent) {
    setObjectName(name);
    setAttribute(Qt::WA_NoMousePropagation);
    setFocusPolicy(Qt::TabFocus);
    setTracking(false);
    connect(this, &QScrollBar::valueChanged, this, &ScrollBar::Change);
}

// In a bar that lies, the toolkit moves the wrong way by these two.
void ScrollBar::keyPressEvent(QKeyEvent* event) {
    if (orientation() == Qt::Horizontal && event->key() == Qt::Key_Left) {
        triggerAction(SliderSingleStepSub);
    } else if (orientation() == Qt::Horizontal && event->key() == Qt::Key_Right) {
        triggerAction(SliderSingleStepAdd);
    } else {
        QScrollBar::keyPressEvent(event);
    }
}

void ScrollBar::paintEvent(QPaintEvent* event) {
    QScrollBar::paintEvent(event);
    QPainter painter(this);
    const Theme& theme = CurrentTheme();
    const qreal middle = theme.scrollButtonPixels / 2.0;
    const bool lies = orientation() == Qt::Horizontal;
    const auto arrow = [&](const QPointF& at, qreal degrees, bool leads) {
        PaintChevron(painter, at, leads ? theme.text : theme.disabledText, degrees);
    };
    const QPointF first = lies ? QPointF(middle, height() / 2.0) : QPointF(width() / 2.0, middle);
    arrow(first, lies ? 90 : 180, value() > minimum());
    arrow(QPointF(width(), height()) - first, lies ? -90 : 0, value() < maximum());
    if (hasFocus()) {
        painter.fillRect(QRect(0, height() - 2, width(), 2), theme.focus);
    }
}

}  // namespace forms
