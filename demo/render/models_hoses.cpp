#include "components.h"
#include "models.h"
#include "shapes.h"

#include <algorithm>

// Hoses, cables and tubes.
namespace render {
namespace {

using enum ComponentKind;
using enum Material;

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
            const int parts = std::clamp(static_cast<int>(step * 1.6f), 4, 60);
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

constexpr FamilyModel models[] = {
    {u"mangueira-freio", BrakeHose},
    {u"mangueira-espiral", CoiledHose},
    {u"cabo-espiral", CoiledCable},
    {u"tubo-poliamida", Tubing},
};

}  // namespace

std::span<const FamilyModel> HoseModels() {
    return models;
}

}  // namespace render
