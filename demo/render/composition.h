#pragma once

#include "assembly.h"
#include "raster.h"

#include <QSize>

#include <vector>

namespace render {

// How a part pulled apart stands on a page: from where it is seen, in how many rows, and where each
// element lies.
struct Composition {
    float slope = 0;          // degrees by which the axis rises to the right
    float gap = 0;            // pixels between rows, for numbers
    float scale = 0;          // pixels per mm
    std::vector<Vec2> spots;  // of each element's origin; mm, y upwards
    struct CentreLine {
        Vec2 from;
        Vec2 to;
    };
    std::vector<CentreLine> rows;
    Vec2 middle;  // of all of it

    Camera View() const;     // scale and centre are left to the caller
    Placement Page() const;  // turns an assembly's axis into the page's
};

// All that can be thought of, the one that shows the parts largest first. `margin` pixels at every
// side stay free.
std::vector<Composition> Compositions(const Assembly& assembly, QSize size, int margin);

}  // namespace render
