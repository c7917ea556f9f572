#include "recipes.h"

#include <algorithm>

namespace render {
namespace {

using enum ComponentKind;
using enum Material;

Element Coiled(float d, float top, float h, float wireShare, float turns) {
    const float wire = std::max(0.8f, d * wireShare);
    return Of(Spring({.radius = (d - wire) / 2,
                      .topRadius = (top - wire) / 2,
                      .wire = wire,
                      .height = h,
                      .turns = turns}),
              SpringSteel);
}

// Hooked legs lead away from a close coil.
Element Torsion(float d, float h) {
    const float wire = std::max(1.0f, d * 0.11f);
    const float height = Or(h, d * 0.9f);
    std::vector<Vec3> way = Helix({.radius = (d - wire) / 2,
                                   .wire = wire,
                                   .height = height,
                                   .turns = 5.5f,
                                   .flatEnds = false},
                                  28);
    const Vec3 first = way.front();
    const Vec3 last = way.back();
    way.insert(way.begin(), {first + Vec3{0, -d * 0.9f, 0}, first + Vec3{0, -d * 0.3f, 0}});
    way.push_back(last + Vec3{0, -d * 0.3f, 0});
    way.push_back(last + Vec3{0, -d * 0.9f, 0});
    return Of(Bar(way, wire / 2, 14), SpringSteel);
}

constexpr Recipe recipes[] = {
    {MolaCompressao, 0.34f,
     [](float d, float h) { return Coiled(d, d, Or(h, d * 1.35f), 0.10f, 5.5f); }},
    {MolaConica, 0.34f,
     [](float d, float h) { return Coiled(d, d * 0.55f, Or(h, d * 1.0f), 0.085f, 4.5f); }},
    {MolaRetorno, 0.42f,
     [](float d, float h) { return Coiled(d, d, Or(h, d * 1.5f), 0.085f, 6.5f); }},
    {MolaTorcao, 0.30f, Torsion},
    {MolaPrato, 0.30f,
     [](float d, float h) {
         const float r = d / 2;
         const float t = std::max(0.9f, d * 0.05f);
         const float z = Or(h, d * 0.13f);
         return Of(
             Revolved({{r, 0, 0.2f}, {r, t, 0.2f}, {r * 0.5f, z, 0.2f}, {r * 0.5f, z - t, 0.2f}}),
             SpringSteel);
     }},
    {MolaFreio, 0.72f,
     [](float d, float h) { return Coiled(d, d * 0.82f, Or(h, d * 0.85f), 0.105f, 3.5f); }},
};

}  // namespace

std::span<const Recipe> SpringRecipes() {
    return recipes;
}

}  // namespace render
