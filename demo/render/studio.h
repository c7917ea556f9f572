#pragma once

#include "material.h"
#include "vec.h"

#include <vector>

namespace render {

// The lights of the photographs: a large softbox up at the left, a strip at the right, a bright
// tent with dark gaps that give metal its contrast, a white floor. Directions are in the world: z
// is up, the camera looks along +y from an elevation of CameraElevation degrees.
inline constexpr float CameraElevation = 24;

Vec3 KeyDirection();

// What one direction of the surface receives, split by where it comes from, because the softbox,
// the tent and the floor are hidden by different things.
struct Light {
    float diffuseKey = 0;
    float diffuseTent = 0;
    float diffuseFloor = 0;
    float mirrorKey = 0;
    float mirrorTent = 0;
    float mirrorFloor = 0;
};

// The light as a function of the normal in the camera's frame, for one roughness. With a distant
// camera nothing else matters, so all integrals are done once.
class LightTable {
public:
    explicit LightTable(float roughness);
    Light At(float nx, float ny) const;

    // Any thread may ask; the table stays.
    static const LightTable& For(float roughness);

private:
    static constexpr int Side = 96;
    std::vector<Light> table_;
};

// Linear to 8-bit sRGB, with a soft shoulder above white.
int Developed(float linear);

}  // namespace render
