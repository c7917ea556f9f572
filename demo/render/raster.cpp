#include "raster.h"

#include <algorithm>
#include <utility>

namespace render {
namespace {

struct Projected {
    float x;
    float y;
    float depth;
    float nx;
    float ny;
    float nz;
};

// A quantity that is linear over the triangle: its value at the first corner and its slopes.
struct Plane {
    float base;
    float dx;
    float dy;
};

class Filler {
public:
    Filler(Buffers& buffers, uint16_t surface) : buffers_(buffers), surface_(surface) {}

    void Fill(const Projected& a, const Projected& b, const Projected& c) {
        // y runs downwards on the picture, so a front face comes out clockwise.
        const float area = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
        if (!(area < -1e-6f)) {
            return;
        }
        const int top = std::max(0, static_cast<int>(std::ceil(std::min({a.y, b.y, c.y}) - 0.5f)));
        const int bottom = std::min(buffers_.height - 1,
                                    static_cast<int>(std::floor(std::max({a.y, b.y, c.y}) - 0.5f)));
        const float least = std::min({a.x, b.x, c.x});
        const float most = std::max({a.x, b.x, c.x});
        // Most faces of a small part lie between the samples.
        if (top > bottom || FirstColumn(least) > LastColumn(most)) {
            return;
        }
        const float inverse = 1 / area;
        const auto plane = [&](float va, float vb, float vc) {
            const float dx = ((vb - va) * (c.y - a.y) - (vc - va) * (b.y - a.y)) * inverse;
            const float dy = ((vc - va) * (b.x - a.x) - (vb - va) * (c.x - a.x)) * inverse;
            return Plane{va, dx, dy};
        };
        const Plane depth = plane(a.depth, b.depth, c.depth);
        const Plane nx = plane(a.nx, b.nx, c.nx);
        const Plane ny = plane(a.ny, b.ny, c.ny);
        const Plane nz = plane(a.nz, b.nz, c.nz);
        const float lowest = std::min({a.depth, b.depth, c.depth});
        const float highest = std::max({a.depth, b.depth, c.depth});
        for (int row = top; row <= bottom; ++row) {
            const float y = static_cast<float>(row) + 0.5f;
            float from = most;
            float to = least;
            Cross(a, b, y, from, to);
            Cross(b, c, y, from, to);
            Cross(c, a, y, from, to);
            const int first = FirstColumn(from);
            const int last = LastColumn(to);
            const size_t line = buffers_.Index(0, row);
            for (int column = first; column <= last; ++column) {
                const float x = static_cast<float>(column) + 0.5f - a.x;
                const auto at = [x, dy = y - a.y](const Plane& p) {
                    return p.base + p.dy * dy + p.dx * x;
                };
                const float z = std::clamp(at(depth), lowest, highest);
                const size_t i = line + static_cast<size_t>(column);
                if (z > buffers_.depth[i]) {
                    buffers_.depth[i] = z;
                    buffers_.samples[i] = {Short(at(nx)), Short(at(ny)), Short(at(nz)), surface_};
                }
            }
        }
    }

private:
    // A hair wider than exact: neighbours overlap rather than leave a gap.
    static int FirstColumn(float from) {
        return std::max(0, static_cast<int>(std::ceil(from - 0.505f)));
    }
    int LastColumn(float to) const {
        return std::min(buffers_.width - 1, static_cast<int>(std::floor(to - 0.495f)));
    }

    static int16_t Short(float v) {
        return static_cast<int16_t>(std::clamp(v, -32767.0f, 32767.0f));
    }

    // Widens from..to by where the edge crosses the row.
    static void Cross(const Projected& p, const Projected& q, float y, float& from, float& to) {
        if ((p.y > y && q.y > y) || (p.y < y && q.y < y) || p.y == q.y) {
            return;
        }
        const float x = p.x + (q.x - p.x) * ((y - p.y) / (q.y - p.y));
        from = std::min(from, x);
        to = std::max(to, x);
    }

    Buffers& buffers_;
    uint16_t surface_;
};

}  // namespace

Camera Camera::Looking(float azimuth, float elevation) {
    const float a = Radians(azimuth);
    const float e = Radians(elevation);
    Camera camera;
    camera.toward = {std::sin(a) * std::cos(e), -std::cos(a) * std::cos(e), std::sin(e)};
    camera.right = {std::cos(a), std::sin(a), 0};
    camera.up = render::Cross(camera.toward, camera.right);
    return camera;
}

Vec3 Camera::View(Vec3 world) const {
    const Vec3 d = world - target;
    return {Dot(d, right), Dot(d, up), Dot(d, toward)};
}

Vec3 Camera::Screen(Vec3 view) const {
    const float w = 1 / (1 - view.z * nearness);
    return {centre.x + view.x * w * scale, centre.y - view.y * w * scale, view.z * w};
}

namespace {

// What the thread's last buffers leave behind: a hundred megabytes that would be asked for anew.
struct Used {
    std::vector<float> depth;
    std::vector<Sample> samples;
};
thread_local Used used;

}  // namespace

Buffers::Buffers(int w, int h)
    : width(w), height(h), depth(std::move(used.depth)), samples(std::move(used.samples)) {
    const size_t size = static_cast<size_t>(w) * static_cast<size_t>(h);
    depth.assign(size, Nothing);
    samples.assign(size, {});
}

Buffers::~Buffers() {
    if (depth.capacity() > used.depth.capacity()) {
        used.depth = std::move(depth);
        used.samples = std::move(samples);
    }
}

void Rasterise(const Mesh& mesh, const Placement& place, const Camera& camera, uint16_t surface,
               Buffers& buffers) {
    // World to camera, folded into the placement.
    const Placement toView = Placement{{camera.right.x, camera.up.x, camera.toward.x},
                                       {camera.right.y, camera.up.y, camera.toward.y},
                                       {camera.right.z, camera.up.z, camera.toward.z},
                                       camera.View({})} *
                             place;
    std::vector<Projected> points;
    points.reserve(mesh.vertices.size());
    for (const Vertex& vertex : mesh.vertices) {
        const Vec3 at = camera.Screen(toView.Point(vertex.at));
        const Vec3 n = toView.Direction(vertex.normal) * 32767.0f;
        points.push_back({at.x, at.y, at.z, n.x, n.y, n.z});
    }
    Filler filler(buffers, surface);
    for (const Mesh::Triangle& t : mesh.triangles) {
        filler.Fill(points[t[0]], points[t[1]], points[t[2]]);
    }
}

}  // namespace render
