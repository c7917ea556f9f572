#include "components.h"
#include "recipes.h"

#include <algorithm>

namespace render {
namespace {

using enum ComponentKind;
using enum Material;

// Plastic muffler with slots around, its mouth below.
Element Muffler(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 0.62f);
    Element element = Of(Revolved({{0, 0},
                                   {r * 0.88f, 0, r * 0.16f},
                                   {r, z * 0.12f, r * 0.08f},
                                   {r, z * 0.30f, r * 0.05f},
                                   {r * 0.86f, z * 0.34f, r * 0.03f},
                                   {r * 0.86f, z * 0.66f, r * 0.03f},
                                   {r, z * 0.70f, r * 0.05f},
                                   {r, z * 0.84f, r * 0.08f},
                                   {r * 0.5f, z * 0.92f, r * 0.06f},
                                   {r * 0.46f, z, 0.5f},
                                   {0, z}}),
                         BlackPlastic);
    const int ribs = 20;
    for (int i = 0; i < ribs; ++i) {
        element.Add(Block(r * 0.16f, r * 0.09f, z * 0.40f, 0.2f, 0), BlackPlastic,
                    Ring(360.0f * static_cast<float>(i) / ribs, r * 0.90f, z * 0.31f));
    }
    return element;
}

Element Nipple(float d, float h) {
    const float z = Or(h, d * 2.0f);
    const float pitch = std::max(1.2f, d * 0.1f);
    Element element = Of(Hexagon(d * 1.35f, z * 0.26f, true, true), Brass, Move(0, 0, z * 0.37f));
    element.Add(ThreadedRod(d, z * 0.38f, pitch, d * 0.06f), Brass, Move(0, 0, z * 0.62f));
    element.Add(ThreadedRod(d, z * 0.38f, pitch, d * 0.06f), Brass, Move(0, 0, z * 0.38f) * Flip());
    for (const bool up : {true, false}) {
        element.Add(Cylinder(d * 0.3f, 0.2f), Bore, Move(0, 0, up ? z - 0.05f : -0.15f));
    }
    return element;
}

Element DustCap(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 0.7f);
    return Of(Revolved({{0, 0},
                        {r * 0.82f, 0, 0.6f},
                        {r * 0.9f, z * 0.6f, 0.3f},
                        {r * 1.35f, z * 0.6f, 0.5f},
                        {r * 1.35f, z * 0.82f, 0.8f},
                        {r * 0.6f, z * 0.86f, 0.5f},
                        {r * 0.55f, z * 0.66f, 0.5f},
                        {0, z * 0.66f}}),
              YellowPlastic);
}

// A can of folded paper between two end plates.
Element FilterElement(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 1.1f);
    const float plate = z * 0.07f;
    Corners star;
    const int folds = 36;
    for (int i = 0; i < folds * 2; ++i) {
        const float a = Pi * static_cast<float>(i) / folds;
        const float reach = i % 2 == 0 ? r * 0.93f : r * 0.82f;
        star.push_back({reach * std::cos(a), reach * std::sin(a), 0});
    }
    Element element = Of(Extruded(star, plate * 0.5f, z - plate * 0.5f), Paper);
    element.Add(Tube(r, r * 0.45f, plate, plate * 0.2f), Zinc);
    element.Add(Tube(r, r * 0.45f, plate, plate * 0.2f), Zinc, Move(0, 0, z - plate));
    return element.Add(Cylinder(r * 0.46f, plate * 0.5f), Bore, Move(0, 0, z - plate * 0.9f));
}

Element Strainer(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 0.5f);
    Element element = Of(Tube(r, r * 0.84f, z * 0.14f, 0.3f), Brass, Move(0, 0, z * 0.86f));
    for (int i = 0; i < 7; ++i) {
        const float height = z * 0.86f * static_cast<float>(i) / 7;
        element.Add(Torus(r * 0.84f, z * 0.05f), Brass, Move(0, 0, height + z * 0.03f));
    }
    for (int i = 0; i < 16; ++i) {
        element.Add(Block(r * 0.06f, r * 0.06f, z * 0.88f, 0.1f, 0), Brass,
                    Ring(22.5f * static_cast<float>(i), r * 0.84f, 0));
    }
    return element.Add(Cylinder(r * 0.82f, z * 0.05f), Brass);
}

Element CoilBody(float d, float h) {
    const float z = Or(h, d * 1.05f);
    Element element = Of(Block(d * 0.92f, d, z, d * 0.14f, d * 0.04f), BlackPlastic);
    element.Add(Block(d * 0.98f, d * 0.66f, z * 0.16f, d * 0.05f, d * 0.02f), BlackPlastic,
                Move(0, 0, z * 0.84f));
    element.Add(Tube(d * 0.26f, d * 0.18f, z * 0.06f, 0.4f), Zinc, Move(0, 0, z * 0.98f));
    element.Add(Cylinder(d * 0.18f, z * 0.02f), Bore, Move(0, 0, z * 0.99f));
    // The socket of its plug.
    element.Add(Block(d * 0.40f, d * 0.34f, z * 0.5f, d * 0.06f, d * 0.03f), BlackPlastic,
                Move(0, -d * 0.64f, z * 0.3f));
    return element;
}

