#pragma once

#include "assembly.h"

namespace render {

// A component by itself; diameter and height in mm (see Recipe).
Element Component(ComponentKind kind, float diameter, float height = 0);

// Diameter of such a component in a part whose body has the diameter 1.
float UsualShare(ComponentKind kind);

// A boss with a threaded bore, standing on a surface at `at` and pointing along its z axis; thread
// and reach (0: what suits the thread) in mm. The bore is a piece of Material::Bore.
void AddPort(Element& element, const Placement& at, float thread, Material boss, float reach = 0);
float BossRadius(float thread);

// Equal components on a circle about the axis, from `turn` degrees.
void AddCircle(Element& element, const Element& one, int count, float radius, float height,
               float turn = 0);

// Ribs that run up a turned body, between two radii.
void AddRibs(Element& element, int count, float inner, float outer, float low, float high,
             float width, Material material, float turn = 0);

// A part whose axis lies, its top to the right and turned towards the viewer by -`turn` degrees.
inline Placement Lying(float turn) {
    return TurnZ(turn) * TurnY(90);
}

// A name plate, its face along z.
void AddPlate(Element& element, const Placement& at, float width, float height);

}  // namespace render
