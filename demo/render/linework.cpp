#include "linework.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace render {
namespace {

constexpr float Crease = 0.16f;    // 1 - cos of about 33 degrees
constexpr float Straight = 0.06f;  // what still counts as one face
constexpr float StepSamples = 0.9f * LineOversampling;

// The pen: a disc a little narrower than a pixel.
struct Offset {
    int x;
    int y;
};
const std::vector<Offset>& Pen() {
    static const std::vector<Offset> pen = [] {
        std::vector<Offset> disc;
        constexpr float Radius = 0.45f * LineOversampling;
        constexpr int Reach = LineOversampling / 2;
        for (int y = -Reach; y <= Reach; ++y) {
            for (int x = -Reach; x <= Reach; ++x) {
                if (static_cast<float>(x * x + y * y) <= Radius * Radius) {
                    disc.push_back({x, y});
                }
            }
        }
        return disc;
    }();
    return pen;
}

size_t Row(int y) {
    return static_cast<size_t>(y);
}

}  // namespace

Linework::Linework(const Buffers& buffers, const std::vector<uint16_t>& elements, float scale)
    : buffers_(buffers), elements_(elements), sample_(1 / scale), ink_(buffers.samples.size(), 0) {
    FindExtents();
    const auto row = static_cast<size_t>(buffers_.width);
    for (int y = 0; y + 1 < buffers_.height; ++y) {
        const Extent extent = Joined(extents_[Row(y)], extents_[Row(y + 1)]);
        const int end = std::min(extent.to, buffers_.width - 1);
        for (int x = std::max(0, extent.from - 1); x < end; ++x) {
            const size_t at = buffers_.Index(x, y);
            const auto surface = [&](size_t i) { return buffers_.samples[i].surface; };
            if ((surface(at) | surface(at + 1) | surface(at + row)) == 0) {
                continue;
            }
            Borders(x, y, at, 1, true);
            Borders(x, y, at, row, false);
        }
    }
    Creases(true);
    Creases(false);
    DropSpecks();
}

void Linework::FindExtents() {
    extents_.resize(Row(buffers_.height));
    for (int y = 0; y < buffers_.height; ++y) {
        const Sample* row = &buffers_.samples[buffers_.Index(0, y)];
        Extent& extent = extents_[Row(y)];
        extent = {0, buffers_.width};
        while (extent.from < extent.to && row[extent.from].surface == 0) {
            ++extent.from;
        }
        while (extent.to > 0 && row[extent.to - 1].surface == 0) {
            --extent.to;
        }
    }
}

inline bool Linework::SameElement(size_t a, size_t b) const {
    const uint16_t p = buffers_.samples[a].surface;
    const uint16_t q = buffers_.samples[b].surface;
    return p == q || (p != 0 && q != 0 && elements_[p] == elements_[q]);
}

inline float Linework::Turn(size_t a, size_t b) const {
    const auto normal = [this](size_t i) {
        const Sample& s = buffers_.samples[i];
        return Normalized(
            Vec3{static_cast<float>(s.x), static_cast<float>(s.y), static_cast<float>(s.z)});
    };
    return 1 - Dot(normal(a), normal(b));
}

// A quick look that spares most samples the exact one.
inline bool Linework::NearlyParallel(size_t a, size_t b) const {
    const Sample& p = buffers_.samples[a];
    const Sample& q = buffers_.samples[b];
    const float dx = static_cast<float>(p.x - q.x);
    const float dy = static_cast<float>(p.y - q.y);
    const float dz = static_cast<float>(p.z - q.z);
    constexpr float Unit = 32767;
    return dx * dx + dy * dy + dz * dz < Crease * Unit * Unit;
}

// Whether the surface jumps: neither sample lies on the other's tangent plane.
inline bool Linework::Step(size_t a, size_t b, bool across) const {
    const auto slope = [&](size_t i) {
        const Sample& s = buffers_.samples[i];
        const auto facing = static_cast<float>(std::max<int16_t>(s.z, 4000));
        return (across ? -static_cast<float>(s.x) : static_cast<float>(s.y)) / facing * sample_;
    };
    const float rise = buffers_.depth[b] - buffers_.depth[a];
    const float least = StepSamples * sample_;
    return std::abs(rise - slope(a)) > least && std::abs(rise - slope(b)) > least;
}

inline void Linework::Borders(int x, int y, size_t at, size_t stride, bool across) {
    const size_t next = at + stride;
    if (buffers_.samples[at].surface == 0 && buffers_.samples[next].surface == 0) {
        return;
    }
    if (SameElement(at, next) && !Step(at, next, across)) {
        return;
    }
    // The line belongs to what lies in front.
    const bool second = buffers_.depth[next] > buffers_.depth[at];
    Mark(x + (second && across ? 1 : 0), y + (second && !across ? 1 : 0));
}

// The normal turns between two faces that each go on for a while; so threads too fine for the
// picture leave no blot.
inline bool Linework::IsCrease(size_t at, size_t stride) const {
    constexpr size_t Near = LineOversampling / 2;
    constexpr size_t Far = LineOversampling;
    const size_t before = at - Near * stride;
    const size_t after = at + Near * stride;
    if (buffers_.samples[at].surface == 0 || NearlyParallel(before, after) ||
        !SameElement(at, before) || !SameElement(at, after)) {
        return false;
    }
    const size_t back = at - Far * stride;
    const size_t ahead = at + Far * stride;
    return Turn(before, after) >= Crease && SameElement(at, back) && SameElement(at, ahead) &&
           Turn(back, before) <= Straight && Turn(after, ahead) <= Straight;
}

