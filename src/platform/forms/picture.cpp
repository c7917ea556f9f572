#include "platform/forms/controls.h"

#include <QPainter>

namespace forms {

Picture::Picture(const QString& name, const QString& accessibleName, QWidget* parent, Mode mode)
    : Zone(name, parent), mode_(mode) {
    setAccessibleName(accessibleName);
}

void Picture::SetPixmap(const QPixmap& pixmap, const QPixmap& dense) {
    pixmap_ = pixmap;
    dense_ = dense;
    scaled_ = {};
    update();
}

QRectF Picture::PictureRect() const {
    const QSizeF own(pixmap_.size());
    if (mode_ == Mode::Natural || own.isEmpty()) {
        return {QPointF(), own};
    }
    const QSizeF fitted = own.scaled(QSizeF(size()), Qt::KeepAspectRatio);
    return {QPointF((width() - fitted.width()) / 2, (height() - fitted.height()) / 2), fitted};
}

void Picture::paintEvent(QPaintEvent*) {
    if (pixmap_.isNull()) {
        return;
    }
    // Scaled once to device pixels: a scaling while painting makes small pictures coarse.
    const QRectF place = PictureRect();
    const QSize device = (place.size() * devicePixelRatioF()).toSize().expandedTo({1, 1});
    if (scaled_.size() != device) {
        const bool isFiner = device.width() > pixmap_.width() && !dense_.isNull();
        scaled_ = (isFiner ? dense_ : pixmap_)
                      .scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, scaled_, QRectF(scaled_.rect()));
}

}  // namespace forms
