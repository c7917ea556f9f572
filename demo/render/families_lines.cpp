#include "components.h"
#include "families.h"
#include "shapes.h"

#include <algorithm>

// Couplings, fittings, hoses, tubes and brackets.
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

// A hose lying on the floor in a long bend, a fitting at each end.
Assembly BrakeHose(const Parameters& p) {
    const float length = p.Number(u"comprimento", 600);
    const float d = p.Thread(12);
    const float r = 6.5f + d * 0.22f;
    const float k = length / 4.6f;
    Assembly a;
    a.pose = TurnZ(-12);
    std::vector<Vec3> way{
        {-k * 1.15f, -k * 0.42f, r},       {-k * 0.75f, -k * 0.40f, r}, {k * 0.1f, -k * 0.20f, r},
        {k * 0.62f, k * 0.18f, r},         {k * 0.30f, k * 0.62f, r},   {-k * 0.35f, k * 0.52f, r},
        {-k * 0.30f, k * 0.05f, r * 2.6f}, {k * 0.45f, -k * 0.42f, r},  {k * 1.1f, -k * 0.60f, r}};
    const std::vector<Vec3> smooth = Smooth(way, 16);
    Element& hose = a.Add(Chicote);
    hose.Add(Bar(smooth, r, 22), Rubber);
    const auto fitting = [&](Vec3 at, Vec3 out, bool male) {
        const Vec3 z = Normalized(out);
        const Vec3 x = Normalized(Cross(Vec3{0, 0, 1}, z));
        const Placement place{x, Cross(z, x), z, at};
        Element& end = a.Add(Niple, place);
        end.Add(Cylinder(r * 1.22f, r * 2.6f, 1), Zinc, Move(0, 0, -r * 1.6f));
        for (int i = 0; i < 3; ++i) {
            end.Add(Torus(r * 1.2f, 2.4f), Zinc,
                    Move(0, 0, -r * 1.2f + r * 0.7f * static_cast<float>(i)));
        }
        end.Add(Hexagon(std::max(d * 1.35f, r * 2), d * 0.7f, true, true), Zinc, Move(0, 0, r));
        if (male) {
            end.Add(ThreadedRod(d, d * 0.9f, 1.5f, 1), Zinc, Move(0, 0, r + d * 0.6f));
        } else {
            AddPort(end, Move(0, 0, r + d * 0.7f), d, Zinc, 5);
        }
    };
    fitting(smooth.front(), smooth.front() - smooth[1], true);
    fitting(smooth.back(), smooth.back() - smooth[smooth.size() - 2], false);
    if (p.Says(u"mola")) {
        // A wire wound round the hose protects its first third.
        std::vector<Vec3> wire;
        const size_t reach = smooth.size() / 3;
        for (size_t i = 2; i + 1 < reach; ++i) {
            const Vec3 along = Normalized(smooth[i + 1] - smooth[i]);
            const Vec3 u = Normalized(Cross(Vec3{0, 0, 1}, along));
            const Vec3 v = Cross(along, u);
            const float step = Length(smooth[i + 1] - smooth[i]);
            const int parts = std::max(4, static_cast<int>(step * 1.6f));
            for (int m = 0; m < parts; ++m) {
                const float share = static_cast<float>(m) / static_cast<float>(parts);
                const float at = 2 * Pi * (static_cast<float>(i) * step + step * share) / 7;
                wire.push_back(smooth[i] + along * (step * share) +
                               u * ((r + 1.2f) * std::cos(at)) + v * ((r + 1.2f) * std::sin(at)));
            }
        }
        a.Add(MolaRetorno).Add(Bar(wire, 1.3f, 6), Zinc);
    }
    return a;
}

