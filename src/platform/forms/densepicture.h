#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>

namespace forms {

// The companion of a picture for dense screens and paper: the file of the same name with "@3x"
// before its ending, with three pixels for each of the picture's, in each direction. Null when
// there is none, or none of that size. `natural` is the picture's own size in pixels.
QPixmap LoadDensePicture(const QString& path, QSize natural);

}  // namespace forms
