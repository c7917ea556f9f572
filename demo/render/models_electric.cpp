#include "components.h"
#include "models.h"
#include "shapes.h"

#include <algorithm>

// Gauges, switches, sensors and what else hangs on a cable.
namespace render {
namespace {

using enum ComponentKind;
using enum Material;

Assembly Gauge(const Parameters& p) {
    const float r = p.Number(u"diâmetro", 60) / 2;
    Assembly a;
    a.pose = TurnZ(-24) * TurnX(74);
    Element& gauge = a.Add(Corpo);
    gauge.Add(Cylinder(r * 0.94f, 34, 4), BlackPlastic, Move(0, 0, -34));
    gauge.Add(Revolved({{0, -3},
                        {r, -3, 1},
                        {r, 3, 1.5f},
                        {r * 0.9f, 4.5f, 0.6f},
                        {r * 0.87f, 1.5f},
                        {0, 1.5f}}),
              BlackPlastic);
    gauge.Add(Cylinder(r * 0.87f, 0.6f), Label, Move(0, 0, 1.4f));
    // The scale from 225 degrees round to -45.
    for (int i = 0; i <= 30; ++i) {
        const bool major = i % 5 == 0;
        const float at = 225 - 9 * static_cast<float>(i);
        gauge.Add(Block(r * (major ? 0.16f : 0.09f), r * (major ? 0.035f : 0.02f), 0.5f, 0.05f, 0),
                  i > 25 ? RedPlastic : Ink, TurnZ(at) * Move(r * 0.74f, 0, 2));
    }
    const int hands = p.Says(u"duplo") ? 2 : 1;
    for (int i = 0; i < hands; ++i) {
        gauge.Add(Extruded(Link(r * 0.66f, r * 0.05f, r * 0.012f), 0, 0.6f),
                  i == 0 ? Ink : RedPlastic,
                  Move(0, 0, 2.6f + static_cast<float>(i) * 0.8f) *
                      TurnZ(150 - 70 * static_cast<float>(i)));
    }
    gauge.Add(Cylinder(r * 0.1f, 2.6f, 0.6f), Ink, Move(0, 0, 2));
    for (int i = 0; i < hands; ++i) {
        gauge.Add(Hexagon(14, 16, true, true), Brass,
                  Move(12 * static_cast<float>(i * 2 - hands + 1), 0, -48));
    }
    return a;
}

Assembly PressureSwitch(const Parameters& p) {
    const float d = p.Thread(12);
    Assembly a;
    a.pose = Lying(-38);
    Element& body = a.Add(Corpo);
    body.Add(ThreadedRod(d, d * 0.95f, 1.5f, 1), Brass, Flip());
    body.Add(Hexagon(26, 12, true, true), Brass);
    body.Add(Cylinder(12, 10, 1), Brass, Move(0, 0, 11));
    body.Add(Revolved({{0, 18}, {12.5f, 18, 1}, {12.5f, 34, 2}, {9, 37, 1}, {0, 37}}),
             p.Says(u"estacionamento") ? RedPlastic
             : p.Says(u"baixa")        ? YellowPlastic
                                       : BlackPlastic);
    for (const float x : {-4.5f, 4.5f}) {
        body.Add(Block(1.2f, 6, 12, 0.3f, 0.2f), Brass, Move(x, 0, 36));
    }
    return a;
}

Assembly Modulator(const Parameters& p) {
    const float thread = p.Thread(22);
    const int twins = p.Says(u"duplo") ? 2 : 1;
    Assembly a;
    a.pose = TurnZ(-30);
    const float w = 84.0f * static_cast<float>(twins);
    Element& body = a.Add(Corpo);
    body.Add(Block(w, 70, 56, 12, 4), CastAluminium);
    body.Add(Block(w + 10, 76, 9, 12, 2), CastAluminium, Move(0, 0, 47));
    for (int i = 0; i < twins; ++i) {
        const float x = 84 * (static_cast<float>(i) - static_cast<float>(twins - 1) / 2);
        Element& coil = a.Add(Bobina, Move(x, 0, 56));
        coil.Add(Block(76, 66, 34, 10, 4), BlackPlastic);
        coil.Add(Block(60, 50, 42, 9, 4), BlackPlastic);
        AddCircle(coil, Component(ParafusoInterno, 6, 9), 4, 44, 33.6f, 41);
        for (const float side : {-1.0f, 1.0f}) {
            body.Add(Cylinder(24, 10, 2), CastAluminium, Move(x + side * 19, -34, 22) * TurnX(90));
        }
        AddPort(body, Move(x - 19, -43.9f, 22) * TurnX(90), thread, CastAluminium, 7);
        AddPort(body, Move(x + 19, -43.9f, 22) * TurnX(90), thread, CastAluminium, 7);
        a.Add(Component(Silenciador, 44, p.Says(u"silenciador") ? 34.0f : 14.0f),
              Move(x, 0, p.Says(u"silenciador") ? -32.0f : -12.0f));
    }
    Element& plug = a.Add(Conector);
    plug.Add(Component(Conector, p.Says(u"baioneta") ? 34.0f : 25.0f, 36),
             Move(w / 2 - 8, 0, 74) * TurnY(90));
    return a;
}

Assembly SpeedSensor(const Parameters& p) {
    const float cable = p.Number(u"cabo", 1000);
    Assembly a;
    a.pose = TurnZ(-18);
    const float r = 50 + cable * 0.012f;
    Element& sensor = a.Add(Nucleo, Move(-r * 0.7f, -r * 1.05f, 8.5f) * TurnZ(-6) * TurnY(90));
    const bool angled = p.Says(u"angular");
    sensor.Add(Cylinder(8, 46, 1), Steel);
    sensor.Add(Cylinder(8.4f, 20, 1), BlackPlastic, Move(0, 0, -18));
    sensor.Add(Cylinder(4, 2.4f, 0.3f), SpringSteel, Move(0, 0, 45));
    if (angled) {
        sensor.Add(Cylinder(7, 22, 2), BlackPlastic, Move(0, 0, -12) * TurnX(90));
    }
    if (p.Says(u"bucha")) {
        sensor.Add(Tube(9.4f, 8, 26, 0.5f), Brass, Move(0, 0, 14));
    }
    // The cable lies in loops on the floor.
    const int loops = std::clamp(static_cast<int>(cable / 420), 1, 5);
    std::vector<Vec3> way;
    const Vec3 start =
        angled ? Vec3{-r * 0.82f, -r * 1.24f, 5} : Vec3{-r * 0.7f - 18, -r * 1.04f, 8};
    way.push_back(start);
    way.push_back({-r * 1.25f, -r * 0.8f, 4});
    for (int i = 0; i <= loops * 12; ++i) {
        const float at = Radians(200 - 30 * static_cast<float>(i));
        const float reach = r * (1 - 0.03f * static_cast<float>(i % 24) / 12);
        way.push_back({reach * std::cos(at), reach * 0.92f * std::sin(at),
                       3 + 5.2f * static_cast<float>(i) / 12});
    }
    const Vec3 end = way.back();
    way.push_back(end + Vec3{10, 34, 2});
    way.push_back(end + Vec3{46, 40, -2});
    Element& lead = a.Add(Chicote);
    lead.Add(Bar(Smooth(way, 4), 2.7f, 12), Rubber);
    lead.Add(Component(Conector, 19, 32), Move(way.back()) * TurnY(90));
    return a;
}

Assembly ControlUnit(const Parameters& p) {
    const bool six = p.Says(u"6S");
    const float w = six ? 176.0f : p.Says(u"4M") ? 158.0f : 136.0f;
    Assembly a;
    a.pose = TurnZ(-30);
    Element& box = a.Add(Carcaca);
    box.Add(Block(w, 116, 34, 9, 4), p.Says(u"24") ? BlackPaint : BlackPlastic);
    box.Add(Block(w * 0.93f, 96, 40, 9, 3), BlackPlastic);
    for (int i = 0; i < 9; ++i) {
        box.Add(Block(w * 0.42f, 3, 44, 1, 1), BlackPlastic,
                Move(w * 0.2f, -38 + 9.5f * static_cast<float>(i), 0));
    }
    AddPlate(box, Move(-w * 0.22f, 4, 39.4f), w * 0.38f, 54);
    for (const float x : {-1.0f, 1.0f}) {
        box.Add(Extruded(Rectangle(30, 40, 8), 0, 7, 1.5f, {Circle(4.5f)}), BlackPlastic,
                Move(x * (w / 2 + 8), 30, 0));
        box.Add(Extruded(Rectangle(30, 40, 8), 0, 7, 1.5f, {Circle(4.5f)}), BlackPlastic,
                Move(x * (w / 2 + 8), -30, 0));
    }
    const int plugs = six ? 4 : p.Says(u"4M") ? 3 : 2;
    Element& connectors = a.Add(Conector);
    for (int i = 0; i < plugs; ++i) {
        const float pitch = w * 0.86f / static_cast<float>(plugs);
        const float x = pitch * (static_cast<float>(i) - static_cast<float>(plugs - 1) / 2);
        const float width = pitch * 0.84f;
        const Placement at = Move(x, -57, 18) * TurnX(90);
        connectors.Add(
            Extruded(Rectangle(width, 22, 2), 0, 16, 0.8f, {Rectangle(width - 4, 18, 1)}),
            i == 0 ? GreyPlastic : BlackPlastic, at);
        for (int k = 0; k < 6; ++k) {
            for (const float row : {-4.0f, 4.0f}) {
                connectors.Add(Block(1.4f, 1.4f, 11, 0.2f, 0), Brass,
                               at * Move((width - 8) * (static_cast<float>(k) / 5 - 0.5f), row, 0));
            }
        }
    }
    if (p.Says(u"diagnóstico")) {
        connectors.Add(Component(Conector, 22, 22), Move(w / 2 - 4, 0, 18) * TurnY(90));
    }
    return a;
}

Assembly SolenoidCoil(const Parameters& p) {
    const float bore = std::max(p.Number(u"diâmetro", 13), 4.0f);
    Assembly a;
    a.pose = TurnZ(-34);
    Element& coil = a.Add(Bobina);
    coil.Add(Component(Bobina, bore * 2.9f));
    if (p.Says(u"conector")) {
        coil.Add(Component(Conector, 17, 28), Move(0, -bore * 2.1f, bore * 1.6f) * TurnX(80));
    } else if (p.Says(u"cabo")) {
        coil.Add(Bar(Smooth({{0, -bore * 2, 20},
                             {0, -bore * 2.6f, 19},
                             {14, -bore * 3.4f, 8},
                             {40, -bore * 3.6f, 3},
                             {74, -bore * 3.0f, 3},
                             {96, -bore * 1.4f, 3}}),
                     2.8f, 12),
                 p.Says(u"24") ? Rubber : RedPlastic);
    }
    return a;
}

Assembly Horn(const Parameters& p) {
    const float length = p.Number(u"comprimento", 500);
    Assembly a;
    a.pose = Lying(-36);
    const int horns = p.Says(u"dupla") ? 2 : 1;
    for (int i = 0; i < horns; ++i) {
        const float l = length * (i == 0 ? 1.0f : 0.76f);
        Element& horn = a.Add(Corpo, Move(0, -static_cast<float>(i) * 118, 0));
        horn.Add(Revolved({{0, 0},
                           {17, 0, 2},
                           {13, l * 0.08f, 6},
                           {17, l * 0.55f, 60},
                           {30, l * 0.86f, 50},
                           {58, l, 2},
                           {54, l, 1},
                           {26, l * 0.86f, 40},
                           {0, l * 0.8f}}),
                 Zinc);
        horn.Add(Cylinder(34, 26, 4), Zinc, Move(0, 0, -26));
        horn.Add(Cylinder(36, 6, 1.5f), Zinc, Move(0, 0, -18));
        AddCircle(horn, Component(ParafusoFenda, 4, 5), 6, 30, 0, 15);
        horn.Add(Block(20, 34, 12, 3, 1), BlackPaint, Move(18, 0, l * 0.3f));
        AddPort(horn, Flip() * Move(0, 0, 26), 10, Zinc, 8);
        if (p.Says(u"V")) {
            horn.Add(Component(Bobina, 30, 34), Around(180, 32, -13));
        }
    }
    return a;
}

constexpr FamilyModel models[] = {
    {u"manometro", Gauge},
    {u"interruptor-pressao", PressureSwitch},
    {u"modulador-abs", Modulator},
    {u"sensor-rotacao", SpeedSensor},
    {u"unidade-abs", ControlUnit},
    {u"bobina", SolenoidCoil},
    {u"buzina", Horn},
};

}  // namespace

std::span<const FamilyModel> ElectricModels() {
    return models;
}

}  // namespace render