// One mark in the middle of each run across or down.
void Linework::Creases(bool across) {
    constexpr int Edge = LineOversampling;
    const size_t stride = across ? 1 : static_cast<size_t>(buffers_.width);
    // Row by row in both cases, as the samples lie in memory.
    std::vector<int> begun(static_cast<size_t>(across ? buffers_.height : buffers_.width), -1);
    for (int y = Edge; y + Edge < buffers_.height; ++y) {
        // A run ends one sample behind what shows.
        const Extent extent = Joined(extents_[Row(y)], extents_[Row(y - 1)]);
        const int end = std::min(extent.to + 1, buffers_.width - Edge);
        for (int x = std::max(Edge, extent.from); x < end; ++x) {
            int& start = begun[static_cast<size_t>(across ? y : x)];
            const int here = across ? x : y;
            if (IsCrease(buffers_.Index(x, y), stride)) {
                start = start < 0 ? here : start;
            } else if (start >= 0) {
                const int middle = (start + here - 1) / 2;
                Mark(across ? middle : x, across ? y : middle);
                start = -1;
            }
        }
    }
}

void Linework::Mark(int x, int y) {
    for (const Offset& offset : Pen()) {
        const int u = x + offset.x;
        const int v = y + offset.y;
        if (u >= 0 && v >= 0 && u < buffers_.width && v < buffers_.height) {
            ink_[buffers_.Index(u, v)] = 1;
        }
    }
}

// A stroke of less than some pixels that nothing joins is no edge that anybody would draw.
void Linework::DropSpecks() {
    constexpr size_t Least = 4 * LineOversampling * 7 * LineOversampling / 4;
    constexpr uint8_t Visited = 2;
    std::vector<size_t> speck;
    const auto row = static_cast<size_t>(buffers_.width);
    for (size_t start = 0; start < ink_.size(); ++start) {
        if (ink_[start] != 1) {
            continue;
        }
        speck.assign(1, start);
        ink_[start] = Visited;
        for (size_t i = 0; i < speck.size(); ++i) {
            const size_t at = speck[i];
            const size_t column = at % row;
            const auto visit = [&](bool inside, size_t next) {
                if (inside && ink_[next] == 1) {
                    ink_[next] = Visited;
                    speck.push_back(next);
                }
            };
            visit(column > 0, at - 1);
            visit(column + 1 < row, at + 1);
            visit(at >= row, at - row);
            visit(at + row < ink_.size(), at + row);
        }
        if (speck.size() < Least) {
            for (const size_t at : speck) {
                ink_[at] = 0;
            }
        }
    }
    for (uint8_t& ink : ink_) {
        ink = ink == 0 ? 0 : 1;
    }
}

void Linework::AddCentreLine(Vec2 from, Vec2 to) {
    // Long dash, gap, short dash, gap; in samples.
    constexpr std::array<float, 4> Pattern{11 * LineOversampling, 3 * LineOversampling,
                                           2 * LineOversampling, 3 * LineOversampling};
    constexpr float Period = Pattern[0] + Pattern[1] + Pattern[2] + Pattern[3];
    const float length = Length(to - from);
    const Vec2 along = Normalized(to - from);
    for (float t = 0; t < length; t += 1) {
        const float phase = std::fmod(t, Period);
        const bool gap =
            (phase > Pattern[0] && phase < Pattern[0] + Pattern[1]) || phase > Period - Pattern[3];
        const Vec2 at = from + along * t;
        const auto x = static_cast<int>(at.x);
        const auto y = static_cast<int>(at.y);
        const bool inside = x >= 0 && y >= 0 && x < buffers_.width && y < buffers_.height;
        if (!gap && inside && buffers_.samples[buffers_.Index(x, y)].surface == 0) {
            for (int k = 0; k < LineOversampling / 2; ++k) {
                ink_[buffers_.Index(x, std::max(0, y - k))] = 1;
            }
        }
    }
}

QImage Linework::Picture(int samples) const {
    const int N = samples;
    QImage image(buffers_.width / N, buffers_.height / N, QImage::Format_Grayscale8);
    std::vector<uint8_t> sums(Row(buffers_.width));
    for (int y = 0; y < image.height(); ++y) {
        std::fill(sums.begin(), sums.end(), uint8_t{0});
        for (int v = 0; v < N; ++v) {
            const uint8_t* row = &ink_[buffers_.Index(0, y * N + v)];
            for (size_t x = 0; x < sums.size(); ++x) {
                sums[x] = static_cast<uint8_t>(sums[x] + row[x]);
            }
        }
        uchar* line = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            const auto first = sums.begin() + static_cast<std::ptrdiff_t>(x) * N;
            const int ink = std::accumulate(first, first + N, 0);
            line[x] = static_cast<uchar>(255 - ink * 255 / (N * N));
        }
    }
    return image;
}

}  // namespace render
