#include "components.h"
#include "recipes.h"

#include <algorithm>

namespace render {
namespace {

using enum ComponentKind;
using enum Material;

// A cover with `eyes` screw eyes and a dome.
Element Cover(float d, float h, int eyes) {
    const float r = d / 2;
    const float z = Or(h, d * 0.30f);
    const float rim = z * 0.30f;
    std::vector<Corners> holes;
    for (int i = 0; i < eyes; ++i) {
        const float a = 2 * Pi * static_cast<float>(i) / static_cast<float>(eyes);
        holes.push_back(Moved(Circle(r * 0.07f), r * 0.90f * std::cos(a), r * 0.90f * std::sin(a)));
    }
    Element element = Of(Extruded(EaredDisc(r * 0.84f, eyes, r * 0.88f, r * 0.17f), 0, rim,
                                  std::min(1.0f, rim * 0.2f), holes),
                         CastAluminium);
    return element.Add(Revolved({{0, rim * 0.5f},
                                 {r * 0.72f, rim * 0.5f},
                                 {r * 0.68f, rim, r * 0.04f},
                                 {r * 0.60f, z * 0.86f, r * 0.10f},
                                 {r * 0.24f, z * 0.94f, r * 0.08f},
                                 {r * 0.22f, z * 1.1f, r * 0.03f},
                                 {0, z * 1.1f}}),
                       CastAluminium);
}

Element Housing(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 0.9f);
    Element element = Of(Revolved({{r * 0.30f, z * 0.3f},
                                   {r * 0.30f, 0, 0.5f},
                                   {r * 0.52f, 0, 1.5f},
                                   {r * 0.55f, z * 0.22f, r * 0.08f},
                                   {r * 0.78f, z * 0.30f, r * 0.10f},
                                   {r * 0.78f, z * 0.80f, r * 0.05f},
                                   {r * 0.96f, z * 0.86f, r * 0.03f},
                                   {r * 0.96f, z, r * 0.03f},
                                   {r * 0.66f, z, 0.4f},
                                   {r * 0.64f, z * 0.6f, 1},
                                   {r * 0.30f, z * 0.55f, 1}}),
                         CastAluminium);
    const float thread = std::clamp(d * 0.2f, 6.0f, 22.0f);
    for (const float turn : {200.0f, 270.0f, 340.0f, 90.0f}) {
        AddPort(element, Around(turn, r * 0.76f, z * 0.55f), thread, CastAluminium);
    }
    return element;
}

Element Barrel(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 1.5f);
    Element element = Of(Revolved({{r * 0.78f, 0, 0.6f},
                                   {r, 0, r * 0.05f},
                                   {r, z * 0.1f, r * 0.04f},
                                   {r * 0.9f, z * 0.13f, r * 0.06f},
                                   {r * 0.9f, z * 0.87f, r * 0.06f},
                                   {r, z * 0.9f, r * 0.04f},
                                   {r, z, r * 0.05f},
                                   {r * 0.78f, z, 0.6f}}),
                         CastAluminium);
    AddPort(element, Around(250, r * 0.88f, z * 0.75f), std::clamp(d * 0.2f, 6.0f, 18.0f),
            CastAluminium);
    return element;
}

// A pressed steel bowl, opening upwards.
Element Bowl(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 0.42f);
    const float t = std::max(1.5f, d * 0.02f);
    return Of(Revolved({{0, 0},
                        {r * 0.66f, 0, r * 0.16f},
                        {r * 0.86f, z - t * 1.2f, r * 0.05f},
                        {r, z - t, t * 0.4f},
                        {r, z, t * 0.4f},
                        {r * 0.84f, z, t},
                        {r * 0.64f, t, r * 0.14f},
                        {0, t}}),
              BlackPaint);
}

Element FlangePlate(float d, float h) {
    const float r = d / 2;
    const float t = Or(h, std::max(5.0f, d * 0.10f));
    std::vector<Corners> holes{Circle(r * 0.42f)};
    for (int i = 0; i < 4; ++i) {
        const float a = Radians(45 + 90 * static_cast<float>(i));
        holes.push_back(Moved(Circle(r * 0.08f), r * 0.84f * std::cos(a), r * 0.84f * std::sin(a)));
    }
    Element element =
        Of(Extruded(EaredDisc(r * 0.80f, 4, r * 0.84f, r * 0.17f, 45), 0, t, 0.8f, holes),
           CastAluminium);
    return element.Add(Tube(r * 0.58f, r * 0.42f, t * 1.9f, 0.8f), CastAluminium);
}

Element BasePlate(float d, float h) {
    const float t = Or(h, std::max(5.0f, d * 0.09f));
    const float w = d * 0.92f;
    std::vector<Corners> holes{Circle(d * 0.22f)};
    for (const float x : {-1.0f, 1.0f}) {
        for (const float y : {-1.0f, 1.0f}) {
            holes.push_back(Moved(Circle(d * 0.05f), x * w * 0.40f, y * w * 0.32f));
        }
    }
    Element element =
        Of(Extruded(Rectangle(w, w * 0.82f, w * 0.12f), 0, t, 0.8f, holes), CastAluminium);
    return element.Add(Tube(d * 0.30f, d * 0.22f, t * 2, 1), CastAluminium);
}

constexpr Recipe recipes[] = {
    {Corpo, 1.0f, Housing},
    {CorpoCilindro, 0.84f, Barrel},
    {Carcaca, 1.0f, Bowl},
    {Tampa, 0.84f, [](float d, float h) { return Cover(d, h, 4); }},
    {TampaSuperior, 0.96f, [](float d, float h) { return Cover(d, h, 6); }},
    {TampaInferior, 0.74f,
     [](float d, float h) {
         Element cover = Cover(d, h, 3);
         Element below;
         return below.Add(cover, Flip());
     }},
    {Flange, 0.98f, FlangePlate},
    {Base, 1.05f, BasePlate},
    {Placa, 0.58f,
     [](float d, float h) {
         const float r = d / 2;
         const float t = Or(h, std::max(2.0f, d * 0.05f));
         return Of(Revolved({{r * 0.24f, 0, 0.3f},
                             {r, 0, 0.5f},
                             {r, t * 1.8f, 0.4f},
                             {r * 0.94f, t * 1.8f, 0.4f},
                             {r * 0.9f, t, 0.8f},
                             {r * 0.24f, t, 0.3f}}),
                   Zinc);
     }},
};

}  // namespace

std::span<const Recipe> HousingRecipes() {
    return recipes;
}

}  // namespace render
