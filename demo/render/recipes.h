#pragma once

#include "assembly.h"
#include "shapes.h"

#include <span>

namespace render {

// How a component of one kind is made. Its axis is z, its lower end at z = 0 or its middle there;
// screws have their head above.
struct Recipe {
    ComponentKind kind;
    float share;  // usual diameter in a part whose body has the diameter 1
    // Diameter and height in mm: of the thread for a screw, the length for a lever; height 0 is the
    // one that suits the diameter.
    Element (*make)(float diameter, float height);
};

std::span<const Recipe> SealRecipes();
std::span<const Recipe> SpringRecipes();
std::span<const Recipe> MovingRecipes();
std::span<const Recipe> HousingRecipes();
std::span<const Recipe> FasteningRecipes();
std::span<const Recipe> EquipmentRecipes();
std::span<const Recipe> CompressorRecipes();

// The height asked for, or the one that suits.
inline float Or(float height, float otherwise) {
    return height > 0 ? height : otherwise;
}

inline Element Of(Mesh mesh, Material material, const Placement& at = {}) {
    Element element;
    element.Add(std::move(mesh), material, at);
    return element;
}

}  // namespace render
