#include "platform/forms/scale.h"

#include <QGuiApplication>
#include <QScreen>
#include <QtGui/private/qhighdpiscaling_p.h>
#include <qpa/qplatformscreen.h>

#include <algorithm>
#include <cmath>

namespace forms {
namespace {

// The toolkit multiplies a screen's own factor by it.
double UsersFactor() {
    const double factor = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble();
    return factor > 0 ? factor : 0;
}

}  // namespace

double ScaleFor(QSize available) {
    const double scale = std::min(double(available.width()) / PictureSize.width(),
                                  double(available.height()) / PictureSize.height());
    return std::max(std::floor(scale * 1000 + 1e-6) / 1000, 1.0);
}

ScreenScale::ScreenScale(QObject* parent) : QObject(parent) {
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &ScreenScale::Watch);
    for (QScreen* screen : QGuiApplication::screens()) {
        Watch(screen);
    }
}

void ScreenScale::Watch(QScreen* screen) {
    Fit(screen);
    // Queued: the scale is not to change amid the toolkit's own work on the news. Changing it is
    // such news in its turn, and finds nothing more to do.
    connect(
        screen, &QScreen::availableGeometryChanged, this,
        [this, screen] {
            Fit(screen);
            Q_EMIT Changed();
        },
        Qt::QueuedConnection);
}

void ScreenScale::Fit(QScreen* screen) {
    const double users = UsersFactor();
    const double fitting = ScaleFor(screen->handle()->availableGeometry().size());
    const double wanted = users > 0 ? std::clamp(users, 1.0, fitting) : fitting;
    if (!qFuzzyCompare(QHighDpiScaling::factor(screen), wanted)) {
        QHighDpiScaling::setScreenFactor(screen, users > 0 ? wanted / users : wanted);
    }
}

}  // namespace forms
