#include "components.h"
#include "models.h"
#include "shapes.h"

#include <algorithm>

// Valves with a pedal, lever, knob or coil.
namespace render {
namespace {

using enum ComponentKind;
using enum Material;

Assembly PedalValve(const Parameters& p) {
    const int circuits = p.Says(u"2") ? 2 : 1;
    const float thread = p.Thread(22);
    const float r = 36;
    const float length = circuits == 2 ? 108.0f : 66.0f;
    Assembly a;
    a.pose = TurnZ(-38);
    const bool plate = p.Says(u"placa");
    if (plate) {
        a.Add(Component(Pedal, 210, 7), Move(20, 0, 62) * TurnY(-20));
        a.Add(Component(Rolete, 18, 30), Move(0, 15, 54) * TurnX(90));
        a.Add(Component(EixoAlavanca, 10, 70), Move(-62, 35, 28) * TurnX(90));
    } else {
        a.Add(Component(Tucho, 20, 34), Move(0, 0, 22));
    }
    a.Add(Component(Coifa, 62, plate ? 44.0f : 34.0f), Move(0, 0, 3));
    Element& base = a.Add(Base);
    std::vector<Corners> holes;
    for (int i = 0; i < 3; ++i) {
        const float at = Radians(60 + 120 * static_cast<float>(i));
        holes.push_back(Moved(Circle(5), 54 * std::cos(at), 54 * std::sin(at)));
    }
    base.Add(Extruded(EaredDisc(46, 3, 54, 13, 60), -6, 5, 2, holes), CastAluminium);
    if (plate) {
        base.Add(Block(60, 54, 10, 8, 2), CastAluminium, Move(-50, 0, -6));
        for (const float side : {-1.0f, 1.0f}) {
            base.Add(Extruded(Link(28, 12, 9), -4, 4, 1, {Moved(Circle(5), 28, 0)}), CastAluminium,
                     Move(-62, side * 24, 2) * TurnX(90) * TurnZ(90));
        }
    }
    AddCircle(base, Component(ParafusoInterno, 7, 10), 3, 38, 5, 0);
    Element& body = a.Add(Corpo);
    body.Add(Revolved({{0, -length},
                       {r * 0.62f, -length, 2},
                       {r * 0.66f, -length + 12, 4},
                       {r, -length + 22, 6},
                       {r, -8, 5},
                       {r * 0.9f, -4},
                       {0, -4}}),
             CastAluminium);
    for (int i = 0; i < circuits; ++i) {
        const float z = -34 - 42 * static_cast<float>(i);
        body.Add(Tube(r * 1.04f, r * 0.5f, 5, 1), CastAluminium, Move(0, 0, z + 17));
        for (const float at : {205.0f, 300.0f}) {
            AddPort(body, Around(at, r * 0.97f, z), thread, CastAluminium);
        }
    }
    AddRibs(body, 10, r * 0.6f, r * 1.05f, -length + 14, -length + 30, 3, CastAluminium);
    AddPlate(body, Around(252, r * 1.0f, -30), 18, 11);
    if (p.Says(u"interruptor")) {
        Element& contact = a.Add(Conector);
        contact.Add(Component(Conector, 22, 40), Around(340, r, -16));
        contact.Add(Hexagon(24, 8, true, true), Brass, Around(340, r, -16));
    } else if (p.Says(u"potenciômetro")) {
        Element& box = a.Add(Conector);
        box.Add(Block(44, 32, 30, 4, 2), BlackPlastic, Around(340, r * 0.9f, -22));
        box.Add(Component(Conector, 20, 26), Around(340, r + 26, -22) * TurnX(-60));
    }
    a.Add(Component(Silenciador, r * 1.25f, 24), Move(0, 0, -length - 22));
    return a;
}

// A body with a shaft across it that carries the lever.
Assembly LeverBody(const Parameters& p, float leverLength, bool relay) {
    const float thread = p.Thread(14);
    const float r = relay ? 36.0f : 29.0f;
    Assembly a;
    a.pose = TurnZ(-26);
    Element& lever = a.Add(Alavanca, Move(r * 0.1f, -r - 16, 34) * TurnX(90) *
                                         TurnZ(p.Says(u"esquerdo") ? 160.0f : 12.0f));
    lever.Add(Component(Alavanca, leverLength, 6), Move(0, 0, -3));
    a.Add(Component(Porca, 11), Move(r * 0.1f, -r - 18, 34) * TurnX(90));
    Element& shaft = a.Add(EixoAlavanca, Move(r * 0.1f, -r - 18, 34) * TurnX(-90));
    shaft.Add(Cylinder(6, 26), Steel);
    Element& cover = a.Add(Tampa, Move(0, 0, 48));
    cover.Add(Extruded(EaredDisc(r * 0.9f, 4, r, 8, 45), 0, 8, 1.5f), CastAluminium);
    cover.Add(Cylinder(r * 0.6f, 15, 4), CastAluminium);
    AddCircle(cover, Component(ParafusoInterno, 6, 9), 4, r, 8, 45);
    Element& body = a.Add(Corpo);
    body.Add(Revolved({{0, -16},
                       {r * 0.6f, -16, 2},
                       {r * 0.7f, 0, 5},
                       {r, 8, 5},
                       {r, 47.5f, 1.5f},
                       {0, 47.5f}}),
             CastAluminium);
    body.Add(Cylinder(16, r * 1.1f + 2, 2), CastAluminium, Move(r * 0.1f, 0, 34) * TurnX(90));
    AddPort(body, Around(200, r * 0.97f, 20), thread, CastAluminium);
    AddPort(body, Around(335, r * 0.97f, 20), thread, CastAluminium);
    AddPort(body, Around(90, r * 0.97f, 20), thread, CastAluminium);
    AddPlate(body, Around(236, r, 36), 14, 8);
    if (relay) {
        AddPort(cover, Move(0, 0, 14), thread, CastAluminium, 7);
    }
    a.Add(Component(Silenciador, r, 14), Move(0, 0, -29));
    return a;
}

Assembly LoadSensing(const Parameters& p) {
    Assembly a = LeverBody(p, p.Says(u"alavanca") ? 190.0f : 120.0f, p.Says(u"relé"));
    if (p.Says(u"pneumática")) {
        // Bellows pressure takes the place of the lever's rod.
        Element& side = a.Add(CorpoInterno);
        side.Add(Cylinder(20, 44, 4), CastAluminium, Around(20, 24, 28));
        AddPort(side, Around(20, 67, 28), 12, CastAluminium);
    }
    return a;
}

Assembly Levelling(const Parameters& p) {
    const float rod = p.Number(u"haste", 180);
    Assembly a = LeverBody(p, 150, false);
    const float turn = p.Says(u"esquerdo") ? 160.0f : 12.0f;
    Element& link = a.Add(Haste, Move(2.9f, -46, 34) * TurnX(90) * TurnZ(turn) * Move(123, 0, 0) *
                                     TurnZ(-turn) * TurnX(-90));
    link.Add(Cylinder(4, rod, 0.5f), Zinc, Move(0, 0, 6));
    for (const float z : {0.0f, rod + 8}) {
        link.Add(Cylinder(9, 16, 3), Rubber, Move(0, 8, z) * TurnX(90));
        link.Add(Cylinder(4, 24, 0.5f), Zinc, Move(0, 12, z) * TurnX(90));
    }
    if (p.Says(u"bloqueio") || p.Says(u"limitador")) {
        Element& side = a.Add(CorpoInterno);
        side.Add(Cylinder(13, 34, 3), p.Says(u"bloqueio") ? BlackPlastic : CastAluminium,
                 Around(20, 24, 14));
    }
    return a;
}

Assembly HandBrake(const Parameters& p) {
    const float thread = p.Thread(14);
    const bool trailer = p.Says(u"reboque");
    Assembly a;
    a.pose = TurnZ(-24);
    Element& lever = a.Add(Alavanca, Move(0, 0, 46));
    lever.Add(Extruded(Link(46, 9, 7), -6, 6, 2), BlackPlastic, TurnX(90) * TurnZ(64));
    const Placement grip = TurnY(26) * Move(0, 0, 44);
    lever.Add(Revolved({{0, 0}, {7, 0, 2}, {9, 14, 8}, {13, 30, 8}, {11, 42, 8}, {0, 42}}),
              p.Says(u"teste") ? BlackPlastic
              : trailer        ? BluePlastic
                               : BlackPlastic,
              grip);
    if (p.Says(u"trava")) {
        lever.Add(Tube(12, 9, 7, 2), RedPlastic, grip * Move(0, 0, 4));
    }
    Element& cover = a.Add(Tampa);
    cover.Add(Extruded(Rectangle(74, 66, 16), 26, 38, 4), BlackPlastic);
    cover.Add(Revolved({{0, 36}, {29, 36}, {27, 44, 5}, {17, 50, 6}, {0, 50}}), BlackPlastic);
    AddPlate(cover, Move(0, -25, 37.4f), 34, 8);
    Element& body = a.Add(Corpo);
    body.Add(Block(58, 52, 34, 9, 3), CastAluminium, Move(0, 0, -6));
    body.Add(Revolved({{0, -34}, {15, -34, 2}, {17, -20, 3}, {24, -8, 4}, {24, 0}, {0, 0}}),
             CastAluminium);
    for (const float x : {-15.0f, 15.0f}) {
        AddPort(body, Move(x, -25.5f, 10) * TurnX(90), thread, CastAluminium, 8);
    }
    AddPort(body, Move(28.5f, 0, 10) * TurnY(90), thread, CastAluminium, 8);
    a.Add(Component(Silenciador, 30, 12), Move(0, 0, -45));
    return a;
}

// Press buttons on a panel block.
Assembly Parking(const Parameters& p) {
    const int buttons = p.Says(u"dupla") || p.Says(u"emergência") ? 2 : 1;
    const float thread = p.Thread(16);
    const float width = 58.0f * static_cast<float>(buttons) + 14;
    Assembly a;
    a.pose = TurnZ(-26);
    Element& body = a.Add(Corpo);
    body.Add(Block(width, 56, 62, 9, 3), CastAluminium);
    body.Add(Block(width + 14, 62, 9, 8, 2), CastAluminium, Move(0, 0, 53));
    for (int i = 0; i < buttons; ++i) {
        const float x = 58 * (static_cast<float>(i) - static_cast<float>(buttons - 1) / 2);
        const bool red = p.Says(u"vermelho") || (!p.Says(u"preto") && i == 0);
        Element& knob = a.Add(Alavanca, Move(x, 0, 62));
        knob.Add(Cylinder(7, 22), Steel);
        knob.Add(Tube(15, 7, 5, 1.5f), Zinc);
        knob.Add(Extruded(EaredDisc(17, 8, 17, 5), 20, 36, 5), red ? RedPlastic : BlackPlastic);
        for (const float z : {18.0f, 40.0f}) {
            AddPort(body, Move(x + (z > 30 ? -13.0f : 13.0f), -27.5f, z) * TurnX(90),
                    std::min(thread, 20.0f), CastAluminium, 8);
        }
    }
    AddPort(body, Move(width / 2 - 0.5f, 0, 24) * TurnY(90), thread, CastAluminium, 8);
    a.Add(Component(Silenciador, 34, 12), Move(0, 0, -11));
    return a;
}

Assembly EngineBrake(const Parameters& p) {
    const float thread = p.Thread(12);
    Assembly a;
    a.pose = TurnZ(-28);
    Element& body = a.Add(Corpo);
    body.Add(Cylinder(23, 46, 4), Zinc);
    body.Add(Extruded(EaredDisc(24, 2, 33, 10), 40, 47, 1.5f,
                      {Moved(Circle(4), 33, 0), Moved(Circle(4), -33, 0)}),
             Zinc);
    AddPort(body, Around(240, 22.5f, 18), thread, Zinc, 9);
    AddPort(body, Around(320, 22.5f, 18), thread, Zinc, 9);
    if (p.Says(u"alavanca")) {
        Element& lever = a.Add(Alavanca, Move(0, 0, 52));
        lever.Add(Cylinder(5, 56, 1), Zinc, TurnY(22));
        lever.Add(Ball(12), BlackPlastic, TurnY(22) * Move(0, 0, 60));
        a.Add(Component(Coifa, 34, 20), Move(0, 0, 45));
    } else if (p.Says(u"pedal")) {
        a.Add(Component(Pedal, 96, 6), Move(8, 0, 82) * TurnY(-14));
        a.Add(Component(Tucho, 16, 34), Move(0, 0, 46));
        a.Add(Component(Coifa, 40, 24), Move(0, 0, 46));
    } else {
        Element& button = a.Add(Tucho, Move(0, 0, 46));
        button.Add(Cylinder(8, 18, 1), Steel);
        button.Add(Revolved({{0, 14}, {21, 14, 3}, {21, 22, 5}, {0, 27, 0}}), BlackPlastic);
    }
    if (p.Says(u"trava")) {
        body.Add(Component(ParafusoInterno, 8, 12), Around(280, 23, 34));
    }
    a.Add(Component(Silenciador, 26, 12), Move(0, 0, -11));
    return a;
}

Assembly Solenoid(const Parameters& p) {
    const float thread = p.Thread(12);
    const int ways = static_cast<int>(std::clamp(p.Number(u"vias", 3), 2.0f, 9.0f));
    const int coils = ways >= 5 ? 2 : 1;
    const float width = 40.0f + 34.0f * static_cast<float>(coils - 1);
    Assembly a;
    a.pose = TurnZ(-28);
    Element& body = a.Add(Corpo);
    body.Add(Block(width, 40, 34, 4, 1.5f), Aluminium);
    for (int i = 0; i < coils; ++i) {
        const float x = 36 * (static_cast<float>(i) - static_cast<float>(coils - 1) / 2);
        Element& coil = a.Add(Bobina, Move(x, 0, 40));
        coil.Add(Component(Bobina, 32, 38), {});
        a.Add(Component(Porca, 9), Move(x, 0, 78));
        body.Add(Cylinder(11, 8), Zinc, Move(x, 0, 33));
        if (p.Says(u"conector")) {
            coil.Add(Component(Conector, 17, 26), Move(0, -22, 20) * TurnX(80));
        } else if (p.Says(u"cabo")) {
            coil.Add(
                Bar(Smooth(
                        {{0, -20, 18}, {0, -34, 18}, {8, -46, 4}, {4, -52, -20}, {16, -60, -36}}),
                    2.6f, 12),
                Rubber);
        }
    }
    const int front = ways - 1;
    for (int i = 0; i < front; ++i) {
        const float x =
            (width - 12) * ((static_cast<float>(i) + 0.5f) / static_cast<float>(front) - 0.5f);
        AddPort(body, Move(x, -19.8f, 15) * TurnX(90),
                std::min(thread, (width - 14) / static_cast<float>(front) * 0.62f), Aluminium, 5);
    }
    AddPort(body, Move(width / 2 - 0.2f, 0, 15) * TurnY(90), thread, Aluminium, 5);
    return a;
}

constexpr FamilyModel models[] = {
    {u"valvula-pedal", PedalValve},       {u"valvula-sensora-carga", LoadSensing},
    {u"valvula-niveladora", Levelling},   {u"valvula-freio-mao", HandBrake},
    {u"valvula-estacionamento", Parking}, {u"valvula-freio-motor", EngineBrake},
    {u"valvula-solenoide", Solenoid},
};

}  // namespace

std::span<const FamilyModel> ControlValveModels() {
    return models;
}

}  // namespace render
