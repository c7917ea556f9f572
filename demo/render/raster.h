#pragma once

#include "mesh.h"

#include <cstdint>
#include <vector>

namespace render {

// Where the picture is taken from. In its own frame x is right, y up, z towards the viewer.
struct Camera {
    Vec3 right{1, 0, 0};
    Vec3 up{0, 1, 0};
    Vec3 toward{0, 0, 1};
    Vec3 target;         // mm; stands at `centre`
    Vec2 centre;         // samples
    float scale = 1;     // samples per mm at the target
    float nearness = 0;  // 1 / distance in mm; 0 is a parallel projection

    // `azimuth` turns to the right about the vertical, `elevation` looks down; degrees.
    static Camera Looking(float azimuth, float elevation);

    Vec3 View(Vec3 world) const;   // mm, relative to the target
    Vec3 Screen(Vec3 view) const;  // samples, and a depth that is linear on the picture
    float Distance(float depth) const { return depth / (1 + nearness * depth); }  // view z
};

// One sample of the picture: the surface (0: none) and its normal in the camera's frame, times
// 32767.
struct Sample {
    int16_t x = 0;
    int16_t y = 0;
    int16_t z = 0;
    uint16_t surface = 0;
};

inline constexpr float Nothing = -1e30f;

struct Buffers {
    int width = 0;
    int height = 0;
    std::vector<float> depth;  // larger is nearer; Nothing where no surface is
    std::vector<Sample> samples;

    Buffers(int w, int h);
    ~Buffers();
    Buffers(const Buffers&) = delete;
    Buffers& operator=(const Buffers&) = delete;
    size_t Index(int x, int y) const {
        return static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x);
    }
};

void Rasterise(const Mesh& mesh, const Placement& place, const Camera& camera, uint16_t surface,
               Buffers& buffers);

}  // namespace render
