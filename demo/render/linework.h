#pragma once

#include "raster.h"

#include <QImage>

#include <algorithm>
#include <vector>

namespace render {

// How many samples of the buffers make one pixel of a line drawing, in each direction, and how many
// of its pixels one of the drawing for dense screens and paper.
inline constexpr int LineOversampling = 6;
inline constexpr int Density = 3;

// The visible edges of what the buffers show: borders of elements, steps in depth, creases.
// `elements` names the element of each surface id; `scale` is samples per mm. White where `ink` is
// 0.
class Linework {
public:
    Linework(const Buffers& buffers, const std::vector<uint16_t>& elements, float scale);

    // A dash-dot line between two places in samples, where no part covers it.
    void AddCentreLine(Vec2 from, Vec2 to);

    // A pixel for each `samples` by `samples` of the buffers.
    QImage Picture(int samples) const;

private:
    bool SameElement(size_t a, size_t b) const;
    float Turn(size_t a, size_t b) const;  // 1 - cosine between the normals
    bool NearlyParallel(size_t a, size_t b) const;
    bool Step(size_t a, size_t b, bool across) const;
    void FindExtents();
    void Borders(int x, int y, size_t at, size_t stride, bool across);
    bool IsCrease(size_t at, size_t stride) const;
    void Creases(bool across);
    void Mark(int x, int y);
    void DropSpecks();

    // The columns of a row in which a surface shows: from the first up to behind the last.
    struct Extent {
        int from;
        int to;
    };
    static Extent Joined(Extent a, Extent b) {
        return {std::min(a.from, b.from), std::max(a.to, b.to)};
    }

    const Buffers& buffers_;
    const std::vector<uint16_t>& elements_;
    float sample_;  // mm
    std::vector<uint8_t> ink_;
    std::vector<Extent> extents_;
};

}  // namespace render
