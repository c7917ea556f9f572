#pragma once

#include "assembly.h"

#include <QImage>

namespace render {

// The assembly on a white seamless floor, as the catalogue's photographs show parts. Larger parts
// fill more of the picture. The same assembly gives the same pixels.
QImage Photo(const Assembly& assembly, QSize size);

}  // namespace render
