#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>

namespace forms {

// A picture file, decoded to the size at which it is shown: at most `target` design pixels, aspect
// kept, never enlarged past the file's own pixels; the pixmap carries `ratio` (the screen's device
// pixels per design pixel). An empty `target`: the picture's natural size. The format is told from
// the content, not from the name, and a photo's own rotation is applied.
//
// A few pictures are kept, as long as their file does not change. Throws Erro 53 when there is no
// such file and 481 for a file that is no picture.
QPixmap LoadPicture(const QString& path, QSize target, qreal ratio);

// The same in its natural size, a design pixel for each of its pixels, cut to `room` from its top
// left corner: what lies beyond cannot be seen, and a picture may be far larger than any screen.
QPixmap LoadNaturalPicture(const QString& path, QSize room);

}  // namespace forms
