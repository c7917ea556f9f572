#pragma once

#include "assembly.h"

#include <array>
#include <vector>

namespace render {

// How much of the light of the studio reaches a point past the parts that stand around it: one
// small depth picture of the assembly from each of some directions.
class Visibility {
public:
    struct Share {
        float key = 1;
        float tent = 1;
    };

    Visibility(const Assembly& assembly, const Box& bounds, const Placement& studio);

    // `at` and `normal` in the studio's frame (see LightTable); `scatter`, 0 to 15 and another
    // one for each neighbour, spreads the error so that smoothing over them removes it.
    Share At(Vec3 at, Vec3 normal, int scatter) const;

private:
    static constexpr int Side = 112;
    struct View {
        Vec3 towards;
        Vec3 right;
        Vec3 up;
        float weight;
        bool key;
        std::vector<float> height;
    };
    using Face = std::array<uint32_t, 3>;  // of points_
    struct Spot {
        Vec3 at;
        Vec3 normal;
    };
    void Draw(View& view) const;

    Vec3 centre_;
    float reach_;               // mm, half the side of each picture
    float texel_;               // mm
    std::vector<Vec3> points_;  // from the centre, mm
    std::vector<Face> faces_;
    std::vector<Spot> dots_;
    std::vector<View> views_;
};

}  // namespace render
