#include "platform/forms/scale.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <vector>

namespace forms {

double ScaleFor(QSize available) {
    const double scale = std::min(double(available.width()) / PictureSize.width(),
                                  double(available.height()) / PictureSize.height());
    return std::max(std::floor(scale * 1000 + 1e-6) / 1000, 1.0);
}

bool PrepareScale(int argc, char** argv) {
    for (const char* variable : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"}) {
        if (!qEnvironmentVariableIsEmpty(variable)) {
            return false;
        }
    }
    // The screen is known only to an application object, and the scale must stand before the real
    // one: a short-lived one asks. It takes options out of its arguments, so it gets a copy.
    std::vector<char*> arguments(argv, argv + argc);
    arguments.push_back(nullptr);
    const QGuiApplication probe(argc, arguments.data());
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double scale = screen ? ScaleFor(screen->availableSize()) : 1;
    qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
    return true;
}

}  // namespace forms
