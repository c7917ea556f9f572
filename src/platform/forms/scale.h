#pragma once

#include <QObject>
#include <QSize>

class QScreen;

namespace forms {

// The picture of a main screen, in design pixels.
inline constexpr QSize PictureSize(800, 600);

// How much the picture is enlarged to fill an area of the screen, in its own pixels, evenly without
// being cut; at least 1: the toolkit does not make anything smaller. Rounded down to thousandths: a
// picture too large by a fraction would lose a row of pixels.
double ScaleFor(QSize available);

// Keeps every screen at that scale, whatever the desktop's own display scaling is, from its
// construction on; a QT_SCALE_FACTOR that the user has set holds from 1 on as far as the picture
// fits.
class ScreenScale : public QObject {
    Q_OBJECT

public:
    explicit ScreenScale(QObject* parent);

Q_SIGNALS:
    void Changed();  // a screen has another size or another scale

private:
    void Watch(QScreen* screen);
    void Fit(QScreen* screen);
};

}  // namespace forms
