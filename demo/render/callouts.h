#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QString>

#include <cstdint>
#include <span>
#include <vector>

namespace render {

// An item's number beside the drawing and the line that leads to it.
struct Callout {
    size_t element = 0;
    QRect box;       // where the figure screen writes the number, pixels
    QPointF onPart;  // the line's ends
    QPointF atNumber;
};

// For each pixel of a page the element that it shows plus one, or 0.
struct Plan {
    QSize size;
    std::vector<uint16_t> elementOf;
    std::vector<uint8_t> lines;  // 1 where a centre line runs

    uint16_t At(int x, int y) const {
        return elementOf[static_cast<size_t>(y) * static_cast<size_t>(size.width()) +
                         static_cast<size_t>(x)];
    }
};

struct Callouts {
    std::vector<Callout> all;
    int faults = 0;  // numbers or lines that could not be kept clear of others
};

// The numbers' free places. `numbers` has one text for each element, as it is stored; an empty one
// or one of an element that is nowhere visible gets no callout.
Callouts PlaceCallouts(const Plan& plan, std::span<const QString> numbers, float slope);

}  // namespace render
