#include "composition.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace render {
namespace {

// Of the circles about the axis: how narrow they look.
constexpr float Ellipse = 0.45f;

constexpr std::array Slopes{26.0f, 17.0f, 11.0f, 8.0f};
constexpr std::array Gaps{20.0f, 32.0f, 44.0f};  // pixels
constexpr int MostRows = 5;

struct Aim {
    float turn;  // of the axis out of the picture's plane
    float elevation;
};

// The view in which the axis rises by `slope` and circles look as they should.
Aim AimFor(float slope) {
    const float length = std::sqrt(1 - Ellipse * Ellipse);
    const float turn = std::acos(length * std::cos(Radians(slope)));
    const float elevation = std::asin(length * std::sin(Radians(slope)) / std::sin(turn));
    return {turn * 180 / Pi, elevation * 180 / Pi};
}

constexpr float Low = -1e8f;
constexpr float High = 1e8f;

// What an element covers on the page, in mm: along the axis for each band across it.
struct Outline {
    int firstBand = 0;
    std::vector<float> from;
    std::vector<float> to;
};

// What a row covers on the page: up and down for each column.
struct Profile {
    int firstColumn = 0;
    std::vector<float> low;
    std::vector<float> high;
    float bottom = High;
    float top = Low;

    void Take(int column, float y) {
        if (low.empty()) {
            firstColumn = column;
        }
        for (; column < firstColumn; --firstColumn) {
            low.insert(low.begin(), High);
            high.insert(high.begin(), Low);
        }
        while (column >= firstColumn + static_cast<int>(low.size())) {
            low.push_back(High);
            high.push_back(Low);
        }
        const auto i = static_cast<size_t>(column - firstColumn);
        low[i] = std::min(low[i], y);
        high[i] = std::max(high[i], y);
        bottom = std::min(bottom, y);
        top = std::max(top, y);
    }
    float HighAt(int column) const {
        const int i = column - firstColumn;
        return i < 0 || i >= static_cast<int>(high.size()) ? Low : high[static_cast<size_t>(i)];
    }
};

struct Row {
    size_t first = 0;
    size_t count = 0;
    float length = 0;
};

class Layout {
public:
    Layout(const Assembly& assembly, float slope) : slope_(slope) {
        along_ = {std::cos(Radians(slope)), std::sin(Radians(slope))};
        across_ = {-along_.y, along_.x};
        float size = 1;
        for (const Element& element : assembly.elements) {
            size = std::max(size, Length(element.Bounds().Size()));
        }
        band_ = size / 60;
        gap_ = size * 0.045f;
        Composition view;
        view.slope = slope;
        for (const Element& element : assembly.elements) {
            outlines_.push_back(OutlineOf(element, view.View(), view.Page()));
        }
    }

    // In `count` rows of about equal length; `room` in pixels.
    std::vector<Composition> InRows(int count, QSizeF room) const {
        std::vector<float> places(outlines_.size());
        const std::vector<Row> rows = Split(count, places);
        std::vector<Profile> profiles;
        for (const Row& row : rows) {
            profiles.push_back(ProfileOf(row, places));
        }
        std::vector<Composition> all;
        for (const float gap : Gaps) {
            // The gap is in pixels: a second round knows the scale.
            Composition c = Stacked(rows, profiles, places, 0, room);
            c = Stacked(rows, profiles, places, gap / std::max(c.scale, 0.01f), room);
            c.gap = gap;
            all.push_back(std::move(c));
            if (rows.size() == 1) {
                break;
            }
        }
        return all;
    }

private:
    Outline OutlineOf(const Element& element, const Camera& camera, const Placement& page) const {
        std::vector<Vec2> points;
        float low = 1e9f;
        float high = -1e9f;
        for (const Piece& piece : element.pieces) {
            const Placement place = page * element.place * piece.place;
            for (const Vertex& vertex : piece.mesh.vertices) {
                const Vec3 v = camera.View(place.Point(vertex.at));
                const Vec2 p{Dot({v.x, v.y}, along_), Dot({v.x, v.y}, across_)};
                points.push_back(p);
                low = std::min(low, p.y);
                high = std::max(high, p.y);
            }
        }
        Outline outline;
        if (points.empty()) {
            return outline;
        }
        outline.firstBand = BandOf(low);
        const auto bands = static_cast<size_t>(BandOf(high) - outline.firstBand) + 1;
        outline.from.assign(bands, High);
        outline.to.assign(bands, Low);
        // Triangles, so that a band between two far vertices is covered too.
        size_t first = 0;
        for (const Piece& piece : element.pieces) {
            for (const Mesh::Triangle& t : piece.mesh.triangles) {
                float left = 1e9f;
                float right = -1e9f;
                float bottom = 1e9f;
                float top = -1e9f;
                for (const uint32_t corner : t) {
                    const Vec2 p = points[first + corner];
                    left = std::min(left, p.x);
                    right = std::max(right, p.x);
                    bottom = std::min(bottom, p.y);
                    top = std::max(top, p.y);
                }
                for (int b = BandOf(bottom); b <= BandOf(top); ++b) {
                    const auto i = static_cast<size_t>(b - outline.firstBand);
                    outline.from[i] = std::min(outline.from[i], left);
                    outline.to[i] = std::max(outline.to[i], right);
                }
            }
            first += piece.mesh.vertices.size();
        }
        return outline;
    }