Element Plug(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 1.2f);
    Element element = Of(Revolved({{0, 0},
                                   {r * 0.62f, 0, r * 0.1f},
                                   {r * 0.62f, z * 0.3f, r * 0.1f},
                                   {r, z * 0.34f, r * 0.08f},
                                   {r, z * 0.76f, r * 0.06f},
                                   {r * 0.84f, z * 0.78f},
                                   {r * 0.84f, z, r * 0.06f},
                                   {r * 0.68f, z, r * 0.04f},
                                   {r * 0.66f, z * 0.8f},
                                   {0, z * 0.8f}}),
                         BlackPlastic);
    for (int i = 0; i < 18; ++i) {
        element.Add(Block(r * 0.12f, r * 0.1f, z * 0.36f, 0.3f, 0.2f), BlackPlastic,
                    Ring(20.0f * static_cast<float>(i), r, z * 0.37f));
    }
    for (int i = 0; i < 4; ++i) {
        element.Add(Cylinder(r * 0.08f, z * 0.14f, 0.2f), Brass,
                    Ring(45 + 90.0f * static_cast<float>(i), r * 0.34f, z * 0.79f));
    }
    return element;
}

Element Harness(float d, float h) {
    const float length = Or(h, d * 1.4f);
    Element element;
    const std::vector<Vec3> way = Smooth({{0, 0, 0},
                                          {0, 0, length * 0.2f},
                                          {d * 0.35f, 0, length * 0.38f},
                                          {-d * 0.3f, 0, length * 0.56f},
                                          {0, 0, length * 0.74f},
                                          {0, 0, length * 0.86f}});
    element.Add(Bar(way, d * 0.05f, 12), Rubber);
    element.Add(Plug(d * 0.30f, d * 0.34f), Move(0, 0, length * 0.82f));
    return element.Add(Plug(d * 0.24f, d * 0.28f), Move(0, 0, d * 0.04f) * Flip());
}

Element NamePlate(float d, float h) {
    Element element;
    AddPlate(element, {}, d, Or(h, d * 0.55f));
    return element;
}

// A screw cap over a charging valve.
Element Charging(float d, float h) {
    const float z = Or(h, d * 1.9f);
    Element element =
        Of(ThreadedRod(d, z * 0.34f, d * 0.12f, 0.5f), Brass, Move(0, 0, z * 0.34f) * Flip());
    element.Add(Hexagon(d * 1.4f, z * 0.18f, true, true), Brass, Move(0, 0, z * 0.33f));
    element.Add(Cylinder(d * 0.42f, z * 0.12f), Brass, Move(0, 0, z * 0.5f));
    return element.Add(Cylinder(d * 0.62f, z * 0.4f, d * 0.1f), BlackPlastic, Move(0, 0, z * 0.6f));
}

constexpr Recipe recipes[] = {
    {Niple, 0.20f, Nipple},
    {TampaoPlastico, 0.22f, DustCap},
    {Silenciador, 0.46f, Muffler},
    {ElementoFiltrante, 0.52f, FilterElement},
    {Tela, 0.30f, Strainer},
    {Esfera, 0.14f, [](float d, float) { return Of(Ball(d / 2), Steel, Move(0, 0, d / 2)); }},
    {Plaqueta, 0.40f, NamePlate},
    {ValvulaEnchimento, 0.20f, Charging},
    {Bobina, 0.50f, CoilBody},
    {Conector, 0.30f, Plug},
    {Chicote, 0.70f, Harness},
    {Nucleo, 0.18f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 2.6f);
         Element element = Of(Revolved({{0, 0},
                                        {r, 0, r * 0.1f},
                                        {r, z * 0.72f, r * 0.1f},
                                        {r * 0.62f, z * 0.73f},
                                        {r * 0.62f, z, r * 0.1f},
                                        {0, z}}),
                              Steel);
         return element.Add(Cylinder(r * 0.5f, z * 0.03f, 0.2f), Rubber, Move(0, 0, z * 0.99f));
     }},
    {Resistencia, 0.16f,
     [](float d, float h) {
         const float z = Or(h, d * 3.2f);
         Element element = Of(Cylinder(d / 2, z * 0.62f, d * 0.1f), Steel);
         element.Add(Hexagon(d * 1.5f, z * 0.12f, true, true), Brass, Move(0, 0, z * 0.6f));
         return element.Add(Plug(d * 1.1f, z * 0.3f), Move(0, 0, z * 0.7f));
     }},
    {Graxa, 0.26f,
     [](float d, float h) {
         // A tube, its fold above.
         const float r = d / 2;
         const float z = Or(h, d * 2.2f);
         Element element = Of(Revolved({{0, 0},
                                        {r * 0.34f, 0, 0.5f},
                                        {r * 0.34f, z * 0.16f},
                                        {r, z * 0.2f, r * 0.1f},
                                        {r, z * 0.8f, r},
                                        {r * 0.5f, z * 0.96f, 0.5f},
                                        {0, z * 0.96f}}),
                              WhitePlastic);
         return element.Add(Block(r * 2, r * 0.2f, z * 0.12f, 0.5f, 0.3f), WhitePlastic,
                            Move(0, 0, z * 0.9f));
     }},
};

}  // namespace

std::span<const Recipe> EquipmentRecipes() {
    return recipes;
}

}  // namespace render
