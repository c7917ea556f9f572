#include "components.h"
#include "models.h"
#include "shapes.h"

#include <algorithm>

// Cylinders of brake, clutch, door and gearbox.
namespace render {
namespace {

using enum ComponentKind;
using enum Material;

Assembly Master(const Parameters& p) {
    const float bore = p.Number(u"diâmetro", 25.4f);
    const float r = bore * 0.5f + 8;
    const bool twin = p.Says(u"duplo");
    const float length = bore * (twin ? 6.0f : 4.2f);
    Assembly a;
    a.pose = Lying(-26);
    Element& body = a.Add(CorpoCilindro);
    body.Add(Revolved({{0, 0},
                       {r * 0.9f, 0, 2},
                       {r * 0.9f, length * 0.16f, 2},
                       {r, length * 0.2f, 3},
                       {r, length - 8, 3},
                       {r * 0.7f, length, 3},
                       {0, length}}),
             CastIron);
    body.Add(Hexagon(r * 1.3f, 9, false, true), Zinc, Move(0, 0, length - 1));
    body.Add(Extruded(Rectangle(r * 2, r * 3.4f, r * 0.7f), 0, 11, 2,
                      {Moved(Circle(5.5f), 0, r * 1.28f), Moved(Circle(5.5f), 0, -r * 1.28f)}),
             CastIron, Move(0, 0, length * 0.22f));
    const int circuits = twin ? 2 : 1;
    const bool tank = p.Says(u"reservatório") || p.Says(u"sensor");
    for (int i = 0; i < circuits; ++i) {
        const float z = length * (twin ? 0.46f + 0.30f * static_cast<float>(i) : 0.62f);
        AddPort(body, Around(268, r * 0.95f, z), 12, CastIron, 10);
        body.Add(Cylinder(r * 0.62f, 14, 2), CastIron, Around(180, r * 0.86f, z));
        if (!tank) {
            body.Add(Component(TampaoPlastico, r * 0.7f), Around(180, r * 0.86f + 11, z));
        }
    }
    if (tank) {
        const float w = length * (twin ? 0.62f : 0.42f);
        Element& reservoir =
            a.Add(TampaoPlastico, Move(-r - 12, 0, length * (twin ? 0.61f : 0.62f)) * TurnY(-90));
        reservoir.Add(Block(w, r * 2.1f, 34, 8, 5), WhitePlastic);
        reservoir.Add(Block(w * 1.01f, r * 2.12f, 3, 8, 1), WhitePlastic, Move(0, 0, 18));
        reservoir.Add(Cylinder(17, 14, 2), BlackPlastic, Move(0, 0, 33));
        AddRibs(reservoir, 24, 16, 18, 34, 45, 1.6f, BlackPlastic);
        if (p.Says(u"sensor")) {
            reservoir.Add(Component(Conector, 17, 24), Move(0, 0, 45));
        }
    }
    a.Add(Component(Haste, 9, 70), Move(0, 0, -52));
    a.Add(Component(Coifa, r * 1.5f, 34), Move(0, 0, -32));
    return a;
}

Assembly Wheel(const Parameters& p) {
    const float bore = p.Number(u"diâmetro", 25.4f);
    const float r = bore * 0.5f + 6;
    const float length = bore * 1.5f + 24;
    Assembly a;
    a.pose = TurnZ(p.Says(u"direito") ? 28.0f : -28.0f) * TurnY(90) * Move(0, 0, -length / 2);
    for (const bool top : {true, false}) {
        const Placement end = top ? Move(0, 0, length) : Flip();
        a.Add(Component(Coifa, r * 1.5f, 14), end * Move(0, 0, -1));
        Element& tappet = a.Add(Tucho, end * Move(0, 0, 9));
        tappet.Add(Extruded(Circle(bore * 0.26f), 0, 14, 1), Steel);
        tappet.Add(Block(3.5f, bore * 0.5f, 3, 0.2f, 0), Bore, Move(0, 0, 11.2f));
    }
    Element& body = a.Add(CorpoCilindro);
    body.Add(Revolved({{0, 0},
                       {r, 0, 1.5f},
                       {r, 8, 2},
                       {r * 0.92f, 11, 3},
                       {r * 0.92f, length - 11, 3},
                       {r, length - 8, 2},
                       {r, length, 1.5f},
                       {0, length}}),
             CastIron);
    body.Add(Block(r * 1.5f, r * 2.4f, r * 0.9f, 4, 2), CastIron,
             Move(0, r * 0.5f, length * 0.5f) * TurnX(-90));
    AddPort(body, Around(180, r * 0.9f, length * 0.5f), 10, CastIron, 9);
    Element& bleeder = a.Add(Bujao, Around(215, r * 0.88f, length * 0.72f));
    bleeder.Add(Hexagon(8, 7, true, true), Zinc);
    bleeder.Add(Cylinder(2.4f, 14, 1), Zinc);
    bleeder.Add(Cylinder(3.4f, 6, 2), Rubber, Move(0, 0, 11));
    if (p.Says(u"traseiro")) {
        AddPort(body, Around(180, r * 0.9f, length * 0.26f), 10, CastIron, 9);
    }
    return a;
}

Assembly Clutch(const Parameters& p) {
    const float bore = p.Number(u"diâmetro", 19.05f);
    const float r = bore * 0.5f + 7;
    const bool master = !p.Says(u"auxiliar");
    const float length = bore * (master ? 5.2f : 3.6f);
    Assembly a;
    a.pose = Lying(-28);
    a.Add(Component(Haste, 8, master ? 90.0f : 70.0f), Move(0, 0, length + 16));
    a.Add(Component(Coifa, r * 1.5f, 28), Move(0, 0, length - 1));
    Element& body = a.Add(CorpoCilindro);
    body.Add(
        Revolved(
            {{0, 0}, {r * 0.8f, 0, 3}, {r * 0.9f, 8, 3}, {r * 0.9f, length, 1.5f}, {0, length}}),
        CastAluminium);
    body.Add(Extruded(Rectangle(r * 2, r * 3.3f, r * 0.7f), 0, 9, 1.5f,
                      {Moved(Circle(4.5f), 0, r * 1.25f), Moved(Circle(4.5f), 0, -r * 1.25f)}),
             CastAluminium, Move(0, 0, length * 0.66f));
    AddPort(body, Around(master ? 180.0f : 232.0f, r * 0.86f, length * 0.3f), 12, CastAluminium,
            12);
    if (master) {
        body.Add(Cylinder(7, 22, 2), BlackPlastic, Around(180, r, length * 0.52f));
    } else {
        body.Add(Component(Bujao, 9), Around(180, r * 0.9f, length * 0.2f));
    }
    if (p.Says(u"interruptor")) {
        body.Add(Component(Conector, 17, 30), Around(270, r * 0.85f, length * 0.36f));
    } else if (p.Says(u"mangueira")) {
        Element& hose = a.Add(Niple);
        hose.Add(
            Bar(Smooth({{0, 0, 2}, {0, 0, -24}, {-20, -20, -52}, {-8, -50, -84}, {30, -56, -96}}),
                5, 18),
            Rubber);
        hose.Add(Hexagon(15, 12, true, true), Zinc, Move(0, 0, -10));
    }
    return a;
}

struct AirShape {
    float bore = 50;
    float stroke = 40;
    Material metal = CastAluminium;
    bool ties = false;  // held together by four tie rods
    float thread = 12;
    ComponentKind end = Forquilha;
    bool hasEnd = true;
    float rod = 0;  // mm showing; 0: a little
};

Assembly AirCylinder(const AirShape& s) {
    const float r = s.bore * 0.5f + 5;
    const float length = s.stroke + s.bore * 0.9f + 20;
    const float rod = std::max(7.0f, s.bore * 0.16f);
    const float shown = s.rod > 0 ? s.rod : 26;
    Assembly a;
    a.pose = Lying(-28);
    if (s.hasEnd && s.end == Forquilha) {
        a.Add(Component(Forquilha, rod * 1.9f), Move(0, 0, length + shown - 4));
    } else if (s.hasEnd) {
        Element& joint = a.Add(Esfera, Move(0, 0, length + shown));
        joint.Add(Cylinder(rod * 0.6f, 14), Zinc, Move(0, 0, -6));
        joint.Add(Extruded(Circle(rod * 1.2f), -rod * 0.55f, rod * 0.55f, 1, {Circle(rod * 0.55f)}),
                  Zinc, Move(0, 0, 14 + rod * 0.7f) * TurnX(90) * TurnZ(90));
        joint.Add(Ball(rod * 0.72f), Steel, Move(0, 0, 14 + rod * 0.7f));
    }
    a.Add(Component(Porca, rod), Move(0, 0, length + shown - 8));
    Element& stem = a.Add(Haste, Move(0, 0, length));
    stem.Add(Cylinder(rod * 0.5f, shown + 4, 0.5f), Steel);
    Element& front = a.Add(TampaSuperior, Move(0, 0, length - s.bore * 0.34f));
    const float head = s.bore * 0.34f;
    if (s.ties) {
        front.Add(Block(r * 1.9f, r * 1.9f, head, 5, 2), s.metal);
    } else {
        front.Add(Cylinder(r * 0.98f, head, 3), s.metal);
    }
    front.Add(Cylinder(rod * 1.1f, head + 8, 1.5f), s.metal);
    AddPort(front,
            s.ties ? Move(-r * 0.94f, 0, head / 2) * TurnY(-90) : Around(180, r * 0.94f, head / 2),
            s.thread, s.metal, 5);
    Element& body = a.Add(CorpoCilindro);
    body.Add(Cylinder(r * 0.88f, length - head * 1.2f), s.ties ? Aluminium : s.metal,
             Move(0, 0, head * 0.6f));
    if (s.ties) {
        Element& rods = a.Add(Prisioneiro);
        Element one;
        one.Add(Cylinder(s.bore * 0.05f, length), Zinc);
        one.Add(Component(Porca, s.bore * 0.1f), Move(0, 0, length));
        AddCircle(rods, one, 4, r * 1.12f, 0, 45);
    }
    Element& back = a.Add(TampaInferior);
    if (s.ties) {
        back.Add(Block(r * 1.9f, r * 1.9f, head, 5, 2), s.metal);
        AddPort(back, Move(-r * 0.94f, 0, head / 2) * TurnY(-90), s.thread, s.metal, 5);
        back.Add(Extruded(Link(r * 0.8f, r * 0.5f, r * 0.36f), -r * 0.25f, r * 0.25f, 2,
                          {Moved(Circle(r * 0.18f), r * 0.8f, 0)}),
                 s.metal, TurnX(90) * TurnZ(-90));
    } else {
        back.Add(Cylinder(r, head, 3), s.metal);
    }
    return a;
}

Assembly ExhaustBrake(const Parameters& p) {
    return AirCylinder({.bore = p.Number(u"diâmetro", 35),
                        .stroke = p.Number(u"curso", 40),
                        .metal = Zinc,
                        .thread = 10,
                        .end = p.Says(u"rótula") ? Esfera : Forquilha,
                        .hasEnd = p.Says(u"forquilha") || p.Says(u"rótula")});
}

Assembly Door(const Parameters& p) {
    Assembly a = AirCylinder({.bore = p.Number(u"diâmetro", 50),
                              .stroke = p.Number(u"curso", 160),
                              .ties = true,
                              .thread = 14,
                              .end = p.Says(u"rótula") ? Esfera : Forquilha,
                              .rod = 44});
    if (p.Says(u"amortecimento")) {
        a.elements.back().Add(Component(ParafusoInterno, 7, 10),
                              Around(270, p.Number(u"diâmetro", 50) * 0.56f, 8));
    }
    return a;
}

Assembly DifferentialLock(const Parameters& p) {
    const float bore = p.Number(u"diâmetro", 55);
    Assembly a = AirCylinder(
        {.bore = bore, .stroke = p.Number(u"curso", 10), .thread = 12, .hasEnd = false, .rod = 40});
    Element& flange = a.Add(Flange, Move(0, 0, bore * 0.7f));
    const float reach = bore * 0.78f;
    flange.Add(
        Extruded(EaredDisc(bore * 0.6f, 3, reach, 10), 0, 9, 1.5f,
                 {Moved(Circle(4.5f), reach, 0), Moved(Circle(4.5f), -reach / 2, reach * 0.866f),
                  Moved(Circle(4.5f), -reach / 2, -reach * 0.866f)}),
        CastAluminium, TurnZ(180));
    if (p.Says(u"garfo")) {
        Element& fork = a.Add(Forquilha, Move(0, 0, bore * 0.9f + 62));
        fork.Add(Component(Forquilha, 34));
    } else if (p.Says(u"interruptor")) {
        flange.Add(Component(Conector, 19, 34), Around(250, bore * 0.5f, 22));
    }
    return a;
}

Assembly Gearbox(const Parameters& p) {
    const float bore = p.Number(u"diâmetro", 60);
    Assembly a = AirCylinder({.bore = bore,
                              .stroke = p.Says(u"multiplicador") ? 34.0f
                                        : p.Says(u"tomada")      ? 14.0f
                                                                 : 24.0f,
                              .ties = p.Says(u"multiplicador"),
                              .thread = 12,
                              .hasEnd = p.Says(u"tomada"),
                              .rod = 34});
    if (p.Says(u"sensor")) {
        a.elements.back().Add(Component(Conector, 19, 34), Around(270, bore * 0.5f, 10));
    }
    return a;
}

constexpr FamilyModel models[] = {
    {u"cilindro-mestre", Master},    {u"cilindro-roda", Wheel},
    {u"cilindro-embreagem", Clutch}, {u"cilindro-freio-motor", ExhaustBrake},
    {u"cilindro-porta", Door},       {u"cilindro-bloqueio", DifferentialLock},
    {u"cilindro-cambio", Gearbox},
};

}  // namespace

std::span<const FamilyModel> CylinderModels() {
    return models;
}

}  // namespace render
