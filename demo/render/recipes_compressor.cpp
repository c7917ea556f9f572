#include "components.h"
#include "recipes.h"

#include <algorithm>

namespace render {
namespace {

using enum ComponentKind;
using enum Material;

std::vector<Corners> CornerHoles(float width, float depth, float radius) {
    std::vector<Corners> holes;
    for (const float x : {-0.5f, 0.5f}) {
        for (const float y : {-0.5f, 0.5f}) {
            holes.push_back(Moved(Circle(radius), x * width, y * depth));
        }
    }
    return holes;
}

Element Head(float d, float h) {
    const float z = Or(h, d * 0.40f);
    Element element = Of(Extruded(Rectangle(d, d, d * 0.14f), 0, z * 0.4f, d * 0.02f,
                                  CornerHoles(d * 0.8f, d * 0.8f, d * 0.045f)),
                         CastAluminium);
    element.Add(Block(d * 0.66f, d * 0.9f, z * 0.9f, d * 0.10f, d * 0.04f), CastAluminium);
    for (int i = 0; i < 5; ++i) {
        element.Add(Block(d * 0.035f, d * 0.86f, z, d * 0.01f, d * 0.01f), CastAluminium,
                    Move(d * 0.12f * static_cast<float>(i - 2), 0, 0));
    }
    for (const float side : {-90.0f, 90.0f}) {
        AddPort(element, Around(side, d * 0.46f, z * 0.55f), d * 0.17f, CastAluminium);
    }
    return element;
}

Element ValvePlate(float d, float h) {
    std::vector<Corners> holes = CornerHoles(d * 0.8f, d * 0.8f, d * 0.045f);
    for (int i = 0; i < 6; ++i) {
        const float a = Radians(60 * static_cast<float>(i));
        holes.push_back(Moved(Circle(d * 0.05f), d * 0.2f * std::cos(a), d * 0.2f * std::sin(a)));
    }
    return Of(Extruded(Rectangle(d, d, d * 0.14f), 0, Or(h, d * 0.06f), 0.4f, holes), Steel);
}

Element Reed(float d, float h) {
    const float t = Or(h, std::max(0.6f, d * 0.02f));
    return Of(Extruded(Link(d * 0.6f, d * 0.2f, d * 0.14f), 0, t, 0,
                       {Moved(Circle(d * 0.05f), d * 0.6f, 0)}),
              SpringSteel, Move(-d * 0.3f, 0, 0));
}

Element Trunk(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 0.86f);
    Corners profile{{r * 0.84f, 0, 0.5f}, {r * 0.985f, 0, 0.5f}};
    profile.push_back({r * 0.985f, z * 0.60f});
    for (const float groove : {0.62f, 0.74f, 0.86f}) {
        profile.push_back({r, z * (groove - 0.02f)});
        profile.push_back({r, z * groove});
        profile.push_back({r * 0.88f, z * groove});
        profile.push_back({r * 0.88f, z * (groove + 0.045f)});
        profile.push_back({r, z * (groove + 0.045f)});
    }
    profile.push_back({r, z, 0.6f});
    profile.push_back({0, z});
    profile.insert(profile.begin(), {{0, z * 0.9f}, {r * 0.84f, z * 0.9f, 2}});
    Element element = Of(Revolved(profile), Aluminium);
    for (const float side : {-90.0f, 90.0f}) {
        const Placement at = Around(side, r * 0.90f, z * 0.34f);
        element.Add(Tube(d * 0.17f, d * 0.12f, r * 0.1f, 0.3f), Aluminium, at);
        element.Add(Cylinder(d * 0.12f, r * 0.03f), Bore, at * Move(0, 0, r * 0.068f));
    }
    return element;
}

Element Rod(float d, float h) {
    const float length = Or(h, d * 1.3f);
    const float big = d * 0.34f;
    const float small = d * 0.19f;
    const float t = d * 0.24f;
    Element element;
    const Placement lying = Move(0, t / 2, 0) * TurnX(90) * TurnZ(90);
    element.Add(Extruded(Circle(big), 0, t, 0.8f, {Circle(big * 0.70f)}), CastIron,
                Move(0, 0, big) * lying);
    element.Add(Extruded(Circle(small), 0, t, 0.8f, {Circle(small * 0.62f)}), CastIron,
                Move(0, 0, length - small) * lying);
    const float from = big * 1.85f;
    const float to = length - small * 1.8f;
    element.Add(Block(d * 0.20f, t * 0.7f, to - from + 4, d * 0.02f, 0.5f), CastIron,
                Move(0, 0, from - 2));
    for (const float side : {-1.0f, 1.0f}) {
        element.Add(Cylinder(d * 0.07f, big * 0.9f, 0.5f), CastIron,
                    Move(side * big * 0.98f, 0, big * 0.55f));
        element.Add(Hexagon(d * 0.11f, d * 0.06f, true, false), Zinc,
                    Move(side * big * 0.98f, 0, big * 0.55f - d * 0.06f));
    }
    return element;
}

Element HalfShell(float d, float h) {
    const float z = Or(h, d * 0.42f);
    Corners arc;
    for (int i = 0; i <= 28; ++i) {
        const float a = Pi * static_cast<float>(i) / 28;
        arc.push_back({d * 0.5f * std::cos(a), d * 0.5f * std::sin(a), 0});
    }
    for (int i = 28; i >= 0; --i) {
        const float a = Pi * static_cast<float>(i) / 28;
        arc.push_back({d * 0.45f * std::cos(a), d * 0.45f * std::sin(a), 0});
    }
    return Of(Extruded(arc, 0, z), Aluminium);
}

Element Crankshaft(float d, float h) {
    const float z = Or(h, d * 3.6f);
    const float r = d / 2;
    Element element = Of(Revolved({{0, 0},
                                   {r * 0.36f, 0, 0.8f},
                                   {r * 0.36f, z * 0.12f},
                                   {r * 0.5f, z * 0.13f},
                                   {r * 0.5f, z * 0.34f, 0.5f},
                                   {0, z * 0.34f}}),
                         Steel);
    element.Add(Cylinder(r * 0.5f, z * 0.16f, 0.5f), Steel, Move(0, 0, z * 0.62f));
    element.Add(Revolved({{0, 0},
                          {r * 0.48f, 0},
                          {r * 0.34f, z * 0.16f, 0.4f},
                          {r * 0.24f, z * 0.16f},
                          {r * 0.24f, z * 0.24f, 0.6f},
                          {0, z * 0.24f}}),
                Steel, Move(0, 0, z * 0.76f));
    for (const float at : {0.33f, 0.55f}) {
        element.Add(
            Extruded(Moved(Link(r * 1.05f, r * 0.9f, r * 0.56f), -r * 0.35f, 0), 0, z * 0.08f, 1),
            CastIron, Move(0, 0, z * at));
    }
    return element.Add(Cylinder(r * 0.46f, z * 0.2f), Steel, Move(r * 0.6f, 0, z * 0.38f));
}

Element BallBearing(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 0.24f);
    Element element = Of(Tube(r, r * 0.82f, z, 0.8f), Steel);
    element.Add(Tube(r * 0.62f, r * 0.44f, z, 0.8f), Steel);
    element.Add(Tube(r * 0.83f, r * 0.61f, z * 0.3f), Bore, Move(0, 0, z * 0.3f));
    const int balls = 9;
    for (int i = 0; i < balls; ++i) {
        element.Add(Ball(r * 0.14f), Steel,
                    Ring(360.0f * static_cast<float>(i) / balls, r * 0.72f, z / 2));
    }
    return element;
}

