#pragma once

#include <cmath>

namespace render {

inline constexpr float Pi = 3.14159265f;

inline float Radians(float degrees) {
    return degrees * (Pi / 180);
}

struct Vec2 {
    float x = 0;
    float y = 0;
    friend Vec2 operator+(Vec2 a, Vec2 b) { return {a.x + b.x, a.y + b.y}; }
    friend Vec2 operator-(Vec2 a, Vec2 b) { return {a.x - b.x, a.y - b.y}; }
    friend Vec2 operator*(Vec2 a, float k) { return {a.x * k, a.y * k}; }
};

inline float Dot(Vec2 a, Vec2 b) {
    return a.x * b.x + a.y * b.y;
}

inline float Cross(Vec2 a, Vec2 b) {
    return a.x * b.y - a.y * b.x;
}

inline float Length(Vec2 a) {
    return std::sqrt(Dot(a, a));
}

inline Vec2 Normalized(Vec2 a) {
    const float length = Length(a);
    return length > 0 ? a * (1 / length) : Vec2{1, 0};
}

struct Vec3 {
    float x = 0;
    float y = 0;
    float z = 0;
    friend Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Vec3 operator-(Vec3 a) { return {-a.x, -a.y, -a.z}; }
    friend Vec3 operator*(Vec3 a, float k) { return {a.x * k, a.y * k, a.z * k}; }
};

inline float Dot(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Vec3 Cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline float Length(Vec3 a) {
    return std::sqrt(Dot(a, a));
}

inline Vec3 Normalized(Vec3 a) {
    const float length = Length(a);
    return length > 0 ? a * (1 / length) : Vec3{0, 0, 1};
}

// A rotation and a translation: where the axes and the origin of a piece lie in what holds it.
struct Placement {
    Vec3 x{1, 0, 0};
    Vec3 y{0, 1, 0};
    Vec3 z{0, 0, 1};
    Vec3 origin{};

    Vec3 Direction(Vec3 d) const { return x * d.x + y * d.y + z * d.z; }
    Vec3 Point(Vec3 p) const { return Direction(p) + origin; }

    // First `inner`, then `outer`.
    friend Placement operator*(const Placement& outer, const Placement& inner) {
        return {outer.Direction(inner.x), outer.Direction(inner.y), outer.Direction(inner.z),
                outer.Point(inner.origin)};
    }
};

inline Placement Move(float x, float y, float z) {
    return {.origin = {x, y, z}};
}

inline Placement Move(Vec3 by) {
    return {.origin = by};
}

inline Placement TurnX(float degrees) {
    const float c = std::cos(Radians(degrees));
    const float s = std::sin(Radians(degrees));
    return {.y = {0, c, s}, .z = {0, -s, c}};
}

inline Placement TurnY(float degrees) {
    const float c = std::cos(Radians(degrees));
    const float s = std::sin(Radians(degrees));
    return {.x = {c, 0, -s}, .z = {s, 0, c}};
}

inline Placement TurnZ(float degrees) {
    const float c = std::cos(Radians(degrees));
    const float s = std::sin(Radians(degrees));
    return {.x = {c, s, 0}, .y = {-s, c, 0}};
}

// Upside down about the x axis.
inline Placement Flip() {
    return TurnX(180);
}

// On a circle about the z axis: `radius` away at `degrees`, the piece's z axis pointing outwards,
// its y axis upwards.
inline Placement Around(float degrees, float radius, float height) {
    return TurnZ(degrees) * Move(radius, 0, height) *
           Placement{.x = {0, 1, 0}, .y = {0, 0, 1}, .z = {1, 0, 0}};
}

// The same circle, the piece standing upright.
inline Placement Ring(float degrees, float radius, float height) {
    return TurnZ(degrees) * Move(radius, 0, height);
}

}  // namespace render
