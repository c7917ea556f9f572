#include "components.h"
#include "models.h"
#include "shapes.h"

#include <algorithm>

// Compressors, dryers, filters, reservoirs.
namespace render {
namespace {

using enum ComponentKind;
using enum Material;

void AddHead(Assembly& a, float x, float z, float bore, bool water) {
    const float w = bore * 1.28f;
    Element& head = a.Add(Cabecote, Move(x, 0, z));
    head.Add(Block(w, w, 12, 12, 2), CastAluminium);
    head.Add(Block(w * 0.94f, w * 0.94f, water ? 40.0f : 26.0f, 14, 5), CastAluminium);
    if (!water) {
        for (int i = 0; i < 9; ++i) {
            head.Add(Block(2.6f, w * 0.92f, 46, 1, 1), CastAluminium,
                     Move(w * 0.1f * static_cast<float>(i - 4), 0, 0));
        }
    }
    for (const float at : {-0.24f, 0.24f}) {
        AddPort(head, Move(w * at, -w * 0.47f, 20) * TurnX(90), 22, CastAluminium, 12);
    }
    if (water) {
        AddPort(head, Move(w * 0.47f, 0, 24) * TurnY(90), 18, CastAluminium, 12);
    }
    Element& screws = a.Add(ParafusoSextavado, Move(x, 0, z + 12));
    AddCircle(screws, Component(ParafusoSextavado, 9, 12), 4, w * 0.60f, water ? 27.6f : 0.0f, 45);
}

Assembly Compressor(const Parameters& p, int cylinders) {
    const float bore = p.Number(u"diâmetro", 85);
    const bool water = p.Says(u"água");
    const float pitch = bore * 1.3f;
    const float width = bore * 1.25f + pitch * static_cast<float>(cylinders - 1);
    const float depth = bore * 1.35f;
    const float low = bore * 1.15f;
    const float high = low + bore * 0.95f;
    Assembly a;
    a.pose = TurnZ(-34);
    for (int i = 0; i < cylinders; ++i) {
        const float x = pitch * (static_cast<float>(i) - static_cast<float>(cylinders - 1) / 2);
        AddHead(a, x, high, bore, water);
        Element& plate = a.Add(PlacaValvulas, Move(x, 0, high - 6));
        plate.Add(Block(bore * 1.26f, bore * 1.26f, 6, 12, 0.5f), Steel);
        Element& barrel = a.Add(CorpoCilindro, Move(x, 0, low));
        barrel.Add(Cylinder(bore * 0.60f, high - low - 6), CastIron);
        barrel.Add(Block(bore * 1.28f, bore * 1.28f, 10, 12, 2), CastIron,
                   Move(0, 0, high - low - 16));
        if (water) {
            barrel.Add(Cylinder(bore * 0.64f, (high - low) * 0.6f, 6), CastIron, Move(0, 0, 8));
            continue;
        }
        for (int k = 0; k < 6; ++k) {
            barrel.Add(Cylinder(bore * 0.74f, 3, 1), CastIron,
                       Move(0, 0, 9 + (high - low - 34) * static_cast<float>(k) / 5));
        }
    }
    Element& crankcase = a.Add(Carter);
    crankcase.Add(Block(width, depth, low - 8, 18, 6), CastIron, Move(0, 0, 8));
    crankcase.Add(Block(width + 6, depth + 6, 12, 18, 2), CastIron, Move(0, 0, low - 10));
    crankcase.Add(Block(width + 30, depth * 0.9f, 14, 12, 3), CastIron);
    for (const float x : {-1.0f, 1.0f}) {
        crankcase.Add(Component(ParafusoSextavado, 10, 10),
                      Move(x * (width / 2 + 8), -depth * 0.3f, 14));
    }
    AddPlate(crankcase, Move(-width * 0.18f, -depth / 2, low * 0.72f) * TurnX(90), bore * 0.5f,
             bore * 0.22f);
    const Placement nose = Move(width / 2, 0, low * 0.52f) * TurnY(90);
    Element& flange = a.Add(Flange, nose);
    flange.Add(Cylinder(bore * 0.52f, 14, 3), CastIron);
    AddCircle(flange, Component(ParafusoSextavado, 8, 10), 6, bore * 0.43f, 14);
    flange.Add(Cylinder(bore * 0.3f, 26, 3), CastIron);
    Element& shaft = a.Add(Virabrequim, nose);
    shaft.Add(Cylinder(13, 58, 1), Steel);
    if (p.Says(u"polia") || p.Says(u"embreagem")) {
        const float r = bore * (p.Says(u"embreagem") ? 0.72f : 0.86f);
        Element& pulley = a.Add(Engrenagem, nose * Move(0, 0, 34));
        pulley.Add(Revolved({{14, 0},
                             {r * 0.8f, 0},
                             {r * 0.8f, 3},
                             {r, 3, 1},
                             {r * 0.86f, 10},
                             {r, 17, 1},
                             {r * 0.86f, 24},
                             {r, 31, 1},
                             {r * 0.78f, 31},
                             {r * 0.74f, 12, 3},
                             {r * 0.34f, 12, 3},
                             {r * 0.3f, 26, 2},
                             {14, 26}}),
                   p.Says(u"embreagem") ? BlackPaint : CastIron);
    } else if (p.Says(u"engrenagem")) {
        a.Add(Component(Engrenagem, bore * 1.15f, 22), nose * Move(0, 0, 30));
    }
    a.Add(Component(Porca, 18), nose * Move(0, 0, 60));
    return a;
}

Assembly OneCylinder(const Parameters& p) {
    return Compressor(p, 1);
}
Assembly TwoCylinders(const Parameters& p) {
    return Compressor(p, 2);
}

Assembly CompressorHead(const Parameters& p) {
    const float bore = p.Number(u"diâmetro", 85);
    Assembly a;
    a.pose = TurnZ(-32);
    AddHead(a, 0, 0, bore, p.Says(u"água"));
    a.Add(PlacaValvulas, Move(0, 0, -7)).Add(Block(bore * 1.27f, bore * 1.27f, 6, 12, 0.5f), Steel);
    if (p.Says(u"alívio")) {
        Element& valve = a.Add(ValvulaInterna, Move(0, 0, p.Says(u"água") ? 38.0f : 30.0f));
        valve.Add(Cylinder(19, 26, 3), CastAluminium);
        valve.Add(Hexagon(20, 9, false, true), Brass, Move(0, 0, 25));
    } else if (p.Says(u"2 saídas")) {
        AddPort(a.elements.front(), Move(-bore * 0.6f, 0, 20) * TurnY(-90), 22, CastAluminium, 12);
    }
    return a;
}

void AddCanister(Element& element, float r, float h, Material material) {
    element.Add(
        Revolved(
            {{0, 0}, {r, 0, 2}, {r, h - r * 0.3f, r * 0.28f}, {r * 0.8f, h, r * 0.25f}, {0, h}}),
        material);
    element.Add(Torus(r * 1.0f, 4), material, Move(0, 0, 5));
    const float low = h - r * 0.42f;
    AddRibs(element, 20, r * 0.9f, r * 1.025f, low, h - r * 0.16f, r * 0.12f, material);
}

Assembly Dryer(const Parameters& p) {
    Assembly a;
    a.pose = TurnZ(-24);
    const float r = 62;
    Element& canister = a.Add(ElementoFiltrante, Move(0, 0, 62));
    AddCanister(canister, r + 4, 118, BlackPaint);
    AddPlate(canister, Around(262, r + 4.2f, 62), 52, 34);
    Element& body = a.Add(Corpo);
    body.Add(Revolved({{0, -16},
                       {r * 0.5f, -16, 3},
                       {r * 0.62f, 2, 8},
                       {r * 0.92f, 16, 8},
                       {r * 0.98f, 48, 3},
                       {r * 1.08f, 52, 2},
                       {r * 1.08f, 62, 2},
                       {0, 62}}),
             CastAluminium);
    AddRibs(body, 14, r * 0.5f, r * 1.0f, 4, 50, 4, CastAluminium);
    AddPort(body, Around(238, r * 0.86f, 30), 22, CastAluminium, 20);
    AddPort(body, Around(302, r * 0.86f, 30), 22, CastAluminium, 20);
    AddPort(body, Around(20, r * 0.86f, 26), 12, CastAluminium, 22);
    body.Add(Block(40, 70, 60, 5, 3), CastAluminium, Move(-r * 0.9f, 20, 0));
    if (p.Says(u"regulador")) {
        body.Add(Cylinder(22, 46, 4), CastAluminium, Around(272, r * 0.7f, 4));
        body.Add(Component(ParafusoRegulagem, 10, 20), Around(272, r * 0.7f + 54, 4));
        body.Add(Component(Porca, 10), Around(272, r * 0.7f + 46, 4));
    }
    if (p.Says(u"aquecedor") || p.Says(u"V")) {
        Element& heater = a.Add(Resistencia);
        heater.Add(Component(Conector, 24, 34), Around(335, r * 0.7f, 6));
    }
    const float muffler = p.Says(u"silenciador") ? 52.0f : 24.0f;
    a.Add(Component(Silenciador, r * 0.95f, muffler), Move(0, 0, -14 - muffler));
    return a;
}

Assembly Cartridge(const Parameters& p) {
    Assembly a;
    a.pose = TurnZ(-24);
    Element& canister = a.Add(ElementoFiltrante);
    const bool oil = p.Says(u"óleo");
    AddCanister(canister, 68, p.Says(u"14") ? 148.0f : 132.0f,
                oil             ? GreyPaint
                : p.Says(u"13") ? BluePaint
                                : BlackPaint);
    AddPlate(canister, Around(262, 68.3f, 66), 66, 44);
    canister.Add(Cylinder(24, 4, 1), Zinc, Move(0, 0, -3));
    return a;
}

Assembly Regulator(const Parameters& p) {
    Assembly a;
    a.pose = TurnZ(-26);
    const float thread = p.Thread(22);
    Element& cover = a.Add(Tampa, Move(0, 0, 52));
    cover.Add(
        Revolved({{0, 0}, {34, 0, 1}, {34, 7, 2}, {25, 10, 4}, {23, 46, 6}, {12, 50, 2}, {0, 50}}),
        CastAluminium);
    AddRibs(cover, 8, 14, 27, 8, 38, 3, CastAluminium);
    AddCircle(cover, Component(ParafusoFenda, 5, 8), 4, 30, 7, 45);
    a.Add(Component(Porca, 10), Move(0, 0, 102));
    a.Add(Component(ParafusoRegulagem, 10, 26), Move(0, 0, 120));
    Element& body = a.Add(Corpo);
    body.Add(Block(66, 66, 38, 14, 4), CastAluminium, Move(0, 0, 14));
    body.Add(Cylinder(31, 52, 3), CastAluminium);
    AddPort(body, Move(-14, -32.5f, 32) * TurnX(90), thread, CastAluminium, 9);
    AddPort(body, Move(32.5f, 0, 32) * TurnY(90), thread, CastAluminium, 9);
    AddPlate(body, Move(19, -33, 40) * TurnX(90), 18, 10);
    if (p.Says(u"filtro")) {
        Element& bowl = a.Add(ElementoFiltrante, Move(0, 0, -36));
        bowl.Add(Revolved({{0, 0}, {16, 0, 6}, {25, 8, 6}, {26, 38}, {0, 38}}), CastAluminium);
        bowl.Add(Hexagon(16, 8, true, false), Brass, Move(0, 0, -7));
    } else {
        a.Add(Component(Silenciador, 34, 20), Move(0, 0, -18));
    }
    if (p.Says(u"enchimento")) {
        Element& filling = a.Add(ValvulaEnchimento);
        filling.Add(Component(ValvulaEnchimento, 15), Move(20, -30, 24) * TurnX(90));
    }
    return a;
}

Assembly Separator(const Parameters& p) {
    const float thread = p.Thread(22);
    Assembly a;
    a.pose = TurnZ(-22);
    Element& head = a.Add(Tampa, Move(0, 0, 70));
    head.Add(Revolved({{0, 0}, {38, 0, 2}, {38, 16, 3}, {30, 34, 8}, {0, 36}}), CastAluminium);
    AddPort(head, Around(230, 32, 16), thread, CastAluminium, 12);
    AddPort(head, Around(325, 32, 16), thread, CastAluminium, 12);
    Element& bowl = a.Add(Corpo);
    bowl.Add(Revolved({{0, 0}, {16, 0, 3}, {31, 12, 12}, {34, 26, 4}, {34, 70, 1}, {0, 70}}),
             CastAluminium);
    AddRibs(bowl, 12, 20, 35.5f, 14, 66, 3, CastAluminium);
    Element& drain = a.Add(ValvulaInterna, Move(0, 0, -20));
    if (p.Says(u"automático")) {
        drain.Add(Component(Silenciador, 26, 20));
    } else {
        drain.Add(Hexagon(18, 10, true, true), Brass, Move(0, 0, 10));
        drain.Add(Torus(10, 2), Steel, Move(0, 0, 0) * TurnX(90));
    }
    if (p.Says(u"aquecedor")) {
        bowl.Add(Component(Conector, 20, 30), Around(275, 33, 40));
    }
    return a;
}

Assembly LineFilter(const Parameters& p) {
    const float thread = p.Thread(22);
    const float r = thread * 0.5f + 16;
    const Material metal = p.Says(u"latão") ? Brass : CastAluminium;
    const int bodies = p.Says(u"duplo") ? 2 : 1;
    Assembly a;
    a.pose = Lying(-30);
    for (int i = 0; i < bodies; ++i) {
        const float x = -static_cast<float>(i) * r * 1.9f;
        Element& body = a.Add(Corpo, Move(0, x, 0));
        body.Add(Revolved({{0, 0}, {r * 0.7f, 0, 3}, {r, 14, 8}, {r, 74, 3}, {0, 74}}), metal);
        AddRibs(body, 10, r * 0.7f, r * 1.04f, 18, 66, 3, metal);
        AddPort(body, Flip(), thread, metal, 12);
        Element& cap = a.Add(Tampa, Move(0, x, 73));
        cap.Add(Cylinder(r * 1.06f, 13, 2.5f), metal);
        AddPort(cap, Move(0, 0, 12), thread, metal, 10);
        if (p.Says(u"dreno")) {
            body.Add(Component(Bujao, 12), Around(0, r, 26));
        }
    }
    return a;
}

Assembly AirReservoir(const Parameters& p) {
    const float d = p.Number(u"diâmetro", 246);
    const float litres = p.Number(u"volume", 20);
    const float r = d / 2;
    const float length = std::clamp(litres * 1e6f / (Pi * r * r) + r * 0.25f, r * 0.9f, 1200.0f);
    const bool aluminium = p.Says(u"alumínio");
    const Material skin = aluminium ? Aluminium : BlackPaint;
    Assembly a;
    a.pose = TurnZ(-26) * TurnY(90);
    Element& tank = a.Add(Carcaca);
    tank.Add(Revolved({{0, -r * 0.30f},
                       {r * 0.62f, -r * 0.26f, r * 0.4f},
                       {r, 0, r * 0.22f},
                       {r, length, r * 0.22f},
                       {r * 0.62f, length + r * 0.26f, r * 0.4f},
                       {0, length + r * 0.30f}}),
             skin);
    for (const float z : {0.06f, 0.94f}) {
        tank.Add(Torus(r * 0.997f, 5), skin, Move(0, 0, length * z));
    }
    AddPort(tank, Move(0, 0, length + r * 0.27f), 22, skin, 12);
    AddPort(tank, Flip() * Move(0, 0, r * 0.27f), 22, skin, 12);
    AddPort(tank, Around(225, r * 0.985f, length * 0.25f), 22, skin, 12);
    AddPort(tank, Around(225, r * 0.985f, length * 0.75f), 22, skin, 12);
    AddPlate(tank, Around(262, r, length * 0.5f) * TurnZ(90), std::min(90.0f, length * 0.3f), 48);
    a.Add(Bujao).Add(Component(Bujao, 20), Around(0, r, length * 0.5f));
    return a;
}

Assembly FluidReservoir(const Parameters& p) {
    const float k = std::cbrt(std::max(p.Number(u"volume", 0.5f), 0.01f) / 0.5f);
    Assembly a;
    a.pose = TurnZ(-26);
    const bool twin = p.Says(u"duplo");
    const float w = (twin ? 126.0f : 92.0f) * k;
    Element& cap = a.Add(Tampa, Move(0, 0, 94 * k));
    const float lid = 27 * k;
    cap.Add(Cylinder(lid, 17 * k, 3), p.Says(u"sensor") ? YellowPlastic : BlackPlastic);
    AddRibs(cap, 28, lid - 2, lid + 1.2f, 1, 13 * k, 2,
            p.Says(u"sensor") ? YellowPlastic : BlackPlastic);
    if (p.Says(u"sensor")) {
        cap.Add(Component(Conector, 20, 24), Move(0, 0, 16 * k));
    }
    Element& tank = a.Add(Corpo);
    tank.Add(Block(w, 80 * k, 84 * k, 18 * k, 9 * k), WhitePlastic);
    tank.Add(Block(w * 1.02f, 81.6f * k, 4, 18 * k, 1.5f), WhitePlastic, Move(0, 0, 46 * k));
    tank.Add(Cylinder(23 * k, 100 * k, 1), WhitePlastic);
    for (int i = 0; i < (twin ? 2 : 1); ++i) {
        tank.Add(Cylinder(8, 24, 1.5f), WhitePlastic,
                 Move(twin ? (i == 0 ? -w * 0.25f : w * 0.25f) : 0.0f, 0, -22));
    }
    for (const float z : {0.24f, 0.72f}) {
        tank.Add(Block(22 * k, 2, 1.6f, 0.3f, 0), Ink, Move(-w * 0.22f, -40.2f * k, 84 * k * z));
    }
    if (p.Says(u"filtro")) {
        tank.Add(Component(Tela, 30 * k, 8), Move(0, 0, -6));
    }
    return a;
}

constexpr FamilyModel models[] = {
    {u"compressor-mono", OneCylinder},        {u"compressor-bi", TwoCylinders},
    {u"cabecote-compressor", CompressorHead}, {u"secador-ar", Dryer},
    {u"cartucho-secador", Cartridge},         {u"regulador-pressao", Regulator},
    {u"separador-agua", Separator},           {u"filtro-linha", LineFilter},
    {u"reservatorio-ar", AirReservoir},       {u"reservatorio-fluido", FluidReservoir},
};

}  // namespace

std::span<const FamilyModel> SupplyModels() {
    return models;
}

}  // namespace render
