#include "outline.h"

#include <algorithm>
#include <span>

namespace render {
namespace {

// Arcs of large radius get shorter steps, so that they still look round.
float ArcStep(float radius) {
    return Radians(radius < 8 ? 15.0f : radius < 30 ? 9.0f : 5.0f);
}

Vec2 RightOf(Vec2 d) {
    return {d.y, -d.x};
}

void AppendArc(Line& line, Vec2 corner, Vec2 in, Vec2 out, float radius) {
    const float turn = std::atan2(Cross(in, out), Dot(in, out));
    const float reach = radius * std::tan(std::abs(turn) / 2);
    const float side = turn > 0 ? 1.0f : -1.0f;
    const Vec2 centre = corner - in * reach - RightOf(in) * (radius * side);
    const int steps = std::max(2, static_cast<int>(std::ceil(std::abs(turn) / ArcStep(radius))));
    for (int i = 0; i <= steps; ++i) {
        const float angle = turn * static_cast<float>(i) / static_cast<float>(steps);
        const Vec2 n = RightOf(in);
        const Vec2 normal{n.x * std::cos(angle) - n.y * std::sin(angle),
                          n.x * std::sin(angle) + n.y * std::cos(angle)};
        line.push_back({centre + normal * (radius * side), normal, normal});
    }
    line[line.size() - static_cast<size_t>(steps) - 1].before = RightOf(in);
    line.back().after = RightOf(out);
}

}  // namespace

Line Rounded(const Corners& corners, bool closed) {
    Line line;
    const size_t count = corners.size();
    const auto at = [&](size_t i) { return Vec2{corners[i % count].x, corners[i % count].y}; };
    for (size_t i = 0; i < count; ++i) {
        const bool first = !closed && i == 0;
        const bool last = !closed && i + 1 == count;
        const Vec2 here = at(i);
        const Vec2 toHere = first ? at(1) - here : here - at(i + count - 1);
        const Vec2 onwards = last ? toHere : at(i + 1) - here;
        const Vec2 in = Normalized(toHere);
        const Vec2 out = Normalized(onwards);
        const float half = std::acos(std::clamp(Dot(in, out), -1.0f, 1.0f)) / 2;
        float radius = corners[i].fillet;
        if (!first && !last && radius > 0 && half > 0.01f && half < 1.55f) {
            // A stretch between two rounded corners serves both.
            const auto room = [&](float length, size_t neighbour) {
                return length * (corners[neighbour % count].fillet > 0 ? 0.4995f : 0.9995f);
            };
            radius = std::min(radius, std::min(room(Length(toHere), i + count - 1),
                                               room(Length(onwards), i + 1)) /
                                          std::tan(half));
            AppendArc(line, here, in, out, radius);
            continue;
        }
        line.push_back({here, RightOf(in), RightOf(out)});
    }
    return line;
}

Corners Rectangle(float width, float depth, float fillet) {
    const float x = width / 2;
    const float y = depth / 2;
    return {{x, -y, fillet}, {x, y, fillet}, {-x, y, fillet}, {-x, -y, fillet}};
}

Corners RegularPolygon(int sides, float acrossFlats, float fillet) {
    Corners corners;
    const float radius = acrossFlats / 2 / std::cos(Pi / static_cast<float>(sides));
    for (int i = 0; i < sides; ++i) {
        const float angle = 2 * Pi * static_cast<float>(i) / static_cast<float>(sides);
        corners.push_back({radius * std::cos(angle), radius * std::sin(angle), fillet});
    }
    return corners;
}

Corners Circle(float radius) {
    // Four corners, each rounded as far as it goes.
    return Rectangle(2 * radius, 2 * radius, radius);
}

Corners Link(float length, float radius0, float radius1) {
    // The tangents touch where the radius stands at `lean` to the line of centres.
    const float lean = std::acos(std::clamp((radius0 - radius1) / length, -0.99f, 0.99f));
    Corners corners;
    const auto arc = [&](float centre, float radius, float from, float to) {
        const int steps = 14;
        for (int i = 0; i <= steps; ++i) {
            const float a = from + (to - from) * static_cast<float>(i) / static_cast<float>(steps);
            corners.push_back({centre + radius * std::cos(a), radius * std::sin(a), 0});
        }
    };
    arc(length, radius1, -lean, lean);
    arc(0, radius0, lean, 2 * Pi - lean);
    return corners;
}

Corners EaredDisc(float radius, int eyes, float reach, float eyeRadius, float turn) {
    // The farther of disc and ears along each ray.
    Corners corners;
    const int rays = std::max(96, eyes * 28);
    for (int i = 0; i < rays; ++i) {
        const float angle = 2 * Pi * static_cast<float>(i) / static_cast<float>(rays);
        const Vec2 ray{std::cos(angle), std::sin(angle)};
        float far = radius;
        for (int k = 0; k < eyes; ++k) {
            const float place =
                Radians(turn) + 2 * Pi * static_cast<float>(k) / static_cast<float>(eyes);
            const Vec2 eye{reach * std::cos(place), reach * std::sin(place)};
            const float along = Dot(ray, eye);
            const float across = Cross(ray, eye);
            if (along > 0 && std::abs(across) < eyeRadius) {
                far = std::max(far, along + std::sqrt(eyeRadius * eyeRadius - across * across));
            }
        }
        corners.push_back({ray.x * far, ray.y * far, 0});
    }
    return corners;
}

Corners Moved(Corners corners, float x, float y) {
    for (Corner& corner : corners) {
        corner.x += x;
        corner.y += y;
    }
    return corners;
}

namespace {

// Ear clipping of a simple polygon; the holes are joined to it by bridges first.
class Clipper {
public:
    Clipper(const std::vector<Vec2>& outline, const std::vector<std::vector<Vec2>>& holes)
        : points_(outline) {
        for (uint32_t i = 0; i < outline.size(); ++i) {
            ring_.push_back(i);
        }
        std::vector<std::vector<uint32_t>> inner;
        for (const auto& hole : holes) {
            inner.emplace_back();
            for (const Vec2 p : hole) {
                inner.back().push_back(static_cast<uint32_t>(points_.size()));
                points_.push_back(p);
            }
        }
        std::sort(inner.begin(), inner.end(), [this](const auto& a, const auto& b) {
            return points_[Rightmost(a)].x > points_[Rightmost(b)].x;
        });
        for (size_t i = 0; i < inner.size(); ++i) {
            Bridge(inner[i], std::span(inner).subspan(i));
        }
    }

