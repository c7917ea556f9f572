#include "platform/forms/controls.h"

#include <QPainter>
#include <QtMath>

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
    // Scaled once to whole device pixels, and placed on them: a scaling while painting makes small
    // pictures coarse, and is dear where numbers blink on the picture.
    const QRectF place = PictureRect();
    const qreal ratio = devicePixelRatioF();
    const QSizeF exact = place.size() * ratio;
    const QSize device(qCeil(exact.width()), qCeil(exact.height()));
    if (scaled_.size() != device) {
        const bool isFiner = device.width() > pixmap_.width() && !dense_.isNull();
        scaled_ = (isFiner ? dense_ : pixmap_)
                      .scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        scaled_.setDevicePixelRatio(1);  // whatever the file's name made of it
    }
    QPainter painter(this);
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawPixmap(place.topLeft() * ratio, scaled_);
}

}  // namespace forms
