#include "studio.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>

namespace render {
namespace {

float Step(float from, float to, float x) {
    const float t = std::clamp((x - from) / (to - from), 0.0f, 1.0f);
    return t * t * (3 - 2 * t);
}

struct Radiance {
    float key;
    float tent;
    float floor;
};

// A rectangle of light on the sphere about `towards`, with half widths as tangents.
float Softbox(Vec3 d, Vec3 towards, float halfWidth, float halfHeight, float blur) {
    const float along = Dot(d, towards);
    if (along <= 0.01f) {
        return 0;
    }
    const Vec3 side = Normalized(Cross(Vec3{0, 0, 1}, towards));
    const Vec3 rise = Cross(towards, side);
    const float u = std::abs(Dot(d, side)) / along;
    const float v = std::abs(Dot(d, rise)) / along;
    return (1 - Step(halfWidth - blur, halfWidth + blur, u)) *
           (1 - Step(halfHeight - blur, halfHeight + blur, v));
}

Radiance Arriving(Vec3 d) {
    static const Vec3 key = KeyDirection();
    static const Vec3 strip = Normalized(Vec3{0.90f, -0.28f, 0.34f});
    static const Vec3 back = Normalized(Vec3{-0.45f, 0.75f, 0.42f});
    if (d.z < 0) {
        // The white floor, darker towards the camera, where the room is.
        const float away = 0.5f + 0.5f * d.y;
        return {0, 0, 0.26f + 0.30f * away};
    }
    float tent = 0.16f + 0.42f * Step(0.10f, 0.95f, d.z);
    tent += 0.32f * Step(0.0f, 0.9f, d.y) * (1 - d.z);                             // the backdrop
    tent *= 1 - 0.80f * Step(0.10f, 0.70f, -d.y) * (1 - Step(0.30f, 0.80f, d.z));  // the dark room
    tent += 2.6f * Softbox(d, strip, 0.26f, 0.75f, 0.07f);
    tent += 1.2f * Softbox(d, back, 0.55f, 0.30f, 0.10f);
    return {4.6f * Softbox(d, key, 0.48f, 0.40f, 0.08f), tent, 0};
}

constexpr int Directions = 1600;

struct Incoming {
    Vec3 towards;
    Radiance radiance;
};

// Even spread over the sphere (spherical Fibonacci lattice).
const std::vector<Incoming>& Sphere() {
    static const std::vector<Incoming> all = [] {
        std::vector<Incoming> list;
        for (int i = 0; i < Directions; ++i) {
            const float z = 1 - (2 * static_cast<float>(i) + 1) / Directions;
            const float r = std::sqrt(1 - z * z);
            const float turn = 2.39996323f * static_cast<float>(i);
            const Vec3 d{r * std::cos(turn), r * std::sin(turn), z};
            list.push_back({d, Arriving(d)});
        }
        return list;
    }();
    return all;
}

Vec3 ToWorld(Vec3 view) {
    const float c = std::cos(Radians(CameraElevation));
    const float s = std::sin(Radians(CameraElevation));
    return {view.x, view.y * s - view.z * c, view.y * c + view.z * s};
}

}  // namespace

Vec3 KeyDirection() {
    return Normalized(Vec3{-0.62f, -0.52f, 0.95f});
}

LightTable::LightTable(float roughness) : table_(static_cast<size_t>(Side) * Side) {
    // Phong lobe about the mirrored ray, with the exponent that matches the roughness.
    const float alpha = std::max(roughness * roughness, 0.02f);
    const float exponent = std::clamp(2 / (alpha * alpha) - 2, 1.0f, 900.0f) / 4;
    // The lobe by its cosine: raising to a power for each pair of directions would cost seconds.
    constexpr size_t Steps = 8192;
    std::vector<float> lobe(Steps + 1);
    for (size_t i = 0; i <= Steps; ++i) {
        lobe[i] = std::pow(static_cast<float>(i) / Steps, exponent);
    }
    const Vec3 toViewer = ToWorld({0, 0, 1});
    for (int row = 0; row < Side; ++row) {
        for (int column = 0; column < Side; ++column) {
            float x = 2 * static_cast<float>(column) / (Side - 1) - 1;
            float y = 2 * static_cast<float>(row) / (Side - 1) - 1;
            const float square = x * x + y * y;
            if (square > 0.999f) {
                x *= std::sqrt(0.999f / square);
                y *= std::sqrt(0.999f / square);
            }
            const Vec3 normal =
                ToWorld({x, y, std::sqrt(std::max(0.0f, 1 - std::min(square, 0.999f)))});
            const Vec3 mirrored = normal * (2 * Dot(normal, toViewer)) - toViewer;
            Light light;
            float total = 0;
            for (const Incoming& in : Sphere()) {
                const float cosine = std::max(0.0f, Dot(normal, in.towards)) * (4.0f / Directions);
                light.diffuseKey += in.radiance.key * cosine;
                light.diffuseTent += in.radiance.tent * cosine;
                light.diffuseFloor += in.radiance.floor * cosine;
                const float near = Dot(mirrored, in.towards);
                if (near <= 0) {
                    continue;
                }
                const float weight = lobe[static_cast<size_t>(std::min(near, 1.0f) * Steps + 0.5f)];
                total += weight;
                light.mirrorKey += in.radiance.key * weight;
                light.mirrorTent += in.radiance.tent * weight;
                light.mirrorFloor += in.radiance.floor * weight;
            }
            const float scale = total > 0 ? 1 / total : 0;
            light.mirrorKey *= scale;
            light.mirrorTent *= scale;
            light.mirrorFloor *= scale;
            table_[static_cast<size_t>(row) * Side + static_cast<size_t>(column)] = light;
        }
    }
}

Light LightTable::At(float nx, float ny) const {
    const float x = std::clamp((nx + 1) * 0.5f * (Side - 1), 0.0f, Side - 1.001f);
    const float y = std::clamp((ny + 1) * 0.5f * (Side - 1), 0.0f, Side - 1.001f);
    const auto column = static_cast<size_t>(x);
    const auto row = static_cast<size_t>(y);
    const float u = x - static_cast<float>(column);
    const float v = y - static_cast<float>(row);
    const Light* p = table_.data() + row * Side + column;
    const float w00 = (1 - u) * (1 - v);
    const float w10 = u * (1 - v);
    const float w01 = (1 - u) * v;
    const float w11 = u * v;
    const auto mix = [&](float Light::*m) {
        return p[0].*m * w00 + p[1].*m * w10 + p[Side].*m * w01 + p[Side + 1].*m * w11;
    };
    return {mix(&Light::diffuseKey), mix(&Light::diffuseTent), mix(&Light::diffuseFloor),
            mix(&Light::mirrorKey),  mix(&Light::mirrorTent),  mix(&Light::mirrorFloor)};
}

const LightTable& LightTable::For(float roughness) {
    // A handful of tables serves all materials. Whoever needs one first makes it, while others make
    // others.
    struct Entry {
        std::once_flag once;
        std::optional<LightTable> table;
    };
    static std::array<Entry, 10> entries;
    const auto step =
        static_cast<size_t>(std::clamp(static_cast<int>(roughness * 10 + 0.5f), 1, 9));
    Entry& entry = entries[step];
    std::call_once(entry.once, [&] { entry.table.emplace(static_cast<float>(step) / 10); });
    return *entry.table;
}

int Developed(float linear) {
    static const std::array<uint8_t, 2048> curve = [] {
        std::array<uint8_t, 2048> values{};
        for (size_t i = 0; i < values.size(); ++i) {
            float v = static_cast<float>(i) / 1024;
            if (v > 0.8f) {
                v = 0.8f + 0.2f * (1 - std::exp(-(v - 0.8f) / 0.2f));
            }
            const float srgb =
                v <= 0.0031308f ? 12.92f * v : 1.055f * std::pow(v, 1 / 2.4f) - 0.055f;
            values[i] = static_cast<uint8_t>(std::lround(std::clamp(srgb, 0.0f, 1.0f) * 255));
        }
        return values;
    }();
    return curve[static_cast<size_t>(std::clamp(linear * 1024, 0.0f, 2047.0f))];
}

}  // namespace render