    std::vector<std::array<uint32_t, 3>> Run() {
        std::vector<std::array<uint32_t, 3>> triangles;
        size_t i = 0;
        size_t misses = 0;
        while (ring_.size() > 2) {
            const size_t n = ring_.size();
            i %= n;
            const uint32_t a = ring_[(i + n - 1) % n];
            const uint32_t b = ring_[i];
            const uint32_t c = ring_[(i + 1) % n];
            // After a full round without an ear, rounding has left only slivers: clip anything.
            if (misses <= n && !Ear(a, b, c)) {
                ++i;
                ++misses;
                continue;
            }
            triangles.push_back({a, b, c});
            ring_.erase(ring_.begin() + static_cast<std::ptrdiff_t>(i));
            misses = 0;
        }
        return triangles;
    }

private:
    uint32_t Rightmost(const std::vector<uint32_t>& hole) const {
        return *std::max_element(hole.begin(), hole.end(), [this](uint32_t a, uint32_t b) {
            return points_[a].x < points_[b].x;
        });
    }

    float Area(uint32_t a, uint32_t b, uint32_t c) const {
        return Cross(points_[b] - points_[a], points_[c] - points_[a]);
    }

    bool Ear(uint32_t a, uint32_t b, uint32_t c) const {
        if (Area(a, b, c) <= 0) {
            return false;
        }
        for (const uint32_t p : ring_) {
            const bool corner = p == a || p == b || p == c;
            if (!corner && Area(a, b, p) >= 0 && Area(b, c, p) >= 0 && Area(c, a, p) >= 0 &&
                !Same(p, a) && !Same(p, b) && !Same(p, c)) {
                return false;
            }
        }
        return true;
    }

    bool Same(uint32_t a, uint32_t b) const {
        return points_[a].x == points_[b].x && points_[a].y == points_[b].y;
    }

    bool Crosses(uint32_t a, uint32_t b, uint32_t c, uint32_t d) const {
        if (Same(a, c) || Same(a, d) || Same(b, c) || Same(b, d)) {
            return false;
        }
        return (Area(a, b, c) > 0) != (Area(a, b, d) > 0) &&
               (Area(c, d, a) > 0) != (Area(c, d, b) > 0);
    }

    // `open` are the holes that no bridge has reached yet, this one included.
    void Bridge(const std::vector<uint32_t>& hole, std::span<const std::vector<uint32_t>> open) {
        const uint32_t from = Rightmost(hole);
        std::vector<size_t> order(ring_.size());
        for (size_t i = 0; i < order.size(); ++i) {
            order[i] = i;
        }
        std::sort(order.begin(), order.end(), [&](size_t a, size_t b) {
            return Length(points_[ring_[a]] - points_[from]) <
                   Length(points_[ring_[b]] - points_[from]);
        });
        size_t to = order.front();
        for (const size_t candidate : order) {
            if (Visible(from, candidate, open)) {
                to = candidate;
                break;
            }
        }
        std::vector<uint32_t> way{ring_[to]};
        const auto start = std::find(hole.begin(), hole.end(), from);
        way.insert(way.end(), start, hole.end());
        way.insert(way.end(), hole.begin(), start);
        way.push_back(from);
        ring_.insert(ring_.begin() + static_cast<std::ptrdiff_t>(to), way.begin(), way.end());
    }

    bool Visible(uint32_t from, size_t place, std::span<const std::vector<uint32_t>> open) const {
        const size_t n = ring_.size();
        const uint32_t to = ring_[place];
        // Inside the corner at `to`, so that bridges ending at one point do not cross.
        const uint32_t before = ring_[(place + n - 1) % n];
        const uint32_t after = ring_[(place + 1) % n];
        const bool leftOfIn = Area(before, to, from) > 0;
        const bool leftOfOut = Area(to, after, from) > 0;
        const bool convex = Area(before, to, after) > 0;
        if (convex ? !(leftOfIn && leftOfOut) : !(leftOfIn || leftOfOut)) {
            return false;
        }
        const auto crosses = [&](const std::vector<uint32_t>& line) {
            for (size_t i = 0; i < line.size(); ++i) {
                if (Crosses(from, to, line[i], line[(i + 1) % line.size()])) {
                    return true;
                }
            }
            return false;
        };
        return !crosses(ring_) && std::none_of(open.begin(), open.end(), crosses);
    }

    std::vector<Vec2> points_;
    std::vector<uint32_t> ring_;
};

}  // namespace

std::vector<std::array<uint32_t, 3>> Triangulated(const std::vector<Vec2>& outline,
                                                  const std::vector<std::vector<Vec2>>& holes) {
    return Clipper(outline, holes).Run();
}

}  // namespace render
