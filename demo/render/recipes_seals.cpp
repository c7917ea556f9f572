#include "recipes.h"

#include <algorithm>

namespace render {
namespace {

using enum ComponentKind;
using enum Material;

// A ring of rectangular section.
Element FlatRing(float d, float bore, float h, Material material, float edge = 0.3f) {
    return Of(Tube(d / 2, bore / 2, h, edge), material);
}

// Folds between a narrow and a wide end, hollow.
Mesh Bellows(float low, float high, float height, int folds, float depth) {
    const float wall = std::max(1.0f, low * 0.05f);
    Corners outside{{low * 1.04f, 0, 0.5f}, {low * 1.04f, height * 0.10f, 0.5f}};
    for (int i = 0; i < folds; ++i) {
        const float share = (static_cast<float>(i) + 0.5f) / static_cast<float>(folds);
        const float z = height * (0.12f + 0.76f * share);
        const float r = low + (high - low) * share;
        const float half = height * 0.38f / static_cast<float>(folds);
        outside.push_back({r - depth, z - half * 0.9f, half * 0.45f});
        outside.push_back({r, z, half * 0.5f});
    }
    outside.push_back({high - depth, height * 0.89f, 1});
    outside.push_back({high * 1.02f, height * 0.9f, 0.5f});
    outside.push_back({high * 1.02f, height, 0.5f});
    outside.push_back({high * 0.8f, height, 0.5f});
    outside.push_back({std::min(high, low) * 0.6f, height * 0.5f, wall});
    outside.push_back({low * 0.8f, 0, 0.5f});
    return Revolved(outside);
}

// A membrane: flat rim, a rolled fold, a thicker middle.
Element Membrane(float d, float h) {
    const float r = d / 2;
    const float t = std::max(1.2f, d * 0.02f);
    const float fold = Or(h, d * 0.09f);
    Element element = Of(Revolved({{0, 0},
                                   {r * 0.55f, 0, t},
                                   {r * 0.66f, fold - t, t * 2},
                                   {r * 0.76f, 0, t * 2},
                                   {r, 0, t * 0.4f},
                                   {r, t * 1.4f, t * 0.4f},
                                   {r * 0.80f, t * 1.4f, t},
                                   {r * 0.66f, fold + t, t * 3},
                                   {r * 0.52f, t * 1.8f, t * 2},
                                   {0, t * 1.8f}}),
                         Rubber);
    return element;
}

// The cup of a brake chamber.
Element Cup(float d, float h) {
    const float r = d / 2;
    const float depth = Or(h, d * 0.36f);
    const float t = std::max(2.0f, d * 0.025f);
    const float floor = r * 0.58f;
    const float wall = r * 0.84f;
    return Of(Revolved({{0, 0},
                        {floor, 0, t * 2.5f},
                        {wall, depth - t, t},
                        {r, depth - t, t},
                        {r, depth + t, t},
                        {wall - t * 0.6f, depth + t * 0.6f, t * 1.5f},
                        {floor - t, t, t * 2},
                        {0, t}}),
              Rubber);
}

constexpr Recipe recipes[] = {
    {AnelVedacao, 0.42f,
     [](float d, float h) {
         const float wire = Or(h, std::clamp(1.8f, d * 0.085f, d * 0.25f));
         return Of(Torus((d - wire) / 2, wire), Rubber, Move(0, 0, wire / 2));
     }},
    {AnelORing, 0.60f,
     [](float d, float h) {
         const float wire = Or(h, std::clamp(1.6f, d * 0.06f, d * 0.25f));
         return Of(Torus((d - wire) / 2, wire), Rubber, Move(0, 0, wire / 2));
     }},
    {AnelRaspador, 0.32f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 0.2f);
         return Of(Revolved({{r * 0.78f, 0},
                             {r, 0, 0.3f},
                             {r, z * 0.6f, 0.3f},
                             {r * 0.9f, z * 0.6f},
                             {r * 0.72f, z, 0.3f},
                             {r * 0.66f, z * 0.94f}}),
                   BlackPlastic);
     }},
    {Guarnicao, 0.56f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, std::max(3.0f, d * 0.14f));
         return Of(Revolved({{r * 0.76f, 0, 0.5f},
                             {r * 0.94f, 0, 0.5f},
                             {r, z, 0.4f},
                             {r * 0.95f, z, 0.3f},
                             {r * 0.88f, z * 0.42f, 0.8f},
                             {r * 0.84f, z * 0.42f, 0.8f},
                             {r * 0.80f, z, 0.3f},
                             {r * 0.75f, z, 0.3f}}),
                   Rubber);
     }},
    {Gaxeta, 0.55f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 0.34f);
         return Of(Revolved({{r * 0.30f, 0, 0.3f},
                             {r * 0.86f, 0, r * 0.1f},
                             {r, z, 0.4f},
                             {r * 0.86f, z, 0.3f},
                             {r * 0.70f, z * 0.35f, r * 0.12f},
                             {r * 0.30f, z * 0.35f, 0.3f}}),
                   Rubber);
     }},
    {Retentor, 0.48f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 0.17f);
         Element element = Of(Revolved({{r * 0.70f, 0, 0.5f},
                                        {r, 0, 0.8f},
                                        {r, z, 0.8f},
                                        {r * 0.90f, z, 0.5f},
                                        {r * 0.84f, z * 0.5f, 1},
                                        {r * 0.68f, z * 0.9f, 0.5f},
                                        {r * 0.62f, z * 0.6f, 0.3f}}),
                              Rubber);
         return element.Add(Torus(r * 0.70f, r * 0.05f), SpringSteel, Move(0, 0, z * 0.88f));
     }},
    {Junta, 0.86f,
     [](float d, float h) {
         const float r = d / 2;
         std::vector<Corners> holes{Circle(r * 0.62f)};
         for (int i = 0; i < 4; ++i) {
             const float a = Radians(45 + 90 * static_cast<float>(i));
             holes.push_back(
                 Moved(Circle(r * 0.085f), r * 0.88f * std::cos(a), r * 0.88f * std::sin(a)));
         }
         return Of(Extruded(EaredDisc(r * 0.82f, 4, r * 0.86f, r * 0.18f, 45), 0,
                            Or(h, std::max(1.0f, d * 0.012f)), 0, holes),
                   Paper);
     }},
    {ArruelaVedacao, 0.28f,
     [](float d, float h) {
         return FlatRing(d, d * 0.74f, Or(h, std::max(1.2f, d * 0.08f)), Copper);
     }},
    {Vedador, 0.30f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 0.36f);
         return Of(Revolved({{r * 0.5f, 0, 0.3f},
                             {r, 0, 0.4f},
                             {r, z * 0.5f, 0.4f},
                             {r * 0.86f, z * 0.5f},
                             {r * 0.80f, z, 0.3f},
                             {r * 0.5f, z, 0.3f}}),
                   Rubber);
     }},
    {Assento, 0.36f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 0.30f);
         return Of(Revolved({{r * 0.55f, 0, 0.3f},
                             {r, 0, 0.5f},
                             {r, z * 0.55f, 0.5f},
                             {r * 0.74f, z * 0.55f, 0.4f},
                             {r * 0.66f, z, 0.3f},
                             {r * 0.55f, z, 0.3f}}),
                   Aluminium);
     }},
    {Coifa, 0.44f,
     [](float d, float h) {
         return Of(Bellows(d * 0.5f, d * 0.30f, Or(h, d * 0.8f), 4, d * 0.085f), Rubber);
     }},
    {Membrana, 0.78f, Membrane},
    {Diafragma, 0.92f, Cup},
    {DiscoValvula, 0.52f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 0.12f);
         return Of(Revolved({{0, 0},
                             {r * 0.86f, 0, 0.5f},
                             {r, z * 0.3f, 0.5f},
                             {r, z * 0.7f, 0.5f},
                             {r * 0.4f, z, 1},
                             {r * 0.34f, z * 1.8f, 1},
                             {0, z * 1.8f}}),
                   Rubber);
     }},
};

}  // namespace

std::span<const Recipe> SealRecipes() {
    return recipes;
}

}  // namespace render
