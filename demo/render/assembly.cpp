#include "assembly.h"

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

}  // namespace render
