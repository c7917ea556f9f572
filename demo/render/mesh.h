#pragma once

#include "vec.h"

#include <array>
#include <cstdint>
#include <vector>

namespace render {

struct Vertex {
    Vec3 at;      // mm
    Vec3 normal;  // unit, outwards
};

// Triangles wound counter-clockwise as seen from outside. Every mesh is closed: the rasteriser
// draws front faces only.
struct Mesh {
    using Triangle = std::array<uint32_t, 3>;
    std::vector<Vertex> vertices;
    std::vector<Triangle> triangles;

    void Append(const Mesh& other, const Placement& place = {});
};

struct Box {
    Vec3 least{1e9f, 1e9f, 1e9f};
    Vec3 most{-1e9f, -1e9f, -1e9f};

    bool Empty() const { return least.x > most.x; }
    Vec3 Size() const { return Empty() ? Vec3{} : most - least; }
    Vec3 Centre() const { return Empty() ? Vec3{} : (least + most) * 0.5f; }
    void Take(Vec3 p);
    void Take(const Mesh& mesh, const Placement& place);
};

}  // namespace render
