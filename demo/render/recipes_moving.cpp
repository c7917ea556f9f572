#include "recipes.h"

#include <algorithm>

namespace render {
namespace {

using enum ComponentKind;
using enum Material;

// A piston with `grooves` for its seals and a stem of `stem` times its height.
Element Piston(float d, float h, Material material, int grooves, float stem) {
    const float r = d / 2;
    const float z = Or(h, d * 0.34f);
    Corners profile{{0, 0}, {r * 0.9f, 0, 0.5f}, {r, r * 0.06f, 0.4f}};
    const float pitch = z / static_cast<float>(grooves + 1);
    const float width = std::min(pitch * 0.45f, d * 0.07f);
    for (int i = 1; i <= grooves; ++i) {
        const float middle = pitch * static_cast<float>(i);
        profile.push_back({r, middle - width / 2, 0.2f});
        profile.push_back({r * 0.89f, middle - width / 2, 0.2f});
        profile.push_back({r * 0.89f, middle + width / 2, 0.2f});
        profile.push_back({r, middle + width / 2, 0.2f});
    }
    profile.push_back({r, z - r * 0.05f, 0.3f});
    profile.push_back({r * 0.94f, z, 0.3f});
    profile.push_back({r * 0.74f, z, 1});
    profile.push_back({r * 0.68f, z * 0.72f, 1});
    profile.push_back({r * 0.36f, z * 0.72f, 1});
    profile.push_back({r * 0.32f, z * (1 + stem), 0.8f});
    profile.push_back({0, z * (1 + stem)});
    return Of(Revolved(profile), material);
}

Element Rod(float d, float h) {
    const float r = d / 2;
    const float length = Or(h, d * 7);
    Element element = Of(Revolved({{0, 0},
                                   {r * 1.7f, 0, r * 0.2f},
                                   {r * 1.7f, r * 0.7f, r * 0.2f},
                                   {r, r * 1.1f, r * 0.4f},
                                   {r, length * 0.74f, r * 0.1f},
                                   {0, length * 0.74f}}),
                         Steel);
    return element.Add(ThreadedRod(d * 0.9f, length * 0.28f, std::max(1.2f, d * 0.13f), d * 0.1f),
                       Zinc, Move(0, 0, length * 0.72f));
}

// Fork with its pin; the thread below.
Element Yoke(float d, float h) {
    const float length = Or(h, d * 1.6f);
    const float eye = d * 0.5f;
    Element element;
    for (const float side : {-1.0f, 1.0f}) {
        element.Add(Extruded(Moved(Link(length * 0.62f, d * 0.52f, eye), 0, 0), -d * 0.11f,
                             d * 0.11f, d * 0.04f, {Moved(Circle(eye * 0.5f), length * 0.62f, 0)}),
                    Zinc, Move(0, side * d * 0.34f, length * 0.38f) * TurnX(90) * TurnZ(90));
    }
    element.Add(Block(d * 1.0f, d * 0.9f, d * 0.3f, d * 0.12f, d * 0.06f), Zinc,
                Move(0, 0, length * 0.14f));
    element.Add(Cylinder(d * 0.36f, length * 0.24f, 1), Zinc);
    element.Add(Cylinder(eye * 0.48f, d * 1.15f, 0.8f), Steel,
                Move(0, d * 0.58f, length) * TurnX(90));
    element.Add(Cylinder(eye * 0.7f, d * 0.1f, 0.4f), Steel,
                Move(0, d * 0.58f, length) * TurnX(90));
    return element;
}

// A lever about its shaft, lying in the plane of z = 0, its end along x.
Element Lever(float d, float h) {
    const float t = Or(h, std::max(4.0f, d * 0.07f));
    const float boss = d * 0.13f;
    const float end = d * 0.085f;
    Element element = Of(Extruded(Link(d * 0.82f, boss, end), 0, t, t * 0.2f,
                                  {Circle(boss * 0.42f), Moved(Circle(end * 0.45f), d * 0.82f, 0)}),
                         Zinc);
    return element.Add(Tube(boss * 0.78f, boss * 0.42f, t * 2.4f, 0.6f), Zinc);
}

// Tread plate with a ribbed rubber, hinged at one end; d is its length.
Element PedalPlate(float d, float h) {
    const float width = d * 0.36f;
    const float t = Or(h, d * 0.035f);
    Element element = Of(Block(d, width, t, width * 0.16f, t * 0.3f), BlackPaint);
    element.Add(Block(d * 0.90f, width * 0.90f, t * 0.8f, width * 0.13f, t * 0.3f), Rubber,
                Move(0, 0, t * 0.7f));
    const int ribs = 11;
    for (int i = 0; i < ribs; ++i) {
        const float x = d * 0.78f * ((static_cast<float>(i) + 0.5f) / ribs - 0.5f);
        element.Add(Block(d * 0.032f, width * 0.78f, t * 0.7f, d * 0.01f, t * 0.2f), Rubber,
                    Move(x, 0, t * 1.3f));
    }
    for (const float side : {-1.0f, 1.0f}) {
        element.Add(Extruded(Link(d * 0.10f, d * 0.05f, d * 0.035f), -t * 0.4f, t * 0.4f, 0.3f,
                             {Moved(Circle(d * 0.017f), d * 0.10f, 0)}),
                    BlackPaint,
                    Move(-d * 0.38f, side * width * 0.32f, t * 0.2f) * TurnX(90) * TurnZ(-90));
    }
    return element;
}

Element Stepped(float d, float h, Material material) {
    const float r = d / 2;
    const float z = Or(h, d * 3);
    return Of(Revolved({{0, 0},
                        {r * 0.7f, 0, r * 0.12f},
                        {r * 0.7f, z * 0.2f},
                        {r, z * 0.22f, r * 0.1f},
                        {r, z * 0.8f, r * 0.1f},
                        {r * 0.6f, z * 0.82f},
                        {r * 0.6f, z, r * 0.3f},
                        {0, z}}),
              material);
}

constexpr Recipe recipes[] = {
    {Embolo, 0.62f, [](float d, float h) { return Piston(d, h, Aluminium, 2, 0.55f); }},
    {EmboloComando, 0.58f, [](float d, float h) { return Piston(d, h, BlackPlastic, 1, 0.9f); }},
    {Haste, 0.13f, Rod},
    {PinoComando, 0.11f, [](float d, float h) { return Stepped(d, Or(h, d * 3.4f), Steel); }},
    {Tucho, 0.17f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 1.9f);
         return Of(Revolved({{0, 0},
                             {r * 0.86f, 0, r * 0.2f},
                             {r * 0.86f, z * 0.6f},
                             {r * 1.3f, z * 0.62f, r * 0.1f},
                             {r * 1.3f, z * 0.78f, r * 0.1f},
                             {r, z * 0.8f},
                             {r, z, r * 0.9f},
                             {0, z}}),
                   Steel);
     }},
    {LuvaGuia, 0.32f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 0.95f);
         return Of(Revolved({{r * 0.66f, 0, 0.4f},
                             {r * 0.9f, 0, 0.4f},
                             {r * 0.9f, z * 0.82f},
                             {r * 1.1f, z * 0.82f, 0.4f},
                             {r * 1.1f, z, 0.4f},
                             {r * 0.66f, z, 0.4f}}),
                   Brass);
     }},
    {Bucha, 0.24f,
     [](float d, float h) {
         return Of(Tube(d / 2, d * 0.40f, Or(h, d * 0.85f), d * 0.03f), Bronze);
     }},
    {ValvulaInterna, 0.40f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 0.8f);
         Element element = Of(Revolved({{r * 0.34f, 0, 0.3f},
                                        {r * 0.58f, 0, 0.4f},
                                        {r * 0.58f, z * 0.66f, 0.6f},
                                        {r * 0.98f, z * 0.70f, 0.5f},
                                        {r * 0.98f, z * 0.84f, 0.5f},
                                        {r * 0.34f, z * 0.84f, 0.3f}}),
                              Brass);
         return element.Add(Tube(r, r * 0.40f, z * 0.18f, 0.6f), Rubber, Move(0, 0, z * 0.82f));
     }},
    {CorpoInterno, 0.62f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 0.46f);
         Element element = Of(Revolved({{r * 0.36f, 0, 0.5f},
                                        {r * 0.56f, 0, 0.8f},
                                        {r * 0.60f, z * 0.4f, 1.5f},
                                        {r, z * 0.52f, 0.6f},
                                        {r, z * 0.66f, 0.3f},
                                        {r * 0.9f, z * 0.66f, 0.3f},
                                        {r * 0.9f, z * 0.78f, 0.3f},
                                        {r, z * 0.78f, 0.3f},
                                        {r, z, 0.8f},
                                        {r * 0.62f, z, 0.6f},
                                        {r * 0.5f, z * 0.72f, 0.6f},
                                        {r * 0.36f, z * 0.72f, 0.6f}}),
                              Aluminium);
         return element;
     }},
    {Rolete, 0.16f,
     [](float d, float h) {
         return Of(Tube(d / 2, d * 0.22f, Or(h, d * 0.8f), d * 0.06f), Steel);
     }},
    {Came, 0.34f,
     [](float d, float h) {
         const float t = Or(h, d * 0.3f);
         Element element =
             Of(Extruded(Link(d * 0.34f, d * 0.36f, d * 0.16f), 0, t, 0.6f, {Circle(d * 0.15f)}),
                Steel);
         return element.Add(Tube(d * 0.24f, d * 0.15f, t * 1.7f, 0.5f), Steel);
     }},
    {Alavanca, 0.95f, Lever},
    {EixoAlavanca, 0.14f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, d * 4.6f);
         return Of(Revolved({{0, 0},
                             {r, 0, r * 0.15f},
                             {r, z * 0.10f},
                             {r * 0.82f, z * 0.11f},
                             {r * 0.82f, z * 0.14f},
                             {r, z * 0.15f},
                             {r, z * 0.86f},
                             {r * 0.82f, z * 0.87f},
                             {r * 0.82f, z * 0.90f},
                             {r, z * 0.91f},
                             {r, z, r * 0.15f},
                             {0, z}}),
                   Steel);
     }},
    {Forquilha, 0.26f, Yoke},
    {Pedal, 1.5f, PedalPlate},
};

}  // namespace

std::span<const Recipe> MovingRecipes() {
    return recipes;
}

}  // namespace render
