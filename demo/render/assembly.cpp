#include "assembly.h"

#include <QHashFunctions>

namespace render {

Element& Element::Add(const Element& other, const Placement& at) {
    for (const Piece& piece : other.pieces) {
        pieces.push_back({piece.mesh, piece.material, at * piece.place});
    }
    return *this;
}

Box Element::Bounds(const Placement& outer) const {
    Box box;
    for (const Piece& piece : pieces) {
        box.Take(piece.mesh, outer * place * piece.place);
    }
    return box;
}

Element& Assembly::Add(ComponentKind kind, const Placement& place) {
    elements.push_back({kind, {}, {}, place});
    return elements.back();
}

Element& Assembly::Add(Element element, const Placement& place) {
    element.place = place;
    elements.push_back(std::move(element));
    return elements.back();
}

Box Assembly::Bounds() const {
    Box box;
    for (const Element& element : elements) {
        const Box part = element.Bounds(pose);
        if (!part.Empty()) {
            box.Take(part.least);
            box.Take(part.most);
        }
    }
    return box;
}

size_t LookOf(const Assembly& assembly) {
    size_t look = 0;
    const auto take = [&look](const void* values, size_t bytes) {
        look = qHashBits(values, bytes, look);
    };
    take(&assembly.pose, sizeof assembly.pose);
    for (const Element& element : assembly.elements) {
        take(&element.place, sizeof element.place);
        for (const Piece& piece : element.pieces) {
            const std::vector<Vertex>& vertices = piece.mesh.vertices;
            const std::vector<Mesh::Triangle>& triangles = piece.mesh.triangles;
            take(&piece.material, sizeof piece.material);
            take(&piece.place, sizeof piece.place);
            take(vertices.data(), vertices.size() * sizeof vertices[0]);
            take(triangles.data(), triangles.size() * sizeof triangles[0]);
        }
    }
    return look;
}

}  // namespace render
