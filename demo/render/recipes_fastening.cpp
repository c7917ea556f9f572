#include "recipes.h"

#include <algorithm>

namespace render {
namespace {

using enum ComponentKind;
using enum Material;

constexpr float Flats = 1.62f;  // of a thread's diameter, across the flats of its hexagon
constexpr float Head = 0.66f;

float Pitch(float d) {
    return std::max(1.1f, d * 0.13f);
}

// A thread hanging below z = 0.
void AddShank(Element& element, float d, float length, Material material, float plain = 0.3f) {
    const float smooth = length * plain;
    element.Add(Cylinder(d / 2, smooth + 0.2f), material, Move(0, 0, -smooth));
    element.Add(ThreadedRod(d, length - smooth, Pitch(d), d * 0.1f), material,
                Move(0, 0, -smooth) * Flip());
}

Element HexScrew(float d, float h) {
    Element element = Of(Hexagon(d * Flats, d * Head, false, true), Zinc);
    element.Add(Cylinder(d * 0.78f, d * 0.06f), Zinc, Move(0, 0, -d * 0.06f));
    AddShank(element, d, Or(h, d * 2.6f), Zinc);
    return element;
}

Element SocketScrew(float d, float h) {
    const float head = d * 0.78f;
    Element element =
        Of(Extruded(Circle(head), 0, d, d * 0.08f, {RegularPolygon(6, d * 0.82f)}), BlackPaint);
    element.Add(Cylinder(head * 0.8f, d * 0.4f), Bore);
    AddShank(element, d, Or(h, d * 2.4f), BlackPaint);
    return element;
}

// A slot is two half heads.
Element SlotScrew(float d, float h) {
    const float r = d * 0.95f;
    const float gap = d * 0.13f;
    Element element;
    Corners half;
    for (int i = 0; i <= 18; ++i) {
        const float lean = std::asin(gap / r);
        const float a = lean + (Pi - 2 * lean) * static_cast<float>(i) / 18;
        half.push_back({r * std::cos(a), r * std::sin(a), 0});
    }
    for (const float turn : {0.0f, 180.0f}) {
        element.Add(Extruded(half, 0, d * 0.6f, d * 0.1f), Zinc, TurnZ(turn));
    }
    element.Add(Cylinder(r * 0.99f, d * 0.28f), Zinc);
    AddShank(element, d, Or(h, d * 2), Zinc, 0);
    return element;
}

Element Nut(float d, float h) {
    return Of(Hexagon(d * Flats, Or(h, d * 0.8f), true, true, d * 0.48f), Zinc);
}

// Away from the axis like the wire of a cotter: an eye and two legs.
Element Cotter(float d, float h) {
    const float length = Or(h, d * 8);
    Element element;
    std::vector<Vec3> way;
    const float eye = d * 0.95f;
    const float wire = d * 0.26f;
    way.push_back({-wire, 0, 0});
    way.push_back({-wire, 0, length - eye});
    for (int i = 0; i <= 16; ++i) {
        const float a = Radians(200 - 220 * static_cast<float>(i) / 16);
        way.push_back({eye * std::cos(a), 0, length + eye * 0.6f + eye * std::sin(a)});
    }
    way.push_back({wire, 0, length - eye});
    way.push_back({wire, 0, -length * 0.12f});
    return element.Add(Bar(way, wire, 12), Zinc);
}

// A ring with a gap, as arcs of a closed outline.
Mesh OpenRing(float outer, float inner, float height, float gapDegrees, float eyes) {
    Corners line;
    const int steps = 48;
    const float half = Radians(gapDegrees) / 2;
    const auto arc = [&](float r, bool back) {
        for (int i = 0; i <= steps; ++i) {
            const float t = static_cast<float>(back ? steps - i : i) / steps;
            const float a = half + (2 * Pi - 2 * half) * t;
            line.push_back({r * std::cos(a), r * std::sin(a), 0});
        }
    };
    arc(outer, false);
    arc(inner, true);
    Mesh mesh = Extruded(line, 0, height);
    if (eyes > 0) {
        for (const float side : {1.0f, -1.0f}) {
            const float a = side * (half + eyes / outer);
            const float r = (outer + inner) / 2 - (outer - inner) * 0.3f;
            mesh.Append(Extruded(Circle(eyes), 0, height, 0, {Circle(eyes * 0.45f)}),
                        Move(r * std::cos(a), r * std::sin(a), 0));
        }
    }
    return mesh;
}

Element Plug(float d, float h) {
    Element element = Of(Hexagon(d * 1.35f, d * 0.42f, false, true), Zinc, Move(0, 0, d * 0.1f));
    element.Add(Cylinder(d * 0.74f, d * 0.12f, 0.3f), Zinc);
    AddShank(element, d, Or(h, d * 0.7f), Zinc, 0.1f);
    return element;
}

constexpr Recipe recipes[] = {
    {ParafusoSextavado, 0.11f, HexScrew},
    {ParafusoInterno, 0.10f, SocketScrew},
    {ParafusoFenda, 0.08f, SlotScrew},
    {ParafusoRegulagem, 0.13f,
     [](float d, float h) {
         const float length = Or(h, d * 3.2f);
         Element element = Of(ThreadedRod(d, length, Pitch(d), d * 0.15f), Zinc, Flip());
         // The square by which it is turned.
         return element.Add(Block(d * 0.62f, d * 0.62f, d * 0.7f, d * 0.06f, d * 0.05f), Zinc);
     }},
    {Prisioneiro, 0.11f,
     [](float d, float h) {
         const float length = Or(h, d * 6);
         Element element = Of(ThreadedRod(d, length * 0.34f, Pitch(d), d * 0.12f), Zinc,
                              Move(0, 0, length * 0.66f));
         element.Add(Cylinder(d * 0.45f, length * 0.4f), Zinc, Move(0, 0, length * 0.28f));
         return element.Add(ThreadedRod(d, length * 0.3f, Pitch(d), d * 0.12f), Zinc,
                            Move(0, 0, length * 0.3f) * Flip());
     }},
    {Porca, 0.12f, Nut},
    {PorcaAutotravante, 0.12f,
     [](float d, float h) {
         Element element = Nut(d, Or(h, d * 0.8f));
         element.Add(Tube(d * 0.74f, d * 0.5f, d * 0.26f, d * 0.06f), Zinc, Move(0, 0, d * 0.76f));
         return element.Add(Tube(d * 0.62f, d * 0.46f, d * 0.06f), BluePlastic,
                            Move(0, 0, d * 0.98f));
     }},
    {ArruelaLisa, 0.24f,
     [](float d, float h) {
         return Of(Tube(d / 2, d * 0.27f, Or(h, std::max(1.0f, d * 0.08f)), 0.2f), Zinc);
     }},
    {ArruelaPressao, 0.20f,
     [](float d, float h) {
         const float wire = Or(h, d * 0.13f);
         std::vector<Vec3> way;
         for (int i = 0; i <= 44; ++i) {
             const float a = Radians(4 + 350 * static_cast<float>(i) / 44);
             way.push_back({(d - wire) / 2 * std::cos(a), (d - wire) / 2 * std::sin(a),
                            wire * (0.5f + static_cast<float>(i) / 60)});
         }
         return Of(Bar(way, wire * 0.62f, 4), Zinc);
     }},
    {AnelTrava, 0.46f,
     [](float d, float h) {
         return Of(OpenRing(d / 2, d * 0.42f, Or(h, std::max(1.0f, d * 0.045f)), 34, d * 0.06f),
                   SpringSteel);
     }},
    {AnelElastico, 0.40f,
     [](float d, float h) {
         const float wire = Or(h, std::max(1.0f, d * 0.055f));
         std::vector<Vec3> way;
         for (int i = 0; i <= 56; ++i) {
             const float a = Radians(22 + 316 * static_cast<float>(i) / 56);
             way.push_back({(d - wire) / 2 * std::cos(a), (d - wire) / 2 * std::sin(a), wire / 2});
         }
         return Of(Bar(way, wire / 2, 12), SpringSteel);
     }},
    {Contrapino, 0.05f, Cotter},
    {PinoElastico, 0.07f,
     [](float d, float h) {
         return Of(OpenRing(d / 2, d * 0.34f, Or(h, d * 4), 40, 0), SpringSteel);
     }},
    {Rebite, 0.07f,
     [](float d, float h) {
         const float r = d / 2;
         const float length = Or(h, d * 2.2f);
         return Of(Revolved({{0, -length},
                             {r, -length, r * 0.2f},
                             {r, 0},
                             {r * 1.9f, 0, r * 0.1f},
                             {r * 1.7f, r * 0.9f, r},
                             {0, r * 1.1f}}),
                   Aluminium);
     }},
    {Abracadeira, 1.06f,
     [](float d, float h) {
         const float r = d / 2;
         const float z = Or(h, std::max(6.0f, d * 0.09f));
         Element element = Of(Revolved({{r * 0.94f, 0, 0.5f},
                                        {r * 0.98f, 0, 0.5f},
                                        {r, z * 0.3f, 1},
                                        {r, z * 0.7f, 1},
                                        {r * 0.98f, z, 0.5f},
                                        {r * 0.94f, z, 0.5f},
                                        {r * 0.97f, z * 0.65f, 0.5f},
                                        {r * 0.97f, z * 0.35f, 0.5f}}),
                              Zinc);
         for (const float side : {-75.0f, 105.0f}) {
             const Placement ear = Ring(side, r * 1.07f, 0);
             for (const float y : {-1.0f, 1.0f}) {
                 element.Add(Block(r * 0.2f, r * 0.035f, z, r * 0.015f, 0.3f), Zinc,
                             ear * Move(0, y * r * 0.055f, 0));
             }
             const float bolt = z * 0.42f;
             element.Add(HexScrew(bolt, bolt * 2.6f),
                         ear * Move(r * 0.02f, r * 0.075f, z / 2) * TurnX(-90));
             element.Add(Nut(bolt, 0), ear * Move(r * 0.02f, -r * 0.075f, z / 2) * TurnX(90));
         }
         return element;
     }},
    {Bujao, 0.20f, Plug},
    {Chaveta, 0.16f,
     [](float d, float h) {
         Corners half;
         for (int i = 0; i <= 20; ++i) {
             const float a = Pi + Pi * static_cast<float>(i) / 20;
             half.push_back({d / 2 * std::cos(a), d / 2 * std::sin(a) + d * 0.2f, 0});
         }
         return Of(Extruded(half, 0, Or(h, d * 0.22f), 0.2f), Steel, TurnX(90));
     }},
};

}  // namespace

std::span<const Recipe> FasteningRecipes() {
    return recipes;
}

}  // namespace render
