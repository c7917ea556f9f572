#pragma once

#include "vec.h"

#include <cstddef>
#include <cstdint>

namespace render {

enum class Material : uint8_t {
    CastAluminium,
    Aluminium,  // machined
    Steel,
    Zinc,        // plated, bluish
    YellowZinc,  // chromated
    SpringSteel,
    CastIron,
    GreyPaint,
    BlackPaint,
    RedPaint,
    YellowPaint,
    BluePaint,
    Brass,
    Bronze,
    Copper,
    Rubber,
    BlackPlastic,
    GreyPlastic,
    WhitePlastic,
    RedPlastic,
    BluePlastic,
    YellowPlastic,
    Paper,
    Friction,
    Label,
    Ink,
    Bore,  // the inside of a threaded hole
};
inline constexpr size_t MaterialCount = static_cast<size_t>(Material::Bore) + 1;

// How a surface answers light. Colours are linear, 0 to 1.
struct Surface {
    Vec3 diffuse;
    Vec3 mirror;      // reflectance seen straight on
    float roughness;  // 0 polished to 1 matt
    float grain;      // depth of the bumps of a cast or crackle surface, as a tilt of the normal
    float grainSize;  // mm
};

const Surface& SurfaceOf(Material material);

}  // namespace render
