#include "components.h"
#include "models.h"
#include "shapes.h"

#include <algorithm>

// The mechanical parts of the wheel brake.
namespace render {
namespace {

using enum ComponentKind;
using enum Material;

Assembly SlackAdjuster(const Parameters& p) {
    const float length = p.Number(u"comprimento", 152);
    const bool automatic = !p.Says(u"manual");
    const float r = 42;
    Assembly a;
    const float lean = p.Says(u"direito") ? -10.0f : 10.0f;
    a.pose = TurnX(58) * TurnZ(-52 + lean);
    Element& housing = a.Add(Carcaca);
    std::vector<Corners> holes{Circle(21)};
    for (const float at : {0.86f, 1.0f}) {
        holes.push_back(Moved(Circle(6.5f), length * at, 0));
    }
    housing.Add(Extruded(Link(length, r * 0.62f, 15), 6, 28, 3, {holes[1], holes[2]}), CastIron);
    housing.Add(Tube(r, 20, 34, 4), CastIron);
    housing.Add(Cylinder(17, 66, 4), CastIron, Move(length * 0.34f, 33, 17) * TurnX(90));
    housing.Add(Component(ParafusoSextavado, 12, 14), Move(length * 0.34f, -33, 17) * TurnX(90));
    if (automatic) {
        housing.Add(Cylinder(12, 42, 3), CastIron, Move(length * 0.42f, 0, 25));
        Element& fork = a.Add(Forquilha);
        fork.Add(Component(Forquilha, 28, 60), Move(length, -14, 17) * TurnX(90));
        fork.Add(Cylinder(5, 62, 1), Zinc, Move(length * 0.42f, 0, 58) * TurnY(62));
    }
    // The worm wheel shows its splines.
    a.Add(Component(CoroaSemFim, 66, 38), Move(0, 0, -2));
    a.elements.back().kind = CoroaSemFim;
    Element& cover = a.Add(Tampa, Move(0, 0, 34));
    cover.Add(Tube(36, 23, 3, 0.5f), Zinc);
    AddCircle(cover, Component(Rebite, 5, 4), 6, 31, 2.6f);
    housing.Add(Component(Bujao, 9), Move(length * 0.16f, -r * 0.86f, 20) * TurnX(90));
    return a;
}

Assembly Calliper(const Parameters& p) {
    const float k = p.Number(u"aro", 22.5f) / 22.5f;
    Assembly a;
    a.pose = TurnZ(p.Says(u"direita") ? 24.0f : -30.0f);
    Element& housing = a.Add(Carcaca);
    // The bridge over the disc between the two cheeks.
    housing.Add(Block(190 * k, 84 * k, 120 * k, 24, 10), CastIron, Move(0, 78 * k, 0));
    housing.Add(Block(190 * k, 46 * k, 108 * k, 22, 9), CastIron, Move(0, -82 * k, 0));
    for (const float side : {-1.0f, 1.0f}) {
        housing.Add(Block(46 * k, 190 * k, 40 * k, 12, 7), CastIron,
                    Move(side * 70 * k, 0, 84 * k));
        housing.Add(Cylinder(20 * k, 96 * k, 3), CastIron,
                    Move(side * 92 * k, 128 * k, 34 * k) * TurnX(90));
        housing.Add(Cylinder(14 * k, 6, 2), BlackPlastic,
                    Move(side * 92 * k, 30 * k, 34 * k) * TurnX(90));
    }
    housing.Add(Cylinder(46 * k, 26, 4), CastIron, Move(0, 110 * k, 62 * k) * TurnX(-90));
    for (const float side : {-34.0f, 34.0f}) {
        Element& cap = a.Add(TampaoPlastico, Move(side * k, -104 * k, 52 * k) * TurnX(90));
        cap.Add(Cylinder(26 * k, 10, 3), CastIron);
        cap.Add(Cylinder(15 * k, 12, 2), BlackPlastic);
    }
    Element& strap = a.Add(Placa);
    strap.Add(Block(26 * k, 176 * k, 4, 3, 1), Zinc, Move(0, 0, 118 * k));
    if (!p.Says(u"s/ pastilhas")) {
        for (const float side : {-1.0f, 1.0f}) {
            Element pad = Component(Sapata, 150 * k, 26 * k);
            a.Add(std::move(pad), Move(0, side * 14 * k, 50 * k) *
                                      TurnX(side > 0 ? 90.0f : -90.0f) * Move(0, 0, 0));
        }
    }
    if (p.Says(u"suporte")) {
        Element& carrier = a.Add(Base);
        carrier.Add(Block(250 * k, 40 * k, 60 * k, 14, 6), CastIron, Move(0, 10 * k, -18 * k));
        for (const float x : {-108.0f, 108.0f}) {
            carrier.Add(Component(ParafusoSextavado, 16, 20), Move(x * k, 10 * k, 42 * k));
        }
    }
    if (p.Says(u"sensor")) {
        a.Add(Chicote).Add(Bar(Smooth({{40 * k, 0, 118 * k},
                                       {60, -30, 140 * k},
                                       {110, -60, 120 * k},
                                       {130, -90, 60 * k}}),
                               3, 12),
                           Rubber);
    }
    return a;
}

Assembly Camshaft(const Parameters& p) {
    const float length = p.Number(u"comprimento", 545);
    const float turn = p.Says(u"esquerdo") ? -1.0f : 1.0f;
    Assembly a;
    a.pose = Lying(-30);
    Element& shaft = a.Add(EixoAlavanca);
    shaft.Add(Revolved({{0, 0},
                        {19, 0, 2},
                        {19, length * 0.30f, 1},
                        {17, length * 0.32f, 1},
                        {17, length * 0.74f, 1},
                        {21, length * 0.76f, 1},
                        {21, length * 0.90f, 2},
                        {0, length * 0.90f}}),
              Steel);
    const int splines = static_cast<int>(std::clamp(p.Number(u"estrias", 28), 6.0f, 60.0f));
    AddRibs(shaft, splines, 18, 20.4f, 4, length * 0.12f,
            2 * Pi * 19 / static_cast<float>(splines) * 0.5f, Steel);
    // The S of the cam: two noses grown out of a disc.
    Corners cam;
    for (int i = 0; i < 96; ++i) {
        const float at = 2 * Pi * static_cast<float>(i) / 96;
        const float rise = std::fmod(at / Pi, 1.0f);
        const float reach = 22 + 26 * std::pow(rise, 1.4f) * (rise < 0.9f ? 1.0f : (1 - rise) * 10);
        cam.push_back({reach * std::cos(turn * at), reach * std::sin(turn * at), 0});
    }
    if (turn < 0) {
        std::reverse(cam.begin(), cam.end());
    }
    shaft.Add(Extruded(cam, length * 0.88f, length, 2), CastIron);
    return a;
}

Assembly ReturnSpring(const Parameters& p) {
    const float d = p.Number(u"diâmetro", 24);
    const float h = p.Number(u"comprimento", 140);
    Assembly a;
    a.pose = Lying(-24) * TurnZ(70);
    const float wire = std::max(2.0f, d * 0.13f);
    const float coil = h * 0.66f;
    std::vector<Vec3> way =
        Helix({.radius = (d - wire) / 2,
               .wire = wire,
               .height = coil,
               .turns = std::clamp(std::floor(coil / wire * 0.86f), 2.0f, 60.0f),
               .flatEnds = false},
              24);
    // A hook at each end, bent back to the axis.
    const float r = (d - wire) / 2;
    std::vector<Vec3> all;
    for (int i = 0; i <= 20; ++i) {
        const float at = Radians(-150 + 240 * static_cast<float>(i) / 20);
        all.push_back({r * std::sin(at) * 0.96f, 0, -r * 1.15f - r * std::cos(at)});
    }
    all.push_back({r * 0.98f, 0, -wire * 0.4f});
    all.insert(all.end(), way.begin() + 2, way.end());
    const Vec3 end = way.back();
    const float turn = std::atan2(end.y, end.x);
    for (int i = 0; i <= 20; ++i) {
        const float at = Radians(90 - 240 * static_cast<float>(i) / 20);
        const float reach = r * std::sin(at) * 0.96f;
        all.push_back(
            {reach * std::cos(turn), reach * std::sin(turn), coil + r * 1.15f + r * std::cos(at)});
    }
    a.Add(MolaRetorno)
        .Add(Bar(all, wire / 2, 14), p.Says(u"pedal")    ? YellowZinc
                                     : p.Says(u"sapata") ? SpringSteel
                                                         : Zinc);
    return a;
}

constexpr FamilyModel models[] = {
    {u"ajustador-folga", SlackAdjuster},
    {u"pinca-freio", Calliper},
    {u"eixo-expansor", Camshaft},
    {u"mola-retorno", ReturnSpring},
};

}  // namespace

std::span<const FamilyModel> WheelModels() {
    return models;
}

}  // namespace render
