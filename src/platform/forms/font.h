#pragma once

#include <QFont>

namespace forms {

// The family of all texts: "MS Sans Serif" where there is one of outlines, otherwise a substitute.
QString FontFamily();

// `pixels` are design pixels.
QFont Font(int pixels, bool bold = false);

}  // namespace forms
