#include "mesh.h"

#include <algorithm>

namespace render {

void Mesh::Append(const Mesh& other, const Placement& place) {
    const auto first = static_cast<uint32_t>(vertices.size());
    vertices.reserve(vertices.size() + other.vertices.size());
    for (const Vertex& vertex : other.vertices) {
        vertices.push_back({place.Point(vertex.at), place.Direction(vertex.normal)});
    }
    triangles.reserve(triangles.size() + other.triangles.size());
    for (const Triangle& t : other.triangles) {
        triangles.push_back({t[0] + first, t[1] + first, t[2] + first});
    }
}

void Box::Take(Vec3 p) {
    least = {std::min(least.x, p.x), std::min(least.y, p.y), std::min(least.z, p.z)};
    most = {std::max(most.x, p.x), std::max(most.y, p.y), std::max(most.z, p.z)};
}

void Box::Take(const Mesh& mesh, const Placement& place) {
    for (const Vertex& vertex : mesh.vertices) {
        Take(place.Point(vertex.at));
    }
}

}  // namespace render
