#pragma once

#include <QSize>

namespace forms {

// The picture of a main screen, in design pixels.
inline constexpr QSize PictureSize(800, 600);

// How much the picture is enlarged to fill an area of the screen evenly without being cut, at least
// 1: the toolkit does not make anything smaller. Rounded down to thousandths: a picture too large
// by a fraction would lose a row of pixels.
double ScaleFor(QSize available);

// Sets the toolkit's scale factor in the environment, unless the user has set one, and returns true
// when it did. Must run before the application object exists.
bool PrepareScale(int argc, char** argv);

}  // namespace forms
