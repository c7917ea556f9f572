#pragma once

#include "componentkind.h"
#include "material.h"
#include "mesh.h"

#include <QString>

#include <deque>
#include <vector>

namespace render {

struct Piece {
    Mesh mesh;
    Material material = Material::Steel;
    Placement place;  // in its element
};

// One component: what gets an item number in the figure.
struct Element {
    ComponentKind kind = ComponentKind::Corpo;
    QString item;
    std::vector<Piece> pieces;
    Placement place;  // in the assembly, whose axis is z, upwards

    Element& Add(Mesh mesh, Material material, const Placement& at = {}) {
        pieces.push_back({std::move(mesh), material, at});
        return *this;
    }
    // Each piece of `other` as a piece of this element.
    Element& Add(const Element& other, const Placement& at = {});

    Box Bounds(const Placement& outer = {}) const;
};

struct Assembly {
    // From the top of the axis to its bottom. A deque, so that what Add() gives stays valid.
    std::deque<Element> elements;
    Placement pose;  // how it lies in front of the camera; z is up

    Element& Add(ComponentKind kind, const Placement& place = {});
    Element& Add(Element element, const Placement& place = {});
    Box Bounds() const;  // mm, posed
};

// The same number for assemblies that look the same to the last point; another one, as good as
// always, for others.
size_t LookOf(const Assembly& assembly);

}  // namespace render
