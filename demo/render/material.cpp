#include "material.h"

#include <array>

namespace render {
namespace {

constexpr std::array<Surface, MaterialCount> surfaces{{
    {{0.20f, 0.204f, 0.21f}, {0.22f, 0.224f, 0.23f}, 0.50f, 0.07f, 0.8f},     // CastAluminium
    {{0.10f, 0.102f, 0.105f}, {0.50f, 0.505f, 0.52f}, 0.26f, 0, 1},           // Aluminium
    {{0.04f, 0.04f, 0.042f}, {0.42f, 0.42f, 0.425f}, 0.20f, 0, 1},            // Steel
    {{0.09f, 0.095f, 0.105f}, {0.42f, 0.435f, 0.47f}, 0.27f, 0.02f, 2},       // Zinc
    {{0.28f, 0.22f, 0.10f}, {0.55f, 0.46f, 0.26f}, 0.28f, 0.03f, 2},          // YellowZinc
    {{0.05f, 0.052f, 0.06f}, {0.24f, 0.245f, 0.26f}, 0.24f, 0, 1},            // SpringSteel
    {{0.11f, 0.11f, 0.112f}, {0.07f, 0.07f, 0.07f}, 0.50f, 0.10f, 0.9f},      // CastIron
    {{0.26f, 0.27f, 0.28f}, {0.04f, 0.04f, 0.04f}, 0.36f, 0.05f, 2.5f},       // GreyPaint
    {{0.008f, 0.008f, 0.009f}, {0.04f, 0.04f, 0.04f}, 0.24f, 0.02f, 3},       // BlackPaint
    {{0.50f, 0.020f, 0.018f}, {0.04f, 0.04f, 0.04f}, 0.28f, 0.04f, 2},        // RedPaint
    {{0.78f, 0.47f, 0.015f}, {0.04f, 0.04f, 0.04f}, 0.28f, 0.04f, 2},         // YellowPaint
    {{0.02f, 0.08f, 0.32f}, {0.04f, 0.04f, 0.04f}, 0.28f, 0.02f, 2},          // BluePaint
    {{0.13f, 0.08f, 0.02f}, {0.56f, 0.40f, 0.14f}, 0.24f, 0, 1},              // Brass
    {{0.22f, 0.11f, 0.04f}, {0.50f, 0.32f, 0.16f}, 0.36f, 0.03f, 1},          // Bronze
    {{0.24f, 0.085f, 0.04f}, {0.72f, 0.38f, 0.24f}, 0.26f, 0, 1},             // Copper
    {{0.011f, 0.011f, 0.012f}, {0.022f, 0.022f, 0.022f}, 0.6f, 0.04f, 1.5f},  // Rubber
    {{0.013f, 0.013f, 0.014f}, {0.03f, 0.03f, 0.03f}, 0.4f, 0.03f, 0.8f},     // BlackPlastic
    {{0.16f, 0.165f, 0.17f}, {0.035f, 0.035f, 0.035f}, 0.42f, 0.02f, 0.8f},   // GreyPlastic
    {{0.76f, 0.76f, 0.72f}, {0.04f, 0.04f, 0.04f}, 0.30f, 0, 1},              // WhitePlastic
    {{0.52f, 0.022f, 0.02f}, {0.04f, 0.04f, 0.04f}, 0.30f, 0, 1},             // RedPlastic
    {{0.02f, 0.11f, 0.46f}, {0.04f, 0.04f, 0.04f}, 0.30f, 0, 1},              // BluePlastic
    {{0.80f, 0.50f, 0.02f}, {0.04f, 0.04f, 0.04f}, 0.30f, 0, 1},              // YellowPlastic
    {{0.62f, 0.53f, 0.36f}, {0.02f, 0.02f, 0.02f}, 0.9f, 0.05f, 1},           // Paper
    {{0.065f, 0.058f, 0.052f}, {0.03f, 0.03f, 0.03f}, 0.8f, 0.30f, 1.2f},     // Friction
    {{0.80f, 0.80f, 0.79f}, {0.04f, 0.04f, 0.04f}, 0.4f, 0, 1},               // Label
    {{0.01f, 0.01f, 0.012f}, {0.03f, 0.03f, 0.03f}, 0.5f, 0, 1},              // Ink
    {{0.035f, 0.035f, 0.036f}, {0.03f, 0.03f, 0.03f}, 0.5f, 0, 1},            // Bore
}};

}  // namespace

const Surface& SurfaceOf(Material material) {
    return surfaces[static_cast<size_t>(material)];
}

}  // namespace render