    int BandOf(float v) const { return static_cast<int>(std::floor(v / band_)); }

    std::vector<Row> Split(int count, std::vector<float>& places) const {
        const float whole = Pack(0, outlines_.size(), places).length;
        std::vector<Row> rows;
        size_t first = 0;
        for (int i = 0; i < count && first < outlines_.size(); ++i) {
            const bool last = i + 1 == count;
            size_t end = last ? outlines_.size() : first + 1;
            while (end < outlines_.size() && Pack(first, end + 1, places).length <=
                                                 whole / static_cast<float>(count) * 1.02f) {
                ++end;
            }
            rows.push_back(Pack(first, end, places));
            first = end;
        }
        return rows;
    }

    // Each element as far to the front as the ones before leave room, in every band.
    Row Pack(size_t first, size_t end, std::vector<float>& places) const {
        constexpr int Bands = 512;
        std::array<float, Bands> skyline;
        skyline.fill(-1e9f);
        const auto bandAt = [](int index) {
            return static_cast<size_t>(std::clamp(index + Bands / 2, 0, Bands - 1));
        };
        float start = 1e9f;
        float reached = -1e9f;
        for (size_t i = first; i < end; ++i) {
            const Outline& outline = outlines_[i];
            float shift = i == first ? 0 : -1e9f;
            for (size_t b = 0; b < outline.from.size(); ++b) {
                const float sky = skyline[bandAt(outline.firstBand + static_cast<int>(b))];
                if (sky > Low && outline.from[b] < High) {
                    shift = std::max(shift, sky + gap_ - outline.from[b]);
                }
            }
            if (i > first) {
                // In order along the axis, also where nothing is in the way.
                shift = std::max(shift, places[i - 1] + gap_ * 0.5f);
            }
            places[i] = shift;
            for (size_t b = 0; b < outline.from.size(); ++b) {
                if (outline.to[b] <= Low) {
                    continue;
                }
                // Neighbouring bands as well, so that outlines keep a distance across too.
                for (const int beside : {-1, 0, 1}) {
                    float& sky = skyline[bandAt(outline.firstBand + static_cast<int>(b) + beside)];
                    sky = std::max(sky, outline.to[b] + shift);
                }
                start = std::min(start, outline.from[b] + shift);
                reached = std::max(reached, outline.to[b] + shift);
            }
        }
        if (start > reached) {
            return {first, end - first, 0};
        }
        for (size_t i = first; i < end; ++i) {
            places[i] -= start;
        }
        return {first, end - first, reached - start};
    }

    Vec2 OnPage(float along, float across) const { return along_ * along + across_ * across; }

    Profile ProfileOf(const Row& row, const std::vector<float>& places) const {
        Profile profile;
        for (size_t i = row.first; i < row.first + row.count; ++i) {
            const Outline& outline = outlines_[i];
            for (size_t b = 0; b < outline.from.size(); ++b) {
                if (outline.to[b] <= Low) {
                    continue;
                }
                const auto band = static_cast<float>(outline.firstBand + static_cast<int>(b));
                for (const float v : {band * band_, (band + 1) * band_}) {
                    const float from = outline.from[b] + places[i];
                    const float to = std::max(outline.to[b] + places[i], from + band_ * 0.1f);
                    for (float u = from; u < to + band_ * 0.5f; u += band_ * 0.5f) {
                        const Vec2 p = OnPage(std::min(u, to), v);
                        profile.Take(BandOf(p.x), p.y);
                    }
                }
            }
        }
        return profile;
    }

