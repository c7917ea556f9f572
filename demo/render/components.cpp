#include "components.h"

#include "recipes.h"

#include <algorithm>
#include <array>

namespace render {
namespace {

using Book = std::array<const Recipe*, static_cast<size_t>(ComponentKind::Count)>;

const Book& Recipes() {
    static const Book book = [] {
        Book all{};
        for (const auto chapter :
             {SealRecipes(), SpringRecipes(), MovingRecipes(), HousingRecipes(), FasteningRecipes(),
              EquipmentRecipes(), CompressorRecipes()}) {
            for (const Recipe& recipe : chapter) {
                all[static_cast<size_t>(recipe.kind)] = &recipe;
            }
        }
        return all;
    }();
    return book;
}

}  // namespace

Element Component(ComponentKind kind, float diameter, float height) {
    Element element = Recipes()[static_cast<size_t>(kind)]->make(diameter, height);
    element.kind = kind;
    return element;
}

float UsualShare(ComponentKind kind) {
    return Recipes()[static_cast<size_t>(kind)]->share;
}

float BossRadius(float thread) {
    return thread * 0.5f + std::max(2.5f, thread * 0.22f);
}

void AddPort(Element& element, const Placement& at, float thread, Material boss, float reach) {
    const float outer = BossRadius(thread);
    const float bore = thread * 0.46f;
    const float depth = reach > 0 ? reach : thread * 0.55f;
    const float sunk = outer;  // into the body, so that a curved surface leaves no gap
    element.Add(Revolved({{0, -sunk},
                          {outer * 1.08f, -sunk},
                          {outer * 1.06f, 0, 1},
                          {outer, depth, outer * 0.1f},
                          {bore * 1.14f, depth},
                          {bore, depth - bore * 0.14f},
                          {bore, -sunk * 0.5f},
                          {0, -sunk * 0.5f}}),
                boss, at);
    Corners lining{{0, 0.3f}, {bore + 0.2f, 0.3f}, {bore + 0.2f, depth - bore * 0.16f}};
    const float pitch = 1.7f;
    for (float z = depth - bore * 0.2f; z > 0.6f + pitch; z -= pitch) {
        lining.push_back({bore * 0.99f, z, 0});
        lining.push_back({bore * 0.90f, z - pitch / 2, 0});
    }
    lining.push_back({bore * 0.92f, 0.6f});
    lining.push_back({0, 0.6f});
    element.Add(Revolved(lining), Material::Bore, at);
    // The spot-faced rim against which the fitting seals.
    const bool metal = boss == Material::CastAluminium || boss == Material::CastIron;
    if (metal) {
        element.Add(Tube(outer * 0.93f, bore * 1.15f, 0.35f), Material::Aluminium,
                    at * Move(0, 0, depth - 0.1f));
    }
}

void AddCircle(Element& element, const Element& one, int count, float radius, float height,
               float turn) {
    for (int i = 0; i < count; ++i) {
        const float at = turn + 360.0f * static_cast<float>(i) / static_cast<float>(count);
        element.Add(one, Ring(at, radius, height));
    }
}

void AddRibs(Element& element, int count, float inner, float outer, float low, float high,
             float width, Material material, float turn) {
    Mesh ribs;
    const Mesh rib = Block(outer - inner, width, high - low, width * 0.2f, width * 0.25f);
    for (int i = 0; i < count; ++i) {
        const float at = turn + 360.0f * static_cast<float>(i) / static_cast<float>(count);
        ribs.Append(rib, Ring(at, (inner + outer) / 2, low));
    }
    element.Add(std::move(ribs), material);
}

void AddPlate(Element& element, const Placement& at, float width, float height) {
    element.Add(Block(width, height, 0.8f, height * 0.12f, 0.2f), Material::Label, at);
    // Lines of type, too small to be read at this size.
    const float line = height / 7;
    const std::array<float, 4> widths{0.5f, 0.78f, 0.66f, 0.34f};
    for (size_t i = 0; i < widths.size(); ++i) {
        const float length = width * widths[i];
        element.Add(Block(length, line * (i == 0 ? 1.2f : 0.7f), 0.25f, 0.05f, 0), Material::Ink,
                    at * Move(length / 2 - width * 0.42f,
                              height * 0.30f - static_cast<float>(i) * line * 1.5f, 0.7f));
    }
}

}  // namespace render
