#pragma once

#include "assembly.h"
#include "parameters.h"

#include <QImage>
#include <QPoint>
#include <QRect>

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

// A line drawing with the elements pulled apart, black on white. Long ones go on in further rows,
// each about its own centre line. Pixels count from the picture's upper left corner.
struct ExplodedDrawing {
    struct Place {
        size_t element;  // index in the assembly
        QRect box;       // of what is visible
        QPoint upper;    // a visible point near its upper edge, where a leader from above may end
        QPoint lower;    // the same near its lower edge
    };

    QImage image;
    std::vector<Place> places;  // in the order of the elements; those nowhere visible are left out
    std::vector<uint16_t> elementOf;  // for each pixel the element there plus one, or 0
    float scale = 0;                  // pixels per mm

    int ElementAt(QPoint pixel) const;  // -1 for none
};

// `margin` pixels at every side stay free for numbers.
ExplodedDrawing Explode(const Assembly& assembly, QSize size, int margin = 30);

}  // namespace render
