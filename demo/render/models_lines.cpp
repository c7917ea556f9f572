#include "components.h"
#include "models.h"
#include "shapes.h"

#include <algorithm>

// Couplings, fittings and brackets.
namespace render {
namespace {

using enum ComponentKind;
using enum Material;

Assembly PalmCoupling(const Parameters& p, Material colour) {
    Assembly a;
    a.pose = TurnZ(-30);
    Element& body = a.Add(Corpo);
    // The head with its face of rubber, the claw beside it, the neck to the hose.
    body.Add(Revolved({{0, 0}, {30, 0, 3}, {33, 10, 4}, {33, 30, 4}, {0, 30}}), CastAluminium);
    body.Add(Extruded(Link(62, 30, 17), 3, 26, 5), CastAluminium, TurnZ(180));
    body.Add(Cylinder(16, 46, 3), CastAluminium, Move(-56, 0, 14) * TurnY(-90));
    body.Add(Hexagon(34, 12, true, true), CastAluminium, Move(-84, 0, 14) * TurnY(-90));
    AddPort(body, Move(-101, 0, 14) * TurnY(-90), p.Thread(16), CastAluminium, 7);
    body.Add(Extruded(Link(30, 22, 13), 18, 34, 4), CastAluminium, Move(10, 20, 0) * TurnZ(60));
    Element& seal = a.Add(Guarnicao, Move(0, 0, 29));
    seal.Add(Revolved({{9, 0}, {19, 0, 2}, {18, 8, 3}, {11, 9, 2}, {9, 7, 1}}), Rubber);
    seal.Add(Cylinder(9.4f, 2), Bore);
    Element& cover = a.Add(Tampa, Move(0, 0, 31));
    cover.Add(Extruded(EaredDisc(31, 1, 36, 16, 70), -2, 4, 1.5f, {Circle(21)}), colour);
    cover.Add(Block(58, 26, 7, 7, 2.5f), colour, Move(-38, 0, -4));
    cover.Add(Block(40, 9, 5, 2, 1.5f), colour, Move(-42, 0, 2));
    a.Add(Component(ParafusoFenda, 6, 9), Move(-22, 11, 34));
    a.Add(Component(ParafusoFenda, 6, 9), Move(-22, -11, 34));
    if (p.Says(u"filtro")) {
        a.Add(ElementoFiltrante, Move(0, 0, -26))
            .Add(Revolved({{0, 0}, {18, 0, 5}, {22, 6, 3}, {22, 28}, {0, 28}}), CastAluminium);
    } else if (p.Says(u"válvula")) {
        a.Add(ValvulaInterna, Move(0, 0, -14)).Add(Hexagon(34, 15, true, false), Brass);
    } else if (p.Says(u"suporte")) {
        a.Add(Base, Move(-50, 0, -20))
            .Add(Extruded(Rectangle(70, 54, 8), 0, 5, 1,
                          {Moved(Circle(5), -24, -16), Moved(Circle(5), -24, 16)}),
                 Zinc)
            .Add(Block(40, 5, 36, 2, 1), Zinc, Move(0, 0, 0));
    }
    return a;
}

Assembly RedCoupling(const Parameters& p) {
    return PalmCoupling(p, RedPaint);
}
Assembly YellowCoupling(const Parameters& p) {
    return PalmCoupling(p, YellowPaint);
}

// A fitting: a thread below, one to three tube ends.
struct FittingShape {
    float thread = 12;
    float tube = 8;
    bool pushIn = false;
};

Element TubeEnd(const FittingShape& s) {
    Element end;
    const float r = s.tube * 0.5f + 4;
    if (s.pushIn) {
        end.Add(Cylinder(r * 1.05f, s.tube * 1.5f, 1), BlackPlastic);
        end.Add(Tube(r * 0.92f, s.tube * 0.52f, 4, 1), s.tube > 11 ? RedPlastic : BluePlastic,
                Move(0, 0, s.tube * 1.5f - 1));
        end.Add(Cylinder(s.tube * 0.52f, 1), Bore, Move(0, 0, s.tube * 1.5f));
        return end;
    }
    end.Add(ThreadedRod(s.tube * 1.5f, s.tube * 0.7f, 1.5f, 0.3f), Brass);
    end.Add(Hexagon(s.tube * 2.0f, s.tube * 1.15f, true, true), Brass, Move(0, 0, s.tube * 0.5f));
    end.Add(Tube(s.tube * 0.78f, s.tube * 0.5f, s.tube * 0.3f, 0.5f), Brass,
            Move(0, 0, s.tube * 1.6f));
    end.Add(Cylinder(s.tube * 0.51f, 0.8f), Bore, Move(0, 0, s.tube * 1.62f));
    return end;
}

Assembly Fitting(const Parameters& p, bool pushIn) {
    const FittingShape s{p.Thread(12), p.Number(u"diâmetro", 8), pushIn};
    const float flats = std::max(s.thread * 1.3f, s.tube * 1.7f);
    Assembly a;
    const bool straight = !p.Says(u"cotovelo") && !p.Says(u"em T") && !p.Says(u"orientável");
    a.pose = straight ? Lying(-36) : TurnZ(26);
    Element& body = a.Add(Niple);
    body.Add(ThreadedRod(s.thread, s.thread * 0.8f, 1.5f, 1), Brass, Flip());
    body.Add(Hexagon(flats, flats * 0.42f, true, true), Brass);
    const float top = flats * 0.42f;
    const Element end = TubeEnd(s);
    if (straight) {
        body.Add(Cylinder(flats * 0.42f, 4), Brass, Move(0, 0, top - 1));
        body.Add(end, Move(0, 0, top + 1));
        return a;
    }
    const Material block = pushIn ? BlackPlastic : Brass;
    const float middle = top + s.tube * 0.85f;
    const float wide = s.tube * 1.9f;
    if (p.Says(u"orientável")) {
        body.Add(Cylinder(wide * 0.62f, wide, 1.5f), block, Move(0, 0, top + 0.5f));
        body.Add(Hexagon(flats, flats * 0.3f, true, true), Brass, Move(0, 0, top + wide));
        body.Add(end, Around(290, wide * 0.5f, top + wide * 0.5f));
        return a;
    }
    body.Add(Cylinder(wide * 0.5f, middle - top + wide * 0.3f), block, Move(0, 0, top - 1));
    body.Add(Ball(wide * 0.52f), block, Move(0, 0, middle + 0.2f * wide));
    body.Add(end, Around(320, wide * 0.32f, middle + 0.2f * wide));
    if (p.Says(u"em T")) {
        body.Add(end, Around(140, wide * 0.32f, middle + 0.2f * wide));
    }
    return a;
}

Assembly QuickFitting(const Parameters& p) {
    return Fitting(p, true);
}
Assembly Compression(const Parameters& p) {
    return Fitting(p, false);
}

Assembly Nipple(const Parameters& p) {
    const float d = p.Thread(16);
    Parameters other;
    other.Set(QStringLiteral("rosca"), p.Text(u"saída"));
    const float e = p.Says(u"duplo") ? d : other.Thread(12);
    const float flats = std::max(d, e) * 1.35f;
    Assembly a;
    a.pose = Lying(-36);
    Element& body = a.Add(Niple);
    body.Add(Hexagon(flats, flats * 0.42f, true, true), Brass);
    body.Add(ThreadedRod(d, d * 0.85f, 1.6f, 1), Brass, Flip());
    if (p.Says(u"Luva")) {
        body.Add(Cylinder(flats * 0.48f, flats * 0.5f, 1), Brass, Move(0, 0, flats * 0.4f));
        AddPort(body, Move(0, 0, flats * 0.88f), e, Brass, 6);
        return a;
    }
    body.Add(ThreadedRod(e, e * 0.85f, 1.6f, 1), Brass, Move(0, 0, flats * 0.42f));
    body.Add(Cylinder(e * 0.3f, 0.4f), Bore, Move(0, 0, flats * 0.42f + e * 0.85f - 0.2f));
    return a;
}

Assembly Muffler(const Parameters& p) {
    const float d = p.Thread(16);
    Assembly a;
    a.pose = Lying(-40);
    const bool sintered = p.Says(u"sinterizado");
    const float r = d * (p.Says(u"reforçado") ? 1.05f : 0.85f);
    if (sintered) {
        Element& body = a.Add(Silenciador);
        body.Add(Revolved({{0, 0},
                           {r * 0.7f, 0, 1},
                           {r * 0.7f, r * 1.6f, 2},
                           {r * 0.5f, r * 2.2f, r * 0.5f},
                           {0, r * 2.2f}}),
                 Bronze);
        body.Add(Hexagon(d * 1.4f, d * 0.5f, true, true), Brass, Move(0, 0, -d * 0.4f));
        body.Add(ThreadedRod(d, d * 0.8f, 1.5f, 1), Brass, Move(0, 0, -d * 0.3f) * Flip());
        return a;
    }
    Element body = Component(Silenciador, r * 2, r * 2.1f);
    Element& all = a.Add(Silenciador);
    all.Add(body, Move(0, 0, r * 2.1f) * Flip());
    if (p.Says(u"engate")) {
        all.Add(Cylinder(d * 0.6f, d * 1.1f, 2), BlackPlastic, Flip());
        all.Add(Torus(d * 0.6f, 3), Rubber, Move(0, 0, -d * 0.7f));
    } else {
        all.Add(ThreadedRod(d, d * 0.9f, 1.5f, 1), p.Says(u"reforçado") ? Zinc : BlackPlastic,
                Flip());
        all.Add(Hexagon(d * 1.35f, d * 0.4f, true, true),
                p.Says(u"reforçado") ? Zinc : BlackPlastic, Move(0, 0, -d * 0.1f));
    }
    return a;
}

Assembly TestPoint(const Parameters& p) {
    const float d = p.Thread(16);
    const float longer = p.Says(u"longa") ? 26.0f : 0.0f;
    Assembly a;
    a.pose = Lying(-36);
    Element& body = a.Add(Niple);
    body.Add(ThreadedRod(d, d * 0.8f, 1.5f, 1), Brass, Flip());
    body.Add(Hexagon(d * 1.4f, d * 0.5f, true, true), Brass);
    body.Add(Cylinder(d * 0.5f, 8 + longer, 1), Brass, Move(0, 0, d * 0.45f));
    const float top = d * 0.45f + 7 + longer;
    body.Add(ThreadedRod(16, 16, 1.8f, 1), Brass, Move(0, 0, top));
    if (p.Says(u"tampa") || p.Says(u"corrente")) {
        Element& cap = a.Add(TampaoPlastico, Move(0, 0, top + 4));
        cap.Add(Cylinder(11, 17, 3), p.Says(u"corrente") ? Brass : BlackPlastic);
        AddRibs(cap, 20, 10, 11.8f, 1, 13, 1.6f, p.Says(u"corrente") ? Brass : BlackPlastic);
        if (p.Says(u"corrente")) {
            for (int i = 0; i < 15; ++i) {
                const float t = static_cast<float>(i) / 14;
                cap.Add(Ball(2), Zinc, Move(11 + 12 * std::sin(Pi * t), -2, 10 - (top + 6) * t));
            }
        } else {
            cap.Add(
                Bar(Smooth(
                        {{10, 0, 3}, {17, 0, -4}, {17, 0, -top * 0.6f}, {d * 0.5f, 0, -top + 2}}),
                    1.6f, 10),
                BlackPlastic);
        }
    } else {
        body.Add(Cylinder(4, 0.4f), Bore, Move(0, 0, top + 15.8f));
    }
    return a;
}

Assembly Bracket(const Parameters& p) {
    const float w = p.Number(u"comprimento", 120);
    const Material metal = p.Says(u"zincado") ? YellowZinc : BlackPaint;
    const float t = 6;
    Assembly a;
    a.pose = TurnZ(-34);
    Element& bracket = a.Add(Base);
    const float foot = w * 0.62f;
    std::vector<Corners> footHoles{Moved(Circle(6), -w * 0.34f, 0), Moved(Circle(6), w * 0.34f, 0)};
    bracket.Add(Extruded(Rectangle(w, foot, 10), 0, t, 0.8f, footHoles), metal,
                Move(0, -foot / 2, 0));
    const float h = w * 0.8f;
    std::vector<Corners> holes;
    if (p.Says(u"câmara")) {
        holes = {Moved(Circle(8), -w * 0.3f, h * 0.1f), Moved(Circle(8), w * 0.3f, h * 0.1f),
                 Moved(Circle(w * 0.17f), 0, h * 0.1f)};
    } else if (p.Says(u"reservatório")) {
        holes = {Moved(Rectangle(w * 0.5f, 14, 7), 0, h * 0.2f),
                 Moved(Rectangle(w * 0.5f, 14, 7), 0, -h * 0.15f)};
    } else if (p.Says(u"secador")) {
        for (const float at : {90.0f, 210.0f, 330.0f}) {
            holes.push_back(Moved(Circle(6.5f), w * 0.3f * std::cos(Radians(at)),
                                  h * 0.1f + w * 0.26f * std::sin(Radians(at))));
        }
    } else {
        holes = {Moved(Circle(5.5f), -w * 0.28f, h * 0.25f),
                 Moved(Circle(5.5f), w * 0.28f, h * 0.25f), Moved(Circle(5.5f), 0, -h * 0.1f)};
    }
    bracket.Add(Extruded(Rectangle(w, h, 14), 0, t, 0.8f, holes), metal,
                Move(0, 0, h / 2) * TurnX(90));
    for (const float side : {-1.0f, 1.0f}) {
        Corners gusset{{0, 0}, {foot * 0.7f, 0, 2}, {0, h * 0.6f, 2}};
        bracket.Add(Extruded(gusset, 0, t * 0.8f, 0.5f), metal,
                    Placement{{0, -1, 0},
                              {0, 0, 1},
                              {-1, 0, 0},
                              {side * (w * 0.46f) + t * 0.4f, -t * 0.5f, t * 0.5f}});
    }
    return a;
}

Assembly Tool(const Parameters&) {
    // A puller: a cross bar, two jaws, a spindle.
    Assembly a;
    a.pose = TurnZ(-26) * TurnX(-14);
    Element& bar = a.Add(Alavanca, Move(0, 0, 120));
    bar.Add(Block(170, 26, 22, 6, 3), Zinc);
    bar.Add(Cylinder(19, 34, 3), Zinc, Move(0, 0, -6));
    for (const float side : {-1.0f, 1.0f}) {
        Element& jaw = a.Add(Forquilha, Move(side * 70, 0, 0));
        jaw.Add(Block(16, 22, 138, 4, 3), Zinc);
        jaw.Add(Block(34, 22, 13, 4, 3), Zinc, Move(-side * 12, 0, 0));
        jaw.Add(Hexagon(19, 10, true, true), Zinc, Move(0, -11, 130) * TurnX(90));
    }
    Element& spindle = a.Add(ParafusoRegulagem, Move(0, 0, 40));
    spindle.Add(ThreadedRod(17, 160, 2.6f, 2), BlackPaint);
    spindle.Add(Hexagon(26, 20, true, true), BlackPaint, Move(0, 0, 158));
    spindle.Add(Revolved({{0, -14}, {8, 0}, {8, 3}, {0, 3}}), Steel);
    return a;
}

constexpr FamilyModel models[] = {
    {u"mao-de-amigo-emergencia", RedCoupling},
    {u"mao-de-amigo-servico", YellowCoupling},
    {u"engate-rapido", QuickFitting},
    {u"conexao", Compression},
    {u"niple", Nipple},
    {u"silenciador", Muffler},
    {u"tomada-teste", TestPoint},
    {u"suporte", Bracket},
    {u"ferramenta", Tool},
};

}  // namespace

std::span<const FamilyModel> LineModels() {
    return models;
}

}  // namespace render