// A coiled line with straight tails.
Assembly Coiled(Material material, float r, float coil, int turns, float d, bool electric,
                bool springs) {
    Assembly a;
    a.pose = Lying(-22);
    const float height = static_cast<float>(turns) * r * 2.12f;
    std::vector<Vec3> way = Helix({.radius = coil,
                                   .wire = r * 2,
                                   .height = height,
                                   .turns = static_cast<float>(turns),
                                   .flatEnds = false},
                                  20);
    const Vec3 first = way.front();
    const Vec3 last = way.back();
    way.insert(way.begin(), {first + Vec3{0, -coil * 0.6f, -coil * 1.1f},
                             first + Vec3{0, -coil * 0.45f, -coil * 0.4f}});
    way.push_back(last + Vec3{0, coil * 0.45f, coil * 0.4f});
    way.push_back(last + Vec3{0, coil * 0.6f, coil * 1.1f});
    const std::vector<Vec3> smooth = Smooth(way, 2);
    a.Add(Chicote).Add(Bar(smooth, r, 14), material);
    for (const bool top : {false, true}) {
        const Vec3 at = top ? smooth.back() : smooth.front();
        Element& end = a.Add(electric ? Conector : Niple, top ? Move(at) : Move(at) * Flip());
        if (electric) {
            end.Add(Component(Conector, d, d * 1.5f), Move(0, 0, -4));
            continue;
        }
        end.Add(Cylinder(r * 1.5f, 26, 2), BlackPlastic, Move(0, 0, -14));
        end.Add(Hexagon(d * 1.4f, d * 0.6f, true, true), Brass, Move(0, 0, 12));
        end.Add(ThreadedRod(d, d * 0.8f, 1.6f, 1), Brass, Move(0, 0, 12 + d * 0.55f));
        if (springs) {
            end.Add(Spring({.radius = r + 2, .wire = 2, .height = coil * 0.9f, .turns = 14}), Zinc,
                    Move(0, 0, -coil * 0.9f));
        }
    }
    return a;
}

Assembly CoiledHose(const Parameters& p) {
    const Material colour = p.Says(u"amarela") ? YellowPlastic
                            : p.Says(u"preta") ? BlackPlastic
                            : p.Says(u"azul")  ? BluePlastic
                                               : RedPlastic;
    return Coiled(colour, 6, 42,
                  static_cast<int>(std::clamp(p.Number(u"comprimento", 4) * 5.5f, 3.0f, 44.0f)),
                  p.Thread(16), false, p.Says(u"mola"));
}

Assembly CoiledCable(const Parameters& p) {
    const float ways = p.Number(u"vias", 7);
    return Coiled(p.Says(u"ABS") ? GreyPlastic : BlackPlastic, 4.5f + ways * 0.12f, 36,
                  static_cast<int>(std::clamp(p.Number(u"comprimento", 4) * 6, 3.0f, 40.0f)),
                  34 + ways, true, false);
}

Assembly Tubing(const Parameters& p) {
    const float r = p.Number(u"diâmetro", 8) / 2;
    const float metres = p.Number(u"comprimento", 25);
    const Material colour = p.Says(u"azul")       ? BluePlastic
                            : p.Says(u"vermelho") ? RedPlastic
                            : p.Says(u"preto")    ? BlackPlastic
                                                  : WhitePlastic;
    const float coil = 70 + r * 6;
    const float turns = std::clamp(metres * 1000 / (2 * Pi * coil), 2.0f, 120.0f);
    const int layers = std::clamp(static_cast<int>(std::sqrt(turns * 1.3f)), 2, 8);
    const int rows = std::max(1, static_cast<int>(turns / static_cast<float>(layers)));
    Assembly a;
    a.pose = TurnX(64) * TurnZ(20);
    Element& roll = a.Add(Chicote);
    Mesh wound;
    for (int i = 0; i < std::min(rows, 12); ++i) {
        for (int k = 0; k < layers; ++k) {
            // Only the outer skin of the roll is ever seen.
            if (i > 0 && i + 1 < std::min(rows, 12) && k > 0 && k + 1 < layers) {
                continue;
            }
            wound.Append(Torus(coil + r * 2.02f * static_cast<float>(i) + (k % 2 ? r : 0), r * 2),
                         Move(0, 0, r * 1.85f * static_cast<float>(k)));
        }
    }
    roll.Add(std::move(wound), colour);
    const float outer = coil + r * 2.02f * static_cast<float>(std::min(rows, 12) - 1) + r * 2;
    const float thick = r * 1.85f * static_cast<float>(layers);
    for (const float at : {30.0f, 150.0f, 270.0f}) {
        a.Add(Abracadeira)
            .Add(Block(outer - coil + r * 4, 9, thick + 3, 2, 1),
                 p.Says(u"preto") ? YellowPlastic : BlackPlastic,
                 Ring(at, (outer + coil) / 2 - r * 0.5f, -r - 1));
    }
    roll.Add(Bar(Smooth({{outer * 0.7f, -outer * 0.72f, thick * 0.5f},
                         {outer * 0.96f, -outer * 0.5f, thick * 0.6f},
                         {outer * 1.25f, -outer * 0.3f, thick * 0.9f}}),
                 r, 16),
             colour);
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
    {u"mangueira-freio", BrakeHose},
    {u"mangueira-espiral", CoiledHose},
    {u"cabo-espiral", CoiledCable},
    {u"tubo-poliamida", Tubing},
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
