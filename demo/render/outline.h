#pragma once

#include "vec.h"

#include <array>
#include <cstdint>
#include <vector>

namespace render {

// A corner of a profile or outline, in mm, with the radius that rounds it off (0: sharp).
struct Corner {
    float x = 0;
    float y = 0;
    float fillet = 0;
};

using Corners = std::vector<Corner>;

// A point of the rounded line with the unit normals (to the right of the way) of the stretches
// before and behind it; they are equal where the line is smooth.
struct LinePoint {
    Vec2 at;
    Vec2 before;
    Vec2 after;
    bool Sharp() const { return Dot(before, after) < 0.996f; }
};

using Line = std::vector<LinePoint>;

// Rounds the corners; a radius that does not fit is reduced until it does.
Line Rounded(const Corners& corners, bool closed);

// Outlines, counter-clockwise.
Corners Rectangle(float width, float depth, float fillet = 0);
Corners Circle(float radius);
Corners RegularPolygon(int sides, float acrossFlats, float fillet = 0);
// Two circles, about the origin and about (length, 0), with their common tangents: a lever.
Corners Link(float length, float radius0, float radius1);
// A disc with `eyes` rounded ears on a circle of radius `reach`.
Corners EaredDisc(float radius, int eyes, float reach, float eyeRadius, float turn = 0);

Corners Moved(Corners corners, float x, float y);

// Indices into outline followed by the holes one after the other. The outline is counter-clockwise,
// the holes are clockwise.
std::vector<std::array<uint32_t, 3>> Triangulated(const std::vector<Vec2>& outline,
                                                  const std::vector<std::vector<Vec2>>& holes);

}  // namespace render