Element Gear(float d, float h) {
    const float r = d / 2;
    const int teeth = std::clamp(static_cast<int>(d / 4.5f), 14, 36);
    Corners rim;
    for (int i = 0; i < teeth; ++i) {
        const float pitch = 2 * Pi / static_cast<float>(teeth);
        const float a = pitch * static_cast<float>(i);
        for (const auto& [share, reach] :
             {std::pair{0.0f, 0.89f}, std::pair{0.30f, 0.89f}, std::pair{0.44f, 1.0f},
              std::pair{0.70f, 1.0f}, std::pair{0.86f, 0.89f}}) {
            rim.push_back({r * reach * std::cos(a + pitch * share),
                           r * reach * std::sin(a + pitch * share), 0});
        }
    }
    const float z = Or(h, d * 0.22f);
    Element element = Of(Extruded(rim, 0, z, 0.5f, {Circle(r * 0.26f)}), Steel);
    return element.Add(Tube(r * 0.42f, r * 0.26f, z * 1.5f, 0.6f), Steel);
}

Element Splined(float d, float h) {
    const float r = d / 2;
    const float z = Or(h, d * 0.4f);
    Corners splines;
    const int count = 18;
    for (int i = 0; i < count * 2; ++i) {
        for (const float share : {0.15f, 0.85f}) {
            const float a = Pi * (static_cast<float>(i) + share) / count;
            const float reach = i % 2 == 0 ? r * 0.56f : r * 0.48f;
            splines.push_back({reach * std::cos(a), reach * std::sin(a), 0});
        }
    }
    Corners rim;
    const int teeth = 26;
    for (int i = 0; i < teeth * 2; ++i) {
        const float a = Pi * static_cast<float>(i) / teeth;
        const float reach = i % 2 == 0 ? r : r * 0.92f;
        rim.push_back({reach * std::cos(a), reach * std::sin(a), 0});
    }
    Element element = Of(Extruded(rim, z * 0.2f, z * 0.8f, 0.5f, {splines}), Steel);
    return element.Add(Extruded(Circle(r * 0.74f), 0, z, 0.6f, {splines}), Steel);
}

