#include "components.h"
#include "models.h"
#include "shapes.h"

#include <algorithm>

// Brake chambers, boosters, air springs: what a diaphragm or a bellows moves.
namespace render {
namespace {

using enum ComponentKind;
using enum Material;

// Outside diameter in mm of a chamber whose diaphragm has `type` square inches.
float ChamberDiameter(float type) {
    return 25.4f * 2 * std::sqrt(std::clamp(type, 2.0f, 80.0f) / Pi) + 28;
}

// The pressed service half with rod, studs and boot; its rim lies at z = 0.
void AddServiceHalf(Assembly& a, float r, float stroke, bool yoke, bool disc) {
    const float depth = stroke * 0.62f + 16;
    if (yoke) {
        a.Add(Component(Forquilha, 30, 52), Move(0, 0, depth + 44));
    }
    if (!disc) {
        a.Add(Component(Porca, 15), Move(0, 0, depth + 36));
        Element& rod = a.Add(Haste, Move(0, 0, depth - 10));
        rod.Add(Cylinder(7.5f, 40), Steel);
        rod.Add(ThreadedRod(14, 40, 2, 1.5f), Zinc, Move(0, 0, 30));
    } else {
        Element& rod = a.Add(Haste, Move(0, 0, depth - 4));
        rod.Add(Cylinder(11, 22, 8), Steel);
    }
    Element& housing = a.Add(Carcaca);
    housing.Add(Revolved({{0, 2},
                          {r * 0.93f, 2},
                          {r * 0.93f, 5, 2},
                          {r * 0.84f, 8, 4},
                          {r * 0.72f, depth, 12},
                          {r * 0.22f, depth + 2, 3},
                          {r * 0.20f, depth + 6, 2},
                          {0, depth + 6}}),
                BlackPaint);
    housing.Add(Component(Coifa, disc ? 60.0f : 38.0f, disc ? 16.0f : 22.0f),
                Move(0, 0, depth + 3));
    for (const float side : {0.0f, 180.0f}) {
        housing.Add(Component(Prisioneiro, 14, 50), Ring(side, r * 0.46f, depth - 8));
        housing.Add(Component(Porca, 14), Ring(side, r * 0.46f, depth + 3));
    }
    a.Add(Component(Abracadeira, r * 2, 14), Move(0, 0, -7));
}

Assembly SingleChamber(const Parameters& p) {
    const float r = ChamberDiameter(p.Number(u"tipo", 24)) / 2;
    Assembly a;
    a.pose = TurnZ(-28) * TurnY(62);
    AddServiceHalf(a, r, p.Number(u"curso", 57), !p.Says(u"s/ forquilha"), false);
    const float deep = p.Says(u"longa") ? 10.0f : 0.0f;
    Element& cover = a.Add(Tampa);
    cover.Add(Revolved({{0, -30 - r * 0.1f - deep},
                        {r * 0.55f, -30 - r * 0.1f - deep, 8},
                        {r * 0.84f, -8, 8},
                        {r * 0.93f, -5, 2},
                        {r * 0.93f, -1},
                        {0, -1}}),
              BlackPaint);
    for (const float side : {60.0f, 240.0f}) {
        AddPort(cover, Around(side, r * 0.66f, -20), 16, Zinc, 12);
    }
    return a;
}

Assembly DoubleChamber(const Parameters& p) {
    const QString type = p.Text(u"tipo");
    Parameters spring;
    spring.Set(QStringLiteral("tipo"), type.section(u'/', 1, 1));
    const float r = ChamberDiameter(p.Number(u"tipo", 24)) / 2;
    const float big = ChamberDiameter(spring.Number(u"tipo", 30)) / 2 + 3;
    const float stroke = p.Number(u"curso", 64);
    Assembly a;
    a.pose = TurnZ(-24) * TurnY(72);
    const bool disc = p.Says(u"disco");
    AddServiceHalf(a, r, stroke, !disc && !p.Says(u"s/ forquilha"), disc);
    Element& flange = a.Add(Flange);
    flange.Add(Revolved({{0, -46},
                         {big * 0.92f, -46, 1},
                         {big * 0.92f, -38, 3},
                         {r * 0.8f, -28, 6},
                         {r * 0.84f, -8, 4},
                         {r * 0.93f, -5, 2},
                         {r * 0.93f, -1},
                         {0, -1}}),
               CastAluminium);
    for (const float side : {225.0f, 285.0f}) {
        AddPort(flange, Around(side, r * 0.8f, -22), 16, CastAluminium, 12);
    }
    a.Add(Component(Abracadeira, big * 2, 14), Move(0, 0, -53));
    Element& cover = a.Add(TampaSuperior, Move(0, 0, -50));
    const float depth = stroke * 0.9f + (p.Says(u"longa") ? 44.0f : 32.0f);
    cover.Add(Revolved({{0, -depth},
                        {big * 0.30f, -depth, 4},
                        {big * 0.34f, -depth + 6, 5},
                        {big * 0.74f, -depth + 4, 14},
                        {big * 0.88f, -14, 8},
                        {big * 0.93f, -6, 2},
                        {big * 0.93f, 0},
                        {0, 0}}),
              BlackPaint);
    a.Add(Component(ParafusoRegulagem, 16, 30), Move(0, 0, -50 - depth - 8) * Flip());
    AddPlate(cover, Around(255, big * 0.875f, -26), 40, 20);
    return a;
}

Assembly Diaphragm(const Parameters& p) {
    Assembly a;
    a.pose = TurnX(16);
    a.Add(Component(Diafragma, ChamberDiameter(p.Number(u"tipo", 24)) - 12,
                    p.Says(u"longa") ? 62.0f : 48.0f));
    if (p.Says(u"reforçado")) {
        a.elements.back().Add(Torus(ChamberDiameter(p.Number(u"tipo", 24)) / 2 - 9, 8), Rubber,
                              Move(0, 0, 48));
    }
    return a;
}

Assembly AirSpring(const Parameters& p) {
    const float r = p.Number(u"diâmetro", 270) / 2;
    const float h = p.Number(u"comprimento", 280);
    Assembly a;
    a.pose = TurnZ(-20);
    const bool plates = p.Says(u"prato");
    Element& cap = a.Add(Tampa, Move(0, 0, h));
    cap.Add(Cylinder(r * 0.66f, 8, 2), plates ? Zinc : BlackPaint);
    for (const float x : {-0.34f, 0.34f}) {
        cap.Add(Component(Prisioneiro, 12, 44), Move(x * r * 1.4f, 0, 4));
    }
    AddPort(cap, Move(0, r * 0.2f, 8), 22, Zinc, 8);
    Element& bag = a.Add(Coifa);
    // The lower bead rolls down over the piston.
    bag.Add(Revolved({{0, h * 0.26f},
                      {r * 0.72f, h * 0.26f, 14},
                      {r * 1.0f, h * 0.30f, r * 0.18f},
                      {r * 1.0f, h * 0.62f, r * 0.3f},
                      {r * 0.92f, h * 0.86f, r * 0.3f},
                      {r * 0.68f, h, 12},
                      {0, h}}),
            Rubber);
    for (const float z : {0.44f, 0.52f, 0.60f}) {
        bag.Add(Torus(r * 0.975f, 4), Rubber, Move(0, 0, h * z));
    }
    Element& piston = a.Add(Embolo);
    piston.Add(Revolved({{0, 0},
                         {r * 0.74f, 0, 4},
                         {r * 0.78f, h * 0.05f, 4},
                         {r * 0.62f, h * 0.16f, 10},
                         {r * 0.66f, h * 0.34f, 4},
                         {0, h * 0.34f}}),
               plates ? Zinc : BlackPlastic);
    return a;
}

// A stepped booster: air cylinder, hydraulic neck.
Assembly ClutchServo(const Parameters& p) {
    const float r = p.Number(u"diâmetro", 90) * 0.62f;
    Assembly a;
    a.pose = Lying(-30);
    a.Add(Component(Haste, 13, 96), Move(0, 0, r * 2.3f) * Move(0, 0, 2));
    a.Add(Component(Coifa, r * 0.72f, 34), Move(0, 0, r * 2.05f));
    Element& body = a.Add(Corpo);
    body.Add(Revolved({{0, 0},
                       {r * 0.92f, 0, 2},
                       {r * 0.92f, r * 0.5f, 3},
                       {r * 0.62f, r * 0.75f, 8},
                       {r * 0.52f, r * 1.5f, 5},
                       {r * 0.42f, r * 2.0f, 4},
                       {r * 0.36f, r * 2.1f, 2},
                       {0, r * 2.1f}}),
             CastAluminium);
    AddRibs(body, 6, r * 0.4f, r * 0.88f, r * 0.35f, r * 1.0f, 5, CastAluminium, 30);
    body.Add(Extruded(EaredDisc(r * 0.62f, 2, r * 0.95f, 14, 90), r * 1.25f, r * 1.25f + 12, 2,
                      {Moved(Circle(5.5f), 0, r * 0.95f), Moved(Circle(5.5f), 0, -r * 0.95f)}),
             CastAluminium);
    // The control valve rides on the body.
    body.Add(Cylinder(r * 0.36f, r * 1.2f, 5), CastAluminium, Move(-r * 0.85f, 0, r * 0.45f));
    AddPort(body, Move(-r * 0.85f, 0, r * 1.63f), p.Thread(14), CastAluminium);
    AddPort(body, Around(235, r * 0.5f, r * 1.1f), 12, CastAluminium, 16);
    AddPlate(body, Around(262, r * 0.92f, r * 0.28f) * TurnZ(90), 26, 12);
    Element& back = a.Add(Carcaca);
    back.Add(Revolved({{0, -r * 0.55f},
                       {r * 0.5f, -r * 0.55f, 6},
                       {r * 0.92f, -r * 0.3f, 10},
                       {r, -8, 3},
                       {r, 0, 1},
                       {0, 0}}),
             CastAluminium);
    AddCircle(back, Component(ParafusoInterno, 7, 10), 6, r * 0.93f, 2, 15);
    if (p.Says(u"indicador") || p.Says(u"sensor")) {
        Element& sensor = a.Add(Conector, Move(0, 0, -r * 0.5f) * Flip());
        sensor.Add(Hexagon(22, 8, true, true), p.Says(u"sensor") ? Brass : Zinc);
        if (p.Says(u"sensor")) {
            sensor.Add(Component(Conector, 20, 34), Move(0, 0, 8));
        } else {
            sensor.Add(Cylinder(6, 30, 3), RedPlastic, Move(0, 0, 6));
        }
    }
    return a;
}

Assembly BrakeServo(const Parameters& p) {
    const float r = p.Number(u"diâmetro", 8) * 25.4f / 2;
    const bool vacuum = p.Says(u"vácuo") || !p.Says(u"hidropneumático");
    const int shells = p.Says(u"duplo") ? 2 : 1;
    Assembly a;
    a.pose = Lying(-34);
    float z = 0;
    Element& front = a.Add(Carcaca);
    front.Add(Revolved({{0, 0},
                        {r, 0, 2},
                        {r, 8, 3},
                        {r * 0.93f, 12, 4},
                        {r * 0.80f, r * 0.5f, r * 0.16f},
                        {r * 0.4f, r * 0.62f, 10},
                        {r * 0.34f, r * 0.66f, 3},
                        {0, r * 0.66f}}),
              vacuum ? BlackPaint : GreyPaint);
    for (const float side : {0.0f, 180.0f}) {
        front.Add(Component(Prisioneiro, 10, 36), Ring(side, r * 0.27f, r * 0.62f));
    }
    AddPort(front, Move(-r * 0.6f, -r * 0.15f, r * 0.52f), 14, Zinc, 14);
    for (int i = 0; i < shells; ++i) {
        Element& back = a.Add(Carcaca, Move(0, 0, z));
        back.Add(Revolved({{0, -r * 0.42f},
                           {r * 0.36f, -r * 0.42f, 6},
                           {r * 0.86f, -r * 0.3f, r * 0.14f},
                           {r * 0.94f, -9, 4},
                           {r, -7, 2},
                           {r, 0, 2},
                           {0, 0}}),
                 vacuum ? BlackPaint : GreyPaint);
        back.Add(Torus(r * 0.99f, 7), Zinc, Move(0, 0, -1));
        z -= r * 0.40f;
    }
    a.Add(Component(Coifa, 46, 30), Move(0, 0, z - 30));
    a.Add(Component(Haste, 10, 40), Move(0, 0, z - 62));
    if (p.Says(u"mestre") || !vacuum) {
        Element& master = a.Add(CorpoCilindro, Move(0, 0, r * 0.64f));
        master.Add(Extruded(Link(0.1f, 26, 26), 0, 12, 2), CastIron);
        master.Add(Cylinder(19, 110, 3), CastIron);
        AddPort(master, Around(180, 18, 40), 12, CastIron, 12);
        AddPort(master, Around(180, 18, 82), 12, CastIron, 12);
    }
    return a;
}

constexpr FamilyModel models[] = {
    {u"camara-simples", SingleChamber}, {u"camara-dupla", DoubleChamber},
    {u"diafragma", Diaphragm},          {u"bolsa-ar", AirSpring},
    {u"servo-embreagem", ClutchServo},  {u"servofreio", BrakeServo},
};

}  // namespace

std::span<const FamilyModel> ChamberModels() {
    return models;
}

}  // namespace render
