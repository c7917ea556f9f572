#include "platform/forms/controls.h"

namespace forms {

ScrollBar::ScrollBar(const QString& name, Qt::Orientation orientation, QWidget* parent)
    : QScrollBar(orientation, parent) {
    setObjectName(name);
    setAttribute(Qt::WA_NoMousePropagation);
    setTracking(false);
    connect(this, &QScrollBar::valueChanged, this, &ScrollBar::Change);
}

}  // namespace forms