Element Crankcase(float d, float h) {
    const float z = Or(h, d * 0.86f);
    Element element = Of(Block(d * 0.92f, d * 0.80f, z, d * 0.16f, d * 0.05f), CastIron);
    element.Add(Block(d * 0.86f, d * 0.86f, z * 0.1f, d * 0.12f, 1), CastIron,
                Move(0, 0, z * 0.92f));
    const Placement front = Around(270, d * 0.38f, z * 0.48f);
    element.Add(Tube(d * 0.36f, d * 0.24f, d * 0.1f, 1), CastIron, front);
    element.Add(Cylinder(d * 0.24f, d * 0.02f), Bore, front * Move(0, 0, d * 0.03f));
    for (int i = 0; i < 6; ++i) {
        element.Add(Hexagon(d * 0.07f, d * 0.04f, false, true), Zinc,
                    front * Ring(60.0f * static_cast<float>(i), d * 0.30f, d * 0.1f));
    }
    element.Add(Block(d * 1.06f, d * 0.84f, z * 0.09f, d * 0.1f, 1), CastIron);
    return element;
}

Element Pad(float d, float h) {
    const float t = Or(h, d * 0.2f);
    Corners outline;
    const auto arc = [&](float r, float from, float to) {
        for (int i = 0; i <= 14; ++i) {
            const float a = Radians(from + (to - from) * static_cast<float>(i) / 14);
            outline.push_back(
                {r * std::cos(a), r * std::sin(a) - d * 0.75f, i % 14 ? 0 : d * 0.03f});
        }
    };
    arc(d, 60, 120);
    arc(d * 0.58f, 120, 60);
    Element element = Of(Extruded(outline, 0, t * 0.28f, 0.5f), BlackPaint);
    Corners lining;
    std::swap(outline, lining);
    arc(d * 0.96f, 63, 88.6f);
    arc(d * 0.62f, 88, 64);
    element.Add(Extruded(outline, t * 0.2f, t, 0.8f), Friction);
    outline.clear();
    arc(d * 0.96f, 91.4f, 117);
    arc(d * 0.62f, 116, 92);
    return element.Add(Extruded(outline, t * 0.2f, t, 0.8f), Friction);
}

// A piston ring: a band with a cut.
Element SplitRing(float d, float h, bool oil) {
    const float z = Or(h, std::max(1.6f, d * 0.045f)) * (oil ? 1.7f : 1.0f);
    Corners line;
    const auto arc = [&](float r, bool back) {
        for (int i = 0; i <= 64; ++i) {
            const float t = static_cast<float>(back ? 64 - i : i) / 64;
            const float a = Radians(2.5f + 355 * t);
            line.push_back({r * std::cos(a), r * std::sin(a), 0});
        }
    };
    arc(d / 2, false);
    arc(d * 0.46f, true);
    if (!oil) {
        return Of(Extruded(line, 0, z), Steel, TurnZ(-60));
    }
    Element element = Of(Extruded(line, 0, z * 0.34f), Steel, TurnZ(-60));
    return element.Add(Extruded(line, z * 0.66f, z), Steel, TurnZ(-60))
        .Add(Tube(d * 0.485f, d * 0.465f, z * 0.5f), Steel, Move(0, 0, z * 0.25f));
}

constexpr Recipe recipes[] = {
    {Cabecote, 1.0f, Head},
    {PlacaValvulas, 0.98f, ValvePlate},
    {Lamina, 0.40f, Reed},
    {Pistao, 0.66f, Trunk},
    {AnelCompressao, 0.66f, [](float d, float h) { return SplitRing(d, h, false); }},
    {AnelOleo, 0.66f, [](float d, float h) { return SplitRing(d, h, true); }},
    {PinoPistao, 0.18f,
     [](float d, float h) { return Of(Tube(d / 2, d * 0.3f, Or(h, d * 3.2f), 0.5f), Steel); }},
    {Biela, 0.80f, Rod},
    {Bronzina, 0.40f, HalfShell},
    {Virabrequim, 0.56f, Crankshaft},
    {Rolamento, 0.46f, BallBearing},
    {Engrenagem, 0.66f, Gear},
    {Carter, 1.15f, Crankcase},
    {CoroaSemFim, 0.60f, Splined},
    {Sapata, 0.95f, Pad},
};

}  // namespace

std::span<const Recipe> CompressorRecipes() {
    return recipes;
}

}  // namespace render