    // Rows lie below each other, centred, each as high as the ones above leave `between` mm.
    Composition Stacked(const std::vector<Row>& rows, const std::vector<Profile>& profiles,
                        const std::vector<float>& places, float between, QSizeF room) const {
        Composition c;
        c.slope = slope_;
        c.spots.assign(places.size(), {});
        std::vector<Profile> above;
        Vec2 least{1e9f, 1e9f};
        Vec2 most{-1e9f, -1e9f};
        for (size_t r = 0; r < rows.size(); ++r) {
            const Profile& own = profiles[r];
            if (own.low.empty()) {
                continue;
            }
            const int left = -static_cast<int>(own.low.size()) / 2;
            Profile placed = own;
            placed.firstColumn = left;
            const float fall = above.empty() ? 0 : Fall(above, placed, between);
            for (size_t i = 0; i < placed.low.size(); ++i) {
                placed.low[i] += fall;
                placed.high[i] += fall;
            }
            const Vec2 by{static_cast<float>(left - own.firstColumn) * band_, fall};
            for (size_t i = rows[r].first; i < rows[r].first + rows[r].count; ++i) {
                c.spots[i] = OnPage(places[i], 0) + by;
            }
            c.rows.push_back({by, OnPage(rows[r].length, 0) + by});
            const auto width = static_cast<float>(placed.low.size()) * band_;
            const float x = static_cast<float>(left) * band_;
            least = {std::min(least.x, x), std::min(least.y, own.bottom + fall)};
            most = {std::max(most.x, x + width), std::max(most.y, own.top + fall)};
            above.push_back(std::move(placed));
        }
        if (above.empty()) {
            c.scale = 1;
            return c;
        }
        c.middle = (least + most) * 0.5f;
        c.scale = std::min(static_cast<float>(room.width()) / std::max(most.x - least.x, 1.0f),
                           static_cast<float>(room.height()) / std::max(most.y - least.y, 1.0f));
        return c;
    }

    // By how much the row has to come down to clear those above.
    float Fall(const std::vector<Profile>& above, const Profile& row, float between) const {
        const int reach = std::max(1, static_cast<int>(between * 0.5f / band_));
        float fall = High;
        for (const Profile& upper : above) {
            for (size_t i = 0; i < upper.low.size(); ++i) {
                const int column = upper.firstColumn + static_cast<int>(i);
                for (int k = column - reach; k <= column + reach; ++k) {
                    if (row.HighAt(k) > Low) {
                        fall = std::min(fall, upper.low[i] - between - row.HighAt(k));
                    }
                }
            }
        }
        return fall >= High ? 0 : fall;
    }

    float slope_;
    Vec2 along_;
    Vec2 across_;
    float band_ = 1;
    float gap_ = 1;
    std::vector<Outline> outlines_;
};

// Steep axes look best, roomy rows take their numbers more easily.
float Merit(const Composition& c) {
    return c.scale * (1 + c.slope * 0.018f) * (1 + c.gap * 0.001f);
}

}  // namespace

Camera Composition::View() const {
    return Camera::Looking(0, AimFor(slope).elevation);
}

// The top of the part lies at the lower left.
Placement Composition::Page() const {
    return TurnZ(AimFor(slope).turn) * TurnY(-90);
}

std::vector<Composition> Compositions(const Assembly& assembly, QSize size, int margin) {
    const QSizeF room(std::max(1, size.width() - 2 * margin),
                      std::max(1, size.height() - 2 * margin));
    std::vector<Composition> all;
    for (const float slope : Slopes) {
        const Layout layout(assembly, slope);
        for (int rows = 1; rows <= MostRows; ++rows) {
            std::vector<Composition> some = layout.InRows(rows, room);
            std::move(some.begin(), some.end(), std::back_inserter(all));
        }
    }
    std::stable_sort(all.begin(), all.end(), [](const Composition& a, const Composition& b) {
        return Merit(a) > Merit(b);
    });
    return all;
}

}  // namespace render
