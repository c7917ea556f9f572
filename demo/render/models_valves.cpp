#include "components.h"
#include "models.h"
#include "shapes.h"

#include <algorithm>

// Valves without a lever or pedal: what air alone commands.
namespace render {
namespace {

using enum ComponentKind;
using enum Material;

struct RelayShape {
    int outlets = 2;
    float thread = 16;
    float control = 14;  // thread of the port on the cover; 0: none
    float muffler = 16;  // mm; 0: none
    bool tall = false;   // a second, narrower storey under the cover
    int controlsAround = 0;
};

// A cast body with ports around, a bolted cover, the muffler below.
Assembly RelayLike(const RelayShape& shape) {
    const int outlets = std::clamp(shape.outlets, 0, 40);
    const float thread = shape.thread;
    const float r = 33 + 1.7f * static_cast<float>(std::min(outlets, 12)) + (thread - 16) * 0.6f;
    const float top = shape.tall ? 66 : 46;
    Assembly a;
    a.pose = TurnZ(18);

    Element& cover = a.Add(TampaSuperior, Move(0, 0, top));
    cover.Add(Extruded(EaredDisc(r * 0.96f, 4, r * 1.06f, 8, 45), 0, 9, 1.5f), CastAluminium);
    cover.Add(Revolved({{0, 8},
                        {r * 0.92f, 8},
                        {r * 0.84f, 18, 6},
                        {r * 0.50f, 25, 5},
                        {r * 0.46f, 28, 3},
                        {0, 28}}),
              CastAluminium);
    AddRibs(cover, 8, r * 0.45f, r * 0.86f, 7, 19, 3, CastAluminium, 22.5f);
    if (shape.control > 0) {
        AddPort(cover, Move(0, 0, 27), shape.control, CastAluminium, 8);
    }

    Element& screws = a.Add(ParafusoSextavado, Move(0, 0, top + 9));
    AddCircle(screws, Component(ParafusoSextavado, 8, 12), 4, r * 1.06f, 0.4f, 45);

    Element& body = a.Add(Corpo);
    body.Add(Revolved({{0, -18},
                       {r * 0.56f, -18, 1.5f},
                       {r * 0.56f, -6, 3},
                       {r * 0.90f, 2, 6},
                       {r * 0.90f, 36, 3},
                       {r * 0.96f, 38, 1.5f},
                       {r * 0.96f, top, 1},
                       {0, top}}),
             CastAluminium);
    body.Add(Extruded(EaredDisc(r * 0.9f, 4, r * 1.06f, 8, 45), top - 10, top - 0.5f, 1.5f),
             CastAluminium);
    AddRibs(body, 12, r * 0.4f, r * 0.90f, -10, 6, 2.6f, CastAluminium);
    // The outlets share the front and the sides; the supply port stands at the back.
    const auto count = static_cast<float>(outlets);
    const float widest = outlets <= 2 ? 90.0f : outlets <= 4 ? 47.0f : 32.0f;
    const float step = std::min(widest, 300 / std::max(count, 1.0f));
    const bool crowded = outlets > 4;
    for (int i = 0; i < outlets; ++i) {
        const float at = 248 + step * (static_cast<float>(i) - (count - 1) / 2);
        AddPort(body, Around(at, r * 0.89f, crowded ? (i % 2 ? 9.0f : 30.0f) : 18.0f),
                crowded ? std::min(thread, 5 * r / count) : thread, CastAluminium);
    }
    AddPort(body, Around(90, r * 0.89f, 18), std::max(thread, 22.0f), CastAluminium);
    for (int i = 0; i < shape.controlsAround; ++i) {
        AddPort(body, Around(218 + 60 * static_cast<float>(i), r * 0.95f, top - 15), 12,
                CastAluminium, 9);
    }
    AddPlate(body, Around(248, r * 0.955f, top - 4.5f), 16, 7);
    if (shape.muffler > 0) {
        a.Add(Component(Silenciador, r * 0.98f, shape.muffler), Move(0, 0, -16 - shape.muffler));
    }
    return a;
}

Assembly Relay(const Parameters& p) {
    const float thread = p.Thread(16);
    Assembly a = RelayLike({.outlets = static_cast<int>(p.Number(u"saídas", 2)),
                            .thread = thread,
                            .control = thread * 0.85f,
                            .muffler = p.Says(u"dreno")         ? 0.0f
                                       : p.Says(u"silenciador") ? 30.0f
                                                                : 16.0f});
    if (p.Says(u"dreno")) {
        a.Add(Component(Niple, 14, 26), Move(0, 0, -42));
    }
    return a;
}

Assembly RelayEmergency(const Parameters& p) {
    Assembly a = RelayLike({.outlets = 5, .thread = p.Thread(16), .control = 0, .tall = true});
    if (p.Says(u"alívio")) {
        Element& knob = a.Add(PinoComando, Move(0, 0, 92));
        knob.Add(Cylinder(5, 16, 1), Steel);
        knob.Add(Cylinder(15, 9, 3), BlackPlastic, Move(0, 0, 15));
    } else if (p.Says(u"regulagem")) {
        a.Add(Component(ParafusoRegulagem, 12, 26), Move(0, 0, 112));
        a.Add(Component(Porca, 12), Move(0, 0, 94));
    } else {
        a.Add(Component(TampaoPlastico, 18), Move(0, 0, 86));
    }
    return a;
}

Assembly TrailerControl(const Parameters& p) {
    Assembly a =
        RelayLike({.outlets = 2, .thread = p.Thread(16), .tall = true, .controlsAround = 2});
    if (p.Says(u"predominância")) {
        a.Add(Component(ParafusoRegulagem, 10, 20), Move(0, 0, -26) * Flip());
    }
    if (p.Says(u"corte")) {
        Element& side = a.Add(CorpoInterno);
        side.Add(Cylinder(17, 46, 3), CastAluminium, Around(340, 30, 44));
        side.Add(Hexagon(22, 8, false, true), Zinc, Around(340, 76, 44));
    }
    return a;
}

Assembly LiftAxle(const Parameters& p) {
    Assembly a = RelayLike({.outlets = 3, .thread = p.Thread(16), .control = 0});
    if (p.Says(u"manual")) {
        Element& knob = a.Add(Alavanca, Move(0, 0, 72));
        knob.Add(Cylinder(6, 14), Steel);
        knob.Add(Extruded(EaredDisc(15, 5, 15, 7), 12, 26, 4), BlackPlastic);
        return a;
    }
    if (p.Says(u"elétrica")) {
        a.Add(Component(Bobina, 38, 42), Move(0, 0, 72) * TurnZ(-20));
        a.Add(Component(Porca, 10), Move(0, 0, 114));
        return a;
    }
    a.Add(Component(TampaoPlastico, 20), Move(0, 0, 66));
    return a;
}

Assembly Distributor(const Parameters& p) {
    const int outlets = std::clamp(static_cast<int>(p.Number(u"saídas", 3)), 0, 12);
    const float thread = p.Thread(16);
    const float pitch = BossRadius(thread) * 2 + 6;
    const float length = pitch * static_cast<float>(std::max(outlets, 1)) + 14;
    Assembly a;
    a.pose = TurnZ(-24);
    Element& body = a.Add(Corpo);
    body.Add(Block(length, 44, 46, 7, 3), CastAluminium);
    for (int i = 0; i < outlets; ++i) {
        const float x = pitch * (static_cast<float>(i) - static_cast<float>(outlets - 1) / 2);
        AddPort(body, Move(x, -21.5f, 20) * TurnX(90), thread, CastAluminium);
        a.Add(Component(TampaSuperior, 34, 12), Move(x, 0, 45));
        body.Add(Component(ParafusoSextavado, 7, 9), Move(x, 0, 58));
    }
    AddPort(body, Move(length / 2 - 0.5f, 0, 23) * TurnY(90), thread, CastAluminium);
    AddPlate(body, Move(0, -22, 39) * TurnX(90), 26, 8);
    for (const float side : {-1.0f, 1.0f}) {
        body.Add(Extruded(Link(16, 12, 10), 0, 7, 1, {Moved(Circle(4.5f), 16, 0)}), CastAluminium,
                 Move(side * (length / 2 - 16), 18, 8) * TurnZ(90));
    }
    return a;
}

Assembly QuickRelease(const Parameters& p) {
    const float thread = p.Thread(16);
    const float r = 20 + thread * 0.55f;
    Assembly a;
    a.pose = TurnZ(24);
    Element& cover = a.Add(Tampa, Move(0, 0, 24));
    cover.Add(Extruded(Rectangle(r * 2.0f, r * 2.0f, r * 0.4f), 0, 8, 1.5f), Zinc);
    cover.Add(Cylinder(r * 0.7f, 15, 3), Zinc);
    AddPort(cover, Move(0, 0, 14), thread, Zinc, 9);
    AddCircle(cover, Component(ParafusoFenda, 5, 8), 4, r * 1.12f, 8.2f, 45);
    Element& body = a.Add(Corpo);
    body.Add(Extruded(Rectangle(r * 2.0f, r * 2.0f, r * 0.4f), 16, 23.6f, 1.5f), Zinc);
    body.Add(Revolved({{0, 0},
                       {r * 0.5f, 0, 2},
                       {r * 0.62f, 6, 3},
                       {r * 0.95f, 12, 3},
                       {r * 0.95f, 18},
                       {0, 18}}),
             Zinc);
    const int outlets = p.Says(u"lateral") ? 1 : 2;
    for (int i = 0; i < outlets; ++i) {
        AddPort(body, Around(i == 0 ? 246.0f : 10.0f, r * 0.62f, 8), thread, Zinc, r * 0.62f);
    }
    if (p.Says(u"silenciador")) {
        a.Add(Component(Silenciador, r * 1.2f, 22), Move(0, 0, -21));
    } else if (p.Says(u"tela")) {
        a.Add(Component(Tela, r * 0.9f, 10), Move(0, 0, -2) * Flip());
    }
    return a;
}

// A block with one spring housing for each circuit.
Assembly Protection(int circuits, float thread) {
    Assembly a;
    a.pose = TurnZ(-30);
    const int rows = circuits > 3 ? 2 : 1;
    const int columns = (circuits + rows - 1) / rows;
    const float pitch = 46;
    const float width = pitch * static_cast<float>(columns) + 16;
    const float depth = pitch * static_cast<float>(rows) + 12;
    Element& body = a.Add(Corpo);
    body.Add(Block(width, depth, 46, 9, 3.5f), CastAluminium);
    body.Add(Block(width + 8, depth + 8, 8, 12, 2), CastAluminium, Move(0, 0, 38));
    for (int i = 0; i < circuits; ++i) {
        const float x =
            pitch * (static_cast<float>(i % columns) - static_cast<float>(columns - 1) / 2);
        const float y =
            pitch * (static_cast<float>(i / columns) - static_cast<float>(rows - 1) / 2);
        Element& cap = a.Add(Tampa, Move(x, y, 46));
        cap.Add(Revolved({{0, 0},
                          {22, 0, 1},
                          {22, 6, 1},
                          {18.5f, 8, 2},
                          {17.5f, 32, 5},
                          {9, 35, 2},
                          {8.5f, 39, 2},
                          {0, 39}}),
                CastAluminium);
        AddRibs(cap, 6, 10, 19.5f, 6, 28, 2.5f, CastAluminium, 15);
        cap.Add(Component(TampaoPlastico, 9), Move(0, 0, 36));
        AddCircle(cap, Component(ParafusoFenda, 5, 8), 2, 27, 0,
                  45 + 90 * static_cast<float>(i % 2));
        AddPort(body, Move(x, -depth / 2 + 0.5f, 18) * TurnX(90), thread, CastAluminium);
    }
    AddPort(body, Move(width / 2 - 0.5f, 0, 19) * TurnY(90), thread, CastAluminium);
    AddPlate(body, Move(-width * 0.1f, -depth / 2 - 4, 42) * TurnX(90), 24, 5.5f);
    return a;
}

Assembly FourCircuits(const Parameters& p) {
    Assembly a = Protection(4, p.Thread(18));
    if (p.Says(u"retenção")) {
        a.Add(Component(Niple, 20, 34), Move(0, -52, 19) * TurnX(90) * Move(0, 0, 8));
    }
    return a;
}

Assembly TwoCircuits(const Parameters& p) {
    return Protection(std::clamp(static_cast<int>(p.Number(u"circuitos", 2)), 1, 12), p.Thread(18));
}

struct InlineShape {
    Material metal = Brass;
    float thread = 16;
    float spring = 34;  // mm of spring housing above the body; 0: none
    bool adjusting = false;
    bool through = true;  // a port at each side
    bool lying = false;
};

// A body turned from bar, with a spring housing screwed on.
Assembly Inline(const InlineShape& s) {
    const float d = s.thread;
    const float r = d * 0.5f + 7;
    Assembly a;
    a.pose = s.lying ? Lying(-32) : TurnZ(20);
    if (s.spring > 0) {
        Element& cover = a.Add(Tampa, Move(0, 0, r * 1.6f));
        cover.Add(Hexagon(r * 1.9f, r * 0.7f, true, true), s.metal);
        cover.Add(Revolved({{0, r * 0.5f},
                            {r * 0.88f, r * 0.5f},
                            {r * 0.84f, s.spring * 0.8f, 3},
                            {r * 0.5f, s.spring * 0.9f, 2},
                            {r * 0.46f, s.spring, 1},
                            {0, s.spring}}),
                  s.metal);
        if (s.adjusting) {
            a.Add(Component(Porca, d * 0.55f), Move(0, 0, r * 1.6f + s.spring));
            a.Add(Component(ParafusoRegulagem, d * 0.55f, 24),
                  Move(0, 0, r * 1.6f + s.spring + 14));
        }
    }
    Element& body = a.Add(Corpo);
    body.Add(Cylinder(r, r * 1.65f, 1.5f), s.metal);
    body.Add(Hexagon(r * 1.9f, r * 0.8f, true, true), s.metal, Move(0, 0, r * 0.1f));
    if (s.through) {
        AddPort(body, Around(250, r * 0.8f, r * 0.85f), d, s.metal, r * 0.55f);
        AddPort(body, Around(30, r * 0.8f, r * 0.85f), d, s.metal, r * 0.55f);
        body.Add(Cylinder(r * 0.7f, 5, 1), s.metal, Move(0, 0, -4));
    } else {
        body.Add(ThreadedRod(d, d * 0.95f, 1.8f, 1), s.metal, Flip());
    }
    return a;
}

Assembly Limiter(const Parameters& p) {
    Assembly a = Inline({.metal = Zinc, .thread = p.Thread(16), .spring = 46, .adjusting = true});
    if (p.Says(u"alívio")) {
        a.Add(Component(Silenciador, 20, 14), Move(0, 0, -16));
    }
    return a;
}

Assembly Overflow(const Parameters& p) {
    Assembly a = Inline({.metal = CastAluminium,
                         .thread = p.Thread(22),
                         .spring = 40,
                         .adjusting = !p.Says(u"s/ retorno")});
    if (p.Says(u"parcial")) {
        a.Add(Component(Bujao, 14), Move(0, 0, -4) * Flip());
    }
    return a;
}

Assembly Safety(const Parameters& p) {
    const float d = p.Thread(16);
    Assembly a = Inline({.metal = Brass, .thread = d, .spring = 36, .through = false});
    const float r = d * 0.5f + 7;
    // Blow-off holes around the housing, a ring to lift the valve.
    Element& holes = a.elements.front();
    for (int i = 0; i < 6; ++i) {
        holes.Add(Cylinder(2.6f, 0.6f), Bore,
                  Around(60.0f * static_cast<float>(i) + 10, r * 0.84f, 19));
    }
    Element& ring = a.Add(Haste, Move(0, 0, r * 1.6f + 34));
    ring.Add(Cylinder(3, 9, 0.5f), Steel);
    ring.Add(Torus(9, 2), Steel, Move(0, 0, 15) * TurnZ(20) * TurnX(90));
    return a;
}

Assembly Check(const Parameters& p) {
    const float d = p.Thread(16);
    const float r = d * 0.5f + 6;
    Assembly a;
    a.pose = Lying(-34);
    Element& body = a.Add(Corpo);
    const float length = d * 2.2f + (p.Says(u"filtro") ? 26.0f : 0.0f);
    body.Add(Cylinder(r * 0.98f, length, 1.5f), Brass);
    body.Add(Hexagon(r * 2.05f, length * 0.3f, true, true), Brass, Move(0, 0, length * 0.1f));
    Element& cover = a.Add(Tampa, Move(0, 0, length));
    cover.Add(Hexagon(r * 2.05f, r * 0.9f, true, true), Brass);
    AddPort(cover, Move(0, 0, r * 0.9f), d, Brass, 6);
    a.Add(Element{}).Add(ThreadedRod(d, d * 0.8f, 1.8f, 1), Brass, Flip());
    if (p.Says(u"dupla")) {
        AddPort(body, Around(250, r * 0.8f, length * 0.62f), d, Brass, r);
    }
    return a;
}

Assembly Drain(const Parameters& p) {
    const float d = p.Thread(22);
    const bool automatic = p.Says(u"automática");
    const Material metal = p.Says(u"latão") ? Brass : automatic ? CastAluminium : Zinc;
    Assembly a;
    a.pose = TurnZ(20) * TurnX(14);
    Element& body = a.Add(Corpo);
    body.Add(ThreadedRod(d, d * 0.8f, 1.8f, 1), metal, Move(0, 0, 14));
    body.Add(Hexagon(d * 1.4f, 9, true, true), metal, Move(0, 0, 6));
    if (automatic) {
        body.Add(
            Revolved(
                {{0, -34}, {d * 0.7f, -34, 3}, {d * 0.95f, -26, 4}, {d * 0.95f, 4, 3}, {0, 7}}),
            metal);
        AddPort(body, Around(300, d * 0.9f, -12), 10, metal, 8);
        a.Add(Component(Silenciador, d * 1.1f, 12), Move(0, 0, -45));
        return a;
    }
    body.Add(Cylinder(d * 0.52f, 12, 1.5f), metal, Move(0, 0, -5));
    Element& pin = a.Add(Haste, Move(0, 0, -14));
    pin.Add(Cylinder(2.5f, 10), Steel);
    pin.Add(Ball(4.2f), Steel);
    if (p.Says(u"cabo")) {
        pin.Add(Bar(Smooth({{0, 0, 0}, {0, 0, -16}, {10, -6, -34}, {34, -10, -40}, {60, -4, -36}}),
                    1.2f, 10),
                Steel);
        return a;
    }
    pin.Add(Torus(11, 2.2f), Steel, Move(0, 0, -12) * TurnZ(-30) * TurnX(90));
    return a;
}

constexpr FamilyModel models[] = {
    {u"valvula-rele", Relay},
    {u"valvula-rele-emergencia", RelayEmergency},
    {u"valvula-reboque", TrailerControl},
    {u"valvula-eixo-suspensor", LiftAxle},
    {u"valvula-distribuidora", Distributor},
    {u"valvula-descarga-rapida", QuickRelease},
    {u"valvula-protetora", FourCircuits},
    {u"valvula-protetora-dupla", TwoCircuits},
    {u"valvula-limitadora", Limiter},
    {u"valvula-transbordo", Overflow},
    {u"valvula-seguranca", Safety},
    {u"valvula-retencao", Check},
    {u"valvula-dreno", Drain},
};

}  // namespace

std::span<const FamilyModel> ValveModels() {
    return models;
}

}  // namespace render
