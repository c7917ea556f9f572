#include "visibility.h"

#include "studio.h"

#include <algorithm>
#include <array>

namespace render {
namespace {

constexpr int KeyViews = 4;
constexpr int TentViews = 7;

// Where around a point a view is read, in texels.
struct Offset {
    float x;
    float y;
};
constexpr std::array<Offset, 16> offsets{{
    {-0.75f, -0.30f},
    {0.30f, -0.80f},
    {0.80f, 0.25f},
    {-0.25f, 0.75f},
    {0.05f, -0.10f},
    {-0.60f, 0.55f},
    {0.55f, 0.70f},
    {0.65f, -0.50f},
    {-0.40f, -0.75f},
    {-0.85f, 0.15f},
    {0.10f, 0.40f},
    {0.40f, -0.20f},
    {-0.15f, -0.45f},
    {-0.45f, 0.10f},
    {0.85f, -0.05f},
    {0.20f, 0.85f},
}};

}  // namespace

Visibility::Visibility(const Assembly& assembly, const Box& bounds, const Placement& studio) {
    centre_ = studio.Point(bounds.Centre());
    reach_ = Length(bounds.Size()) * 0.51f + 0.1f;
    texel_ = 2 * reach_ / Side;
    // Triangles that are small against a texel stand in as dots, the smallest of them by turns.
    constexpr float Small = 0.35f;
    constexpr float Tiny = 0.10f;
    const float texelArea = texel_ * texel_;
    size_t tiny = 0;
    for (const Element& element : assembly.elements) {
        for (const Piece& piece : element.pieces) {
            const Placement place = studio * assembly.pose * element.place * piece.place;
            const auto first = static_cast<uint32_t>(points_.size());
            for (const Vertex& vertex : piece.mesh.vertices) {
                points_.push_back(place.Point(vertex.at) - centre_);
            }
            for (const Mesh::Triangle& t : piece.mesh.triangles) {
                const Face face{first + t[0], first + t[1], first + t[2]};
                const Vec3 a = points_[face[0]];
                const Vec3 b = points_[face[1]];
                const Vec3 c = points_[face[2]];
                const Vec3 normal = Cross(b - a, c - a);
                const float area = Dot(normal, normal) / (4 * texelArea * texelArea);
                if (area >= Small * Small) {
                    faces_.push_back(face);
                } else if (area >= Tiny * Tiny || ++tiny % 3 == 0) {
                    dots_.push_back({(a + b + c) * (1.0f / 3), normal});
                }
            }
        }
    }
    const auto add = [&](Vec3 towards, float weight, bool key) {
        View view{towards, {}, {}, weight, key, {}};
        view.right = Normalized(Cross(Vec3{0.31f, 0.95f, 0.02f}, towards));
        view.up = Cross(towards, view.right);
        Draw(view);
        views_.push_back(std::move(view));
    };
    const Vec3 key = KeyDirection();
    const Vec3 side = Normalized(Cross(Vec3{0, 0, 1}, key));
    const Vec3 rise = Cross(key, side);
    for (int i = 0; i < KeyViews; ++i) {
        const float radius = 0.44f * std::sqrt((static_cast<float>(i) + 0.4f) / KeyViews);
        const float turn = 2.39996323f * static_cast<float>(i);
        add(Normalized(key + side * (radius * std::cos(turn)) + rise * (radius * std::sin(turn))),
            1, true);
    }
    for (int i = 0; i < TentViews; ++i) {
        const float z = 0.12f + 0.86f * (static_cast<float>(i) + 0.5f) / TentViews;
        const float turn = 2.39996323f * static_cast<float>(i) + 0.7f;
        const float r = std::sqrt(1 - z * z);
        add({r * std::cos(turn), r * std::sin(turn), z}, 0.45f + 0.55f * z, false);
    }
}

void Visibility::Draw(View& view) const {
    view.height.assign(static_cast<size_t>(Side) * Side, -1e30f);
    const float scale = 1 / texel_;
    const auto seen = [&](Vec3 p) {
        return Vec3{Dot(p, view.right) * scale + Side * 0.5f, Dot(p, view.up) * scale + Side * 0.5f,
                    Dot(p, view.towards)};
    };
    const auto mark = [&view](int x, int y, float z) {
        if (x < 0 || y < 0 || x >= Side || y >= Side) {
            return;
        }
        float& height = view.height[static_cast<size_t>(y * Side + x)];
        height = std::max(height, z);
    };
    for (const Spot& dot : dots_) {
        if (Dot(dot.normal, view.towards) > 0) {
            const Vec3 at = seen(dot.at);
            mark(static_cast<int>(at.x), static_cast<int>(at.y), at.z);
        }
    }
    std::vector<Vec3> places(points_.size());
    std::transform(points_.begin(), points_.end(), places.begin(), seen);
    for (const Face& face : faces_) {
        const Vec3 a = places[face[0]];
        const Vec3 b = places[face[1]];
        const Vec3 c = places[face[2]];
        const float area = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
        if (area <= 0) {
            continue;
        }
        if (area < 1.5f) {
            mark(static_cast<int>((a.x + b.x + c.x) / 3), static_cast<int>((a.y + b.y + c.y) / 3),
                 (a.z + b.z + c.z) / 3);
        }
        const int left = static_cast<int>(std::ceil(std::min({a.x, b.x, c.x}) - 0.5f));
        const int right = static_cast<int>(std::floor(std::max({a.x, b.x, c.x}) - 0.5f));
        const int low = static_cast<int>(std::ceil(std::min({a.y, b.y, c.y}) - 0.5f));
        const int high = static_cast<int>(std::floor(std::max({a.y, b.y, c.y}) - 0.5f));
        if (left > right || low > high) {
            continue;
        }
        // What each corner weighs is linear over the face: from step to step it grows by a
        // constant.
        const float inverse = 1 / area;
        const float x = static_cast<float>(left) + 0.5f;
        const float alongA = (b.y - c.y) * inverse;
        const float alongB = (c.y - a.y) * inverse;
        for (int row = low; row <= high; ++row) {
            const float y = static_cast<float>(row) + 0.5f;
            float wa = ((b.x - x) * (c.y - y) - (b.y - y) * (c.x - x)) * inverse;
            float wb = ((c.x - x) * (a.y - y) - (c.y - y) * (a.x - x)) * inverse;
            for (int column = left; column <= right; ++column) {
                const float wc = 1 - wa - wb;
                if (std::min({wa, wb, wc}) >= 0) {
                    mark(column, row, a.z * wa + b.z * wb + c.z * wc);
                }
                wa += alongA;
                wb += alongB;
            }
        }
    }
}

Visibility::Share Visibility::At(Vec3 at, Vec3 normal, int scatter) const {
    const Vec3 from = at - centre_ + normal * (texel_ * 1.3f);
    // Beyond the longest shadow.
    if (Dot(from, from) > 9 * reach_ * reach_) {
        return {};
    }
    const float scale = 1 / texel_;
    Share lit{0, 0};
    Share all{1e-4f, 1e-4f};
    auto turn = static_cast<size_t>(scatter);
    for (const View& view : views_) {
        turn = (turn + 7) % offsets.size();
        const float cosine = Dot(normal, view.towards);
        if (cosine <= 0.03f) {
            continue;
        }
        const float x = Dot(from, view.right) * scale + Side * 0.5f + offsets[turn].x;
        const float y = Dot(from, view.up) * scale + Side * 0.5f + offsets[turn].y;
        bool open = true;
        if (x >= 0 && y >= 0 && x < Side && y < Side) {
            const float slack = texel_ * (0.6f + 1.4f * (1 - cosine));
            const auto place =
                static_cast<size_t>(static_cast<int>(y) * Side + static_cast<int>(x));
            open = view.height[place] <= Dot(from, view.towards) + slack;
        }
        const float weight = view.weight * cosine;
        (view.key ? all.key : all.tent) += weight;
        if (open) {
            (view.key ? lit.key : lit.tent) += weight;
        }
    }
    // Facing away from all lights: nothing is hidden that would shine here.
    return {all.key > 0.01f ? lit.key / all.key : 1, all.tent > 0.01f ? lit.tent / all.tent : 1};
}

}  // namespace render
