#include "shapes.h"

#include <algorithm>

namespace render {
namespace {

int SegmentsOf(float radius) {
    return std::clamp(static_cast<int>(24 + radius * 0.9f) / 8 * 8, 24, 112);
}

struct Ray {
    float c;
    float s;
};

std::vector<Ray> Rays(int count) {
    std::vector<Ray> rays;
    for (int i = 0; i < count; ++i) {
        const float angle = 2 * Pi * static_cast<float>(i) / static_cast<float>(count);
        rays.push_back({std::cos(angle), std::sin(angle)});
    }
    return rays;
}

// Two triangles between the points i and j of a lower and an upper row.
void Quad(Mesh& mesh, uint32_t a, uint32_t b, uint32_t c, uint32_t d) {
    mesh.triangles.push_back({a, b, c});
    mesh.triangles.push_back({a, c, d});
}

}  // namespace

Mesh Revolved(const Corners& given) {
    Corners profile = given;
    for (Corner& corner : profile) {
        corner.x = std::max(corner.x, 0.0f);
    }
    const bool ring = profile.front().x > 0 && profile.back().x > 0;
    const Line line = Rounded(profile, ring);
    float widest = 0;
    for (const LinePoint& point : line) {
        widest = std::max(widest, point.at.x);
    }
    const std::vector<Ray> rays = Rays(SegmentsOf(widest));
    const auto count = static_cast<uint32_t>(rays.size());
    Mesh mesh;
    const auto row = [&](Vec2 at, Vec2 normal) {
        const auto first = static_cast<uint32_t>(mesh.vertices.size());
        for (const Ray ray : rays) {
            mesh.vertices.push_back({{at.x * ray.c, at.x * ray.s, at.y},
                                     {normal.x * ray.c, normal.x * ray.s, normal.y}});
        }
        return first;
    };
    uint32_t high = 0;
    const size_t stretches = ring ? line.size() : line.size() - 1;
    for (size_t i = 0; i < stretches; ++i) {
        const LinePoint& from = line[i];
        const LinePoint& to = line[(i + 1) % line.size()];
        // Where the profile runs on smoothly, two stretches share a row.
        const uint32_t low =
            i > 0 && !from.Sharp()
                ? high
                : row(from.at, from.Sharp() ? from.after : Normalized(from.before + from.after));
        high = row(to.at, to.Sharp() ? to.before : Normalized(to.before + to.after));
        for (uint32_t k = 0; k < count; ++k) {
            const uint32_t next = (k + 1) % count;
            if (from.at.x > 0) {
                mesh.triangles.push_back({low + k, low + next, high + next});
            }
            if (to.at.x > 0) {
                mesh.triangles.push_back({low + k, high + next, high + k});
            }
        }
    }
    return mesh;
}

namespace {

// The outline drawn in by `inset`, at height z, its normals leaning towards +-z by `lean` (sine).
struct Layer {
    float inset;
    float z;
    float lean;
};

std::vector<Vec2> Inset(const Line& line, float inset) {
    std::vector<Vec2> points;
    for (const LinePoint& p : line) {
        const float spread = std::max(0.3f, 1 + Dot(p.before, p.after));
        points.push_back(p.at - (p.before + p.after) * (inset / spread));
    }
    return points;
}

void Wall(Mesh& mesh, const Line& line, const Layer& low, const Layer& high) {
    const std::vector<Vec2> below = Inset(line, low.inset);
    const std::vector<Vec2> above = Inset(line, high.inset);
    const auto leaning = [](Vec2 n, float lean) {
        const float flat = std::sqrt(std::max(0.0f, 1 - lean * lean));
        return Vec3{n.x * flat, n.y * flat, lean};
    };
    for (size_t i = 0; i < line.size(); ++i) {
        const size_t j = (i + 1) % line.size();
        const auto smooth = [](const LinePoint& p, Vec2 sharp) {
            return p.Sharp() ? sharp : Normalized(p.before + p.after);
        };
        const Vec2 from = smooth(line[i], line[i].after);
        const Vec2 to = smooth(line[j], line[j].before);
        const auto first = static_cast<uint32_t>(mesh.vertices.size());
        mesh.vertices.push_back({{below[i].x, below[i].y, low.z}, leaning(from, low.lean)});
        mesh.vertices.push_back({{below[j].x, below[j].y, low.z}, leaning(to, low.lean)});
        mesh.vertices.push_back({{above[j].x, above[j].y, high.z}, leaning(to, high.lean)});
        mesh.vertices.push_back({{above[i].x, above[i].y, high.z}, leaning(from, high.lean)});
        Quad(mesh, first, first + 1, first + 2, first + 3);
    }
}

void Caps(Mesh& mesh, const std::vector<Vec2>& outline, const std::vector<std::vector<Vec2>>& holes,
          float z0, float z1) {
    std::vector<Vec2> all = outline;
    for (const auto& hole : holes) {
        all.insert(all.end(), hole.begin(), hole.end());
    }
    const auto first = static_cast<uint32_t>(mesh.vertices.size());
    const auto count = static_cast<uint32_t>(all.size());
    for (const Vec2 p : all) {
        mesh.vertices.push_back({{p.x, p.y, z1}, {0, 0, 1}});
    }
    for (const Vec2 p : all) {
        mesh.vertices.push_back({{p.x, p.y, z0}, {0, 0, -1}});
    }
    for (const auto& t : Triangulated(outline, holes)) {
        mesh.triangles.push_back({first + t[0], first + t[1], first + t[2]});
        mesh.triangles.push_back(
            {first + count + t[0], first + count + t[2], first + count + t[1]});
    }
}

}  // namespace

Mesh Extruded(const Corners& outline, float z0, float z1, float edge,
              const std::vector<Corners>& holes) {
    Mesh mesh;
    const Line line = Rounded(outline, true);
    edge = std::min(edge, (z1 - z0) * 0.49f);
    std::vector<Layer> layers;
    const int steps = edge > 0 ? 4 : 0;
    for (int i = 0; i <= steps; ++i) {
        const float angle =
            steps > 0 ? Pi / 2 * static_cast<float>(i) / static_cast<float>(steps) : 0;
        layers.push_back({edge * (1 - std::sin(angle)), z0 + edge * (1 - std::cos(angle)),
                          edge > 0 ? -std::cos(angle) : 0});
    }
    for (int i = steps; i >= 0; --i) {
        const Layer& low = layers[static_cast<size_t>(i)];
        layers.push_back({low.inset, z0 + z1 - low.z, -low.lean});
    }
    for (size_t i = 0; i + 1 < layers.size(); ++i) {
        Wall(mesh, line, layers[i], layers[i + 1]);
    }
    std::vector<std::vector<Vec2>> inner;
    for (const Corners& hole : holes) {
        const Corners clockwise(hole.rbegin(), hole.rend());
        const Line around = Rounded(clockwise, true);
        Wall(mesh, around, {0, z0, 0}, {0, z1, 0});
        inner.push_back(Inset(around, 0));
    }
    Caps(mesh, Inset(line, edge), inner, z0, z1);
    return mesh;
}

Mesh Cylinder(float radius, float height, float edge) {
    return Revolved({{0, 0}, {radius, 0, edge}, {radius, height, edge}, {0, height}});
}

Mesh Tube(float radius, float bore, float height, float edge) {
    return Revolved(
        {{bore, 0, edge}, {radius, 0, edge}, {radius, height, edge}, {bore, height, edge}});
}

Mesh Block(float width, float depth, float height, float fillet, float edge) {
    return Extruded(Rectangle(width, depth, fillet), 0, height, edge);
}

Mesh Ball(float radius) {
    return Revolved(
        {{0, -radius}, {radius, -radius, radius}, {radius, radius, radius}, {0, radius}});
}

Mesh Torus(float radius, float wire) {
    const float r = wire / 2;
    return Revolved(
        {{radius - r, -r, r}, {radius + r, -r, r}, {radius + r, r, r}, {radius - r, r, r}});
}

Mesh Hexagon(float acrossFlats, float height, bool chamferBelow, bool chamferAbove, float bore) {
    constexpr int PerSide = 12;
    constexpr int Count = 6 * PerSide;
    const float flat = acrossFlats / 2;
    const float slope = std::tan(Radians(30));
    struct Column {
        Ray ray;
        float reach;
        Vec2 normal;
    };
    Mesh mesh;
    std::vector<Column> columns;
    for (int i = 0; i < Count; ++i) {
        const float angle = 2 * Pi * static_cast<float>(i) / Count;
        const float middle = Radians(60) * (std::floor(static_cast<float>(i) / PerSide) + 0.5f);
        columns.push_back({{std::cos(angle), std::sin(angle)},
                           flat / std::cos(angle - middle),
                           {std::cos(middle), std::sin(middle)}});
    }
    const float rim = flat * 0.94f;
    const auto cut = [&](float reach) { return std::max(0.0f, (reach - rim) * slope); };
    const auto at = [](const Column& c, float reach, float z) {
        return Vec3{c.ray.c * reach, c.ray.s * reach, z};
    };
    const auto face = [&](const std::array<Vec3, 4>& corner, const std::array<Vec3, 4>& normal) {
        const auto first = static_cast<uint32_t>(mesh.vertices.size());
        for (size_t k = 0; k < 4; ++k) {
            mesh.vertices.push_back({corner[k], normal[k]});
        }
        Quad(mesh, first, first + 1, first + 2, first + 3);
    };
    for (int i = 0; i < Count; ++i) {
        const Column& a = columns[static_cast<size_t>(i)];
        Column b = columns[static_cast<size_t>((i + 1) % Count)];
        b.normal = a.normal;
        const Vec3 side{a.normal.x, a.normal.y, 0};
        const float lowA = chamferBelow ? cut(a.reach) : 0;
        const float lowB = chamferBelow ? cut(b.reach) : 0;
        const float highA = height - (chamferAbove ? cut(a.reach) : 0);
        const float highB = height - (chamferAbove ? cut(b.reach) : 0);
        face({at(a, a.reach, lowA), at(b, b.reach, lowB), at(b, b.reach, highB),
              at(a, a.reach, highA)},
             {side, side, side, side});
        const auto cone = [&](const Column& c, float z) {
            return Normalized(Vec3{c.ray.c * slope, c.ray.s * slope, z});
        };
        const float up = chamferAbove ? 1.0f : 1e4f;
        const float down = chamferBelow ? -1.0f : -1e4f;
        face({at(a, a.reach, highA), at(b, b.reach, highB), at(b, rim, height), at(a, rim, height)},
             {cone(a, up), cone(b, up), cone(b, up), cone(a, up)});
        face({at(a, rim, 0), at(b, rim, 0), at(b, b.reach, lowB), at(a, a.reach, lowA)},
             {cone(a, down), cone(b, down), cone(b, down), cone(a, down)});
        const Vec3 top{0, 0, 1};
        const Vec3 bottom{0, 0, -1};
        if (bore <= 0) {
            const auto first = static_cast<uint32_t>(mesh.vertices.size());
            mesh.vertices.insert(mesh.vertices.end(), {{at(a, rim, height), top},
                                                       {at(b, rim, height), top},
                                                       {{0, 0, height}, top},
                                                       {at(b, rim, 0), bottom},
                                                       {at(a, rim, 0), bottom},
                                                       {{0, 0, 0}, bottom}});
            mesh.triangles.push_back({first, first + 1, first + 2});
            mesh.triangles.push_back({first + 3, first + 4, first + 5});
            continue;
        }
        face({at(a, rim, height), at(b, rim, height), at(b, bore, height), at(a, bore, height)},
             {top, top, top, top});
        face({at(a, bore, 0), at(b, bore, 0), at(b, rim, 0), at(a, rim, 0)},
             {bottom, bottom, bottom, bottom});
        const Vec3 inA{-a.ray.c, -a.ray.s, 0};
        const Vec3 inB{-b.ray.c, -b.ray.s, 0};
        face({at(a, bore, height), at(b, bore, height), at(b, bore, 0), at(a, bore, 0)},
             {inA, inB, inB, inA});
    }
    return mesh;
}

Mesh ThreadedRod(float diameter, float length, float pitch, float tip) {
    constexpr float MostRidges = 120;
    pitch = std::max(pitch, length / MostRidges);
    const float radius = diameter / 2;
    const float depth = std::min(pitch * 0.45f, radius * 0.2f);
    Corners profile{{0, 0}, {radius - depth, 0}};
    for (float z = pitch * 0.5f; z < length - tip - pitch; z += pitch) {
        profile.push_back({radius, z, pitch * 0.12f});
        profile.push_back({radius - depth, z + pitch * 0.5f, pitch * 0.12f});
    }
    profile.push_back({radius - depth * 0.3f, length - tip, 0});
    profile.push_back({std::max(radius - depth - tip, 0.1f), length, 0});
    profile.push_back({0, length});
    return Revolved(profile);
}

std::vector<Vec3> Smooth(const std::vector<Vec3>& points, int steps) {
    std::vector<Vec3> way;
    const auto last = static_cast<int>(points.size()) - 1;
    const auto at = [&](int i) { return points[static_cast<size_t>(std::clamp(i, 0, last))]; };
    for (int i = 0; i < last; ++i) {
        for (int k = 0; k < steps; ++k) {
            const float t = static_cast<float>(k) / static_cast<float>(steps);
            const Vec3 a = at(i - 1);
            const Vec3 b = at(i);
            const Vec3 c = at(i + 1);
            const Vec3 d = at(i + 2);
            way.push_back((b * 2 + (c - a) * t + (a * 2 - b * 5 + c * 4 - d) * (t * t) +
                           (b * 3 - a - c * 3 + d) * (t * t * t)) *
                          0.5f);
        }
    }
    way.push_back(points.back());
    return way;
}

Mesh Bar(const std::vector<Vec3>& way, float radius, int sides) {
    Mesh mesh;
    const std::vector<Ray> rays = Rays(sides);
    const auto count = static_cast<uint32_t>(sides);
    const size_t n = way.size();
    const auto heading = [&](size_t i) {
        return Normalized(way[std::min(i + 1, n - 1)] - way[i > 0 ? i - 1 : 0]);
    };
    Vec3 along = heading(0);
    const Vec3 any = std::abs(along.z) < 0.9f ? Vec3{0, 0, 1} : Vec3{1, 0, 0};
    Vec3 u = Normalized(Cross(any, along));
    for (size_t i = 0; i < n; ++i) {
        along = heading(i);
        u = Normalized(u - along * Dot(u, along));
        const Vec3 v = Cross(along, u);
        for (const Ray ray : rays) {
            const Vec3 normal = u * ray.c + v * ray.s;
            mesh.vertices.push_back({way[i] + normal * radius, normal});
        }
        if (i == 0) {
            continue;
        }
        const auto high = static_cast<uint32_t>(i) * count;
        for (uint32_t k = 0; k < count; ++k) {
            const uint32_t next = (k + 1) % count;
            Quad(mesh, high - count + k, high - count + next, high + next, high + k);
        }
    }
    for (const bool end : {false, true}) {
        const size_t i = end ? n - 1 : 0;
        const Vec3 out = heading(i) * (end ? 1.0f : -1.0f);
        const auto centre = static_cast<uint32_t>(mesh.vertices.size());
        const uint32_t from = end ? static_cast<uint32_t>(n - 1) * count : 0;
        mesh.vertices.push_back({way[i], out});
        for (uint32_t k = 0; k < count; ++k) {
            mesh.vertices.push_back({mesh.vertices[from + k].at, out});
        }
        for (uint32_t k = 0; k < count; ++k) {
            const uint32_t here = centre + 1 + k;
            const uint32_t next = centre + 1 + (k + 1) % count;
            mesh.triangles.push_back({centre, end ? here : next, end ? next : here});
        }
    }
    return mesh;
}

std::vector<Vec3> Helix(const Coil& coil, int stepsOfTurn) {
    std::vector<Vec3> way;
    const float ends = coil.flatEnds ? 1.0f : 0.0f;
    const float total = coil.turns + 2 * ends;
    const float rise = std::max(coil.height - coil.wire * (1 + 2 * ends), coil.wire);
    const int steps = std::max(2, static_cast<int>(total * static_cast<float>(stepsOfTurn)));
    const float top = coil.topRadius > 0 ? coil.topRadius : coil.radius;
    for (int i = 0; i <= steps; ++i) {
        const float turn = total * static_cast<float>(i) / static_cast<float>(steps);
        const float working = std::clamp(turn - ends, 0.0f, coil.turns);
        const float flat = std::min(turn, ends) + std::max(turn - ends - coil.turns, 0.0f);
        const float share = working / std::max(coil.turns, 0.01f);
        const float radius = coil.radius + (top - coil.radius) * share;
        way.push_back({radius * std::cos(2 * Pi * turn), radius * std::sin(2 * Pi * turn),
                       coil.wire / 2 + flat * coil.wire + rise * share});
    }
    return way;
}

Mesh Spring(const Coil& coil) {
    return Bar(Helix(coil, 28), coil.wire / 2, 14);
}

}  // namespace render
