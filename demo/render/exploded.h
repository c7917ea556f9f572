#pragma once

#include "assembly.h"
#include "callouts.h"
#include "parameters.h"

#include <QImage>
#include <QPoint>

#include <span>
#include <vector>

namespace render {

struct Item {
    ComponentKind kind;
    QString number;  // becomes Element::item
};

// The items of a part in the order in which they come off its axis: the family's own body, covers
// and screws where its model has them, other components to the scale of its body.
Assembly ItemsOf(QStringView family, const Parameters& parameters, std::span<const Item> items);

// A line drawing with the elements pulled apart, black on white, and from each that has a number a
// thin line to a free place for it; the numbers themselves are not drawn. Long ones go on in
// further rows, each about its own centre line. Small elements are drawn larger than they are, so
// that they can be told apart. Pixels count from the picture's upper left corner.
struct ExplodedDrawing {
    QImage image;
    QImage dense;                   // the same, three pixels for each of its pixels
    std::vector<Callout> callouts;  // in the order of the elements
    int faults = 0;                 // see Callouts
    Plan plan;
    float scale = 0;  // pixels per mm of the largest element
};

ExplodedDrawing Explode(const Assembly& assembly, QSize size);

}  // namespace render
