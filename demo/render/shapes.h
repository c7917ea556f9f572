#pragma once

#include "mesh.h"
#include "outline.h"

#include <vector>

// The solids that parts are made of, in mm. The z axis is the axis of turned things and the
// direction in which outlines are extruded.
namespace render {

// A profile of (radius, z), turned about the z axis. It runs with the solid on its left: from the
// bottom outwards and up. When it neither begins nor ends on the axis, it is closed to a ring.
Mesh Revolved(const Corners& profile);

// From z0 to z1; the rims of the outside are rounded off by `edge`, holes stay sharp.
Mesh Extruded(const Corners& outline, float z0, float z1, float edge = 0,
              const std::vector<Corners>& holes = {});

// Standing on z = 0.
Mesh Cylinder(float radius, float height, float edge = 0);
Mesh Tube(float radius, float bore, float height, float edge = 0);
Mesh Block(float width, float depth, float height, float fillet, float edge);
Mesh Ball(float radius);
Mesh Torus(float radius, float wire);

// A hexagon with the chamfer of a turned nut on one or both ends.
Mesh Hexagon(float acrossFlats, float height, bool chamferBelow, bool chamferAbove, float bore = 0);
// Thread ridges of a screw; the pitch is what is drawn, not what is cut.
Mesh ThreadedRod(float diameter, float length, float pitch, float tip);

// A round bar along a smooth curve through the points.
Mesh Bar(const std::vector<Vec3>& way, float radius, int sides = 20);
// The curve through the points, `steps` points for each stretch.
std::vector<Vec3> Smooth(const std::vector<Vec3>& points, int steps = 10);

struct Coil {
    float radius = 10;    // to the middle of the wire, below
    float topRadius = 0;  // 0: as below
    float wire = 2;       // diameter
    float height = 40;    // over all
    float turns = 6;      // working turns; one flat turn more at each end
    bool flatEnds = true;
};
Mesh Spring(const Coil& coil);
std::vector<Vec3> Helix(const Coil& coil, int stepsOfTurn);

}  // namespace render
