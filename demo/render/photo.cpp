#include "photo.h"

#include "raster.h"
#include "studio.h"
#include "visibility.h"

#include <algorithm>
#include <array>

namespace render {
namespace {

constexpr int Oversampling = 2;
constexpr int Middle = Oversampling / 2;  // of a pixel, in samples
constexpr int FloorReach = 5;             // cells over which visibility is smoothed
constexpr int SurfaceReach = 2;
constexpr float Azimuth = 0;  // assemblies turn themselves, the camera stays with the lights

// Tileable noise of unit-sized cells, as three independent values from -1 to 1.
class Grain {
public:
    static const Grain& Get() {
        static const Grain grain;
        return grain;
    }

    Vec3 At(Vec3 p) const {
        const float fx = std::floor(p.x);
        const float fy = std::floor(p.y);
        const float fz = std::floor(p.z);
        const auto ease = [](float t) { return t * t * (3 - 2 * t); };
        const float u = ease(p.x - fx);
        const float v = ease(p.y - fy);
        const float w = ease(p.z - fz);
        const auto x = static_cast<int>(fx);
        const auto y = static_cast<int>(fy);
        const auto z = static_cast<int>(fz);
        const auto row = [&](int dy, int dz) {
            return Cell(x, y + dy, z + dz) * (1 - u) + Cell(x + 1, y + dy, z + dz) * u;
        };
        return (row(0, 0) * (1 - v) + row(1, 0) * v) * (1 - w) +
               (row(0, 1) * (1 - v) + row(1, 1) * v) * w;
    }

private:
    static constexpr int Side = 32;

    Grain() {
        uint32_t state = 2463534242U;
        for (Vec3& cell : cells_) {
            const auto next = [&state] {
                state ^= state << 13;
                state ^= state >> 17;
                state ^= state << 5;
                return static_cast<float>(state & 0xFFFF) / 32767.5f - 1;
            };
            cell.x = next();
            cell.y = next();
            cell.z = next();
        }
    }

    const Vec3& Cell(int x, int y, int z) const {
        constexpr int Mask = Side - 1;
        return cells_[static_cast<size_t>(((z & Mask) * Side + (y & Mask)) * Side + (x & Mask))];
    }

    std::array<Vec3, static_cast<size_t>(Side) * Side * Side> cells_;
};

struct Shaded {
    const Surface* surface;
    const LightTable* lights;
};

class Photographer {
public:
    Photographer(const Assembly& assembly, QSize size)
        : size_(size),
          bounds_(assembly.Bounds()),
          extent_(Length(bounds_.Size())),
          camera_(Camera::Looking(Azimuth, CameraElevation)),
          buffers_(size.width() * Oversampling, size.height() * Oversampling),
          visibility_(assembly, bounds_, {}) {
        Aim(assembly);
        shaded_.push_back({nullptr, nullptr});
        for (const Element& element : assembly.elements) {
            for (const Piece& piece : element.pieces) {
                const Surface& surface = SurfaceOf(piece.material);
                shaded_.push_back({&surface, &LightTable::For(surface.roughness)});
                Rasterise(piece.mesh, assembly.pose * element.place * piece.place, camera_,
                          static_cast<uint16_t>(shaded_.size() - 1), buffers_);
            }
        }
    }

    QImage Develop() {
        Measure();
        QImage image(size_, QImage::Format_RGB32);
        for (int y = 0; y < size_.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < size_.width(); ++x) {
                line[x] = Pixel(x, y);
            }
        }
        return image;
    }

private:
    struct Cell {
        Visibility::Share share;
        float depth = 0;
        Vec3 normal;
        uint16_t surface = 0;
    };

    // Places the camera so that the whole assembly is in the picture.
    void Aim(const Assembly& assembly) {
        const float size = std::max(extent_, 1.0f);
        camera_.target = bounds_.Centre();
        camera_.nearness = 1 / (5.5f * size);
        float left = 1e9f;
        float right = -1e9f;
        float top = 1e9f;
        float bottom = -1e9f;
        for (const Element& element : assembly.elements) {
            for (const Piece& piece : element.pieces) {
                const Placement place = assembly.pose * element.place * piece.place;
                for (const Vertex& vertex : piece.mesh.vertices) {
                    const Vec3 p = camera_.Screen(camera_.View(place.Point(vertex.at)));
                    left = std::min(left, p.x);
                    right = std::max(right, p.x);
                    top = std::min(top, p.y);
                    bottom = std::max(bottom, p.y);
                }
            }
        }
        const auto width = static_cast<float>(buffers_.width);
        const auto height = static_cast<float>(buffers_.height);
        if (left > right) {
            camera_.centre = {width / 2, height / 2};
            return;
        }
        // From a nipple of 20 mm to a reservoir of 1 m.
        const float fill = std::clamp(0.60f + 0.085f * std::log2(size / 40), 0.56f, 0.90f);
        camera_.scale = std::min(width * fill / std::max(right - left, 0.01f),
                                 height * fill * 0.97f / std::max(bottom - top, 0.01f));
        camera_.centre = {width / 2 - (left + right) / 2 * camera_.scale,
                          height * 0.485f - (top + bottom) / 2 * camera_.scale};
    }

    // The point of the world behind a place of the picture.
    Vec3 PointAt(float x, float y, float depth) const {
        const float z = camera_.Distance(depth);
        const float k = (1 - z * camera_.nearness) / camera_.scale;
        return camera_.target + camera_.right * ((x - camera_.centre.x) * k) -
               camera_.up * ((y - camera_.centre.y) * k) + camera_.toward * z;
    }

    Vec3 FloorAt(float x, float y) const {
        const float sx = (x - camera_.centre.x) / camera_.scale;
        const float sy = (camera_.centre.y - y) / camera_.scale;
        const float drop = bounds_.Empty() ? 0 : bounds_.least.z - camera_.target.z;
        const float rise = camera_.up.z * sy;
        const float z = (drop - rise) / std::max(0.05f, camera_.toward.z - rise * camera_.nearness);
        const float k = 1 - z * camera_.nearness;
        return camera_.target + camera_.right * (sx * k) + camera_.up * (sy * k) +
               camera_.toward * z;
    }

    Vec3 World(Vec3 view) const {
        return camera_.right * view.x + camera_.up * view.y + camera_.toward * view.z;
    }

    static Vec3 NormalOf(const Sample& s) {
        return Normalized(
            Vec3{static_cast<float>(s.x), static_cast<float>(s.y), static_cast<float>(s.z)});
    }

    // Visibility on every second pixel, twice: on the parts and on the floor.
    void Measure() {
        half_ = QSize((size_.width() + 1) / 2 + 1, (size_.height() + 1) / 2 + 1);
        cells_.resize(static_cast<size_t>(half_.width()) * static_cast<size_t>(half_.height()));
        for (int y = 0; y < half_.height(); ++y) {
            for (int x = 0; x < half_.width(); ++x) {
                Cell& cell = cells_[CellIndex(x, y)];
                const int sx = std::min(x * 2 * Oversampling + Middle, buffers_.width - 1);
                const int sy = std::min(y * 2 * Oversampling + Middle, buffers_.height - 1);
                const int scatter = (x & 3) + 4 * (y & 3);
                const size_t i = buffers_.Index(sx, sy);
                const Sample& sample = buffers_.samples[i];
                cell.surface = sample.surface;
                const float px = static_cast<float>(sx) + 0.5f;
                const float py = static_cast<float>(sy) + 0.5f;
                if (sample.surface == 0) {
                    cell.share = visibility_.At(FloorAt(px, py), {0, 0, 1}, scatter);
                    continue;
                }
                cell.depth = camera_.Distance(buffers_.depth[i]);
                cell.normal = NormalOf(sample);
                cell.share =
                    visibility_.At(PointAt(px, py, buffers_.depth[i]), World(cell.normal), scatter);
            }
        }
        SmoothShares();
    }

    // A mean over the cells around that lie on the same surface: first along, then across. The
    // floor is smooth anyway and takes a wider one, from running sums.
    void SmoothShares() {
        std::vector<Cell> smooth = cells_;
        for (const bool across : {false, true}) {
            const int lines = across ? half_.width() : half_.height();
            for (int line = 0; line < lines; ++line) {
                SmoothLine(line, across, smooth);
            }
            cells_ = smooth;
        }
    }

    void SmoothLine(int line, bool across, std::vector<Cell>& smooth) const {
        struct Sum {
            double key = 0;
            double tent = 0;
            int cells = 0;
        };
        const int length = across ? half_.height() : half_.width();
        const auto at = [&](int k) { return across ? CellIndex(line, k) : CellIndex(k, line); };
        std::vector<Sum> floor{{}};  // of the cells before each
        for (int k = 0; k < length; ++k) {
            Sum sum = floor.back();
            if (const Cell& cell = cells_[at(k)]; cell.surface == 0) {
                sum = {sum.key + cell.share.key, sum.tent + cell.share.tent, sum.cells + 1};
            }
            floor.push_back(sum);
        }
        for (int k = 0; k < length; ++k) {
            Cell& cell = smooth[at(k)];
            if (cell.surface != 0) {
                cell.share = MeanOfSurface(k, length, at);
                continue;
            }
            const Sum& before = floor[static_cast<size_t>(std::max(0, k - FloorReach))];
            const Sum& after = floor[static_cast<size_t>(std::min(length, k + FloorReach + 1))];
            const int cells = after.cells - before.cells;
            cell.share = {static_cast<float>((after.key - before.key) / cells),
                          static_cast<float>((after.tent - before.tent) / cells)};
        }
    }

    template <typename At>
    Visibility::Share MeanOfSurface(int k, int length, const At& at) const {
        const float near = extent_ * 0.03f;
        const Cell& cell = cells_[at(k)];
        Visibility::Share sum{0, 0};
        float total = 0;
        for (int i = std::max(0, k - SurfaceReach); i <= std::min(length - 1, k + SurfaceReach);
             ++i) {
            const Cell& other = cells_[at(i)];
            if (other.surface != 0 && std::abs(cell.depth - other.depth) <= near &&
                Dot(cell.normal, other.normal) >= 0.8f) {
                sum.key += other.share.key;
                sum.tent += other.share.tent;
                total += 1;
            }
        }
        // A cell without a normal is like none, not even itself.
        return total > 0 ? Visibility::Share{sum.key / total, sum.tent / total} : cell.share;
    }

    // The measured visibility at a pixel, from the four cells around that suit it.
    Visibility::Share ShareAt(int x, int y, uint16_t surface, float depth, Vec3 normal) const {
        Visibility::Share sum{0, 0};
        float total = 0;
        const float fx = static_cast<float>(x & 1) * 0.5f;
        const float fy = static_cast<float>(y & 1) * 0.5f;
        for (int k = 0; k < 4; ++k) {
            const int dx = k & 1;
            const int dy = k >> 1;
            const Cell& cell = cells_[CellIndex(x / 2 + dx, y / 2 + dy)];
            float weight = (dx ? fx : 1 - fx) * (dy ? fy : 1 - fy) + 1e-3f;
            if ((surface == 0) != (cell.surface == 0)) {
                weight *= 1e-4f;
            } else if (surface != 0) {
                const float apart = std::abs(depth - cell.depth) / extent_;
                weight *=
                    std::max(1e-3f, Dot(normal, cell.normal)) / (1 + 400 * apart * apart * 400);
            }
            sum.key += cell.share.key * weight;
            sum.tent += cell.share.tent * weight;
            total += weight;
        }
        return {sum.key / total, sum.tent / total};
    }

    QRgb Pixel(int x, int y) {
        const Sample* first = nullptr;
        bool plain = true;
        Vec3 mean;
        for (int v = 0; v < Oversampling; ++v) {
            const size_t line = buffers_.Index(x * Oversampling, y * Oversampling + v);
            for (int u = 0; u < Oversampling; ++u) {
                const Sample& s = buffers_.samples[line + static_cast<size_t>(u)];
                if (first == nullptr) {
                    first = &s;
                }
                if (s.surface != first->surface) {
                    plain = false;
                }
                mean = mean + Vec3{static_cast<float>(s.x), static_cast<float>(s.y),
                                   static_cast<float>(s.z)};
            }
        }
        constexpr float Samples = Oversampling * Oversampling;
        // A short mean normal tells of an edge between the samples.
        const bool flat = Length(mean) > 0.985f * 32767 * Samples;
        if (plain && first->surface == 0) {
            return Colour(Floor(x, y));
        }
        const size_t middle = buffers_.Index(x * Oversampling + Middle, y * Oversampling + Middle);
        if (plain && flat) {
            return Colour(Shade(x, y, buffers_.samples[middle].surface, Normalized(mean),
                                buffers_.depth[middle]));
        }
        Vec3 sum;
        for (int v = 0; v < Oversampling; ++v) {
            for (int u = 0; u < Oversampling; ++u) {
                const size_t i = buffers_.Index(x * Oversampling + u, y * Oversampling + v);
                const Sample& s = buffers_.samples[i];
                const Vec3 c = s.surface == 0
                                   ? Floor(x, y)
                                   : Shade(x, y, s.surface, NormalOf(s), buffers_.depth[i]);
                // Bright speckles must not outshine their pixel.
                sum = sum + Vec3{std::min(c.x, 1.2f), std::min(c.y, 1.2f), std::min(c.z, 1.2f)};
            }
        }
        return Colour(sum * (1 / Samples));
    }

    Vec3 Shade(int x, int y, uint16_t id, Vec3 normal, float depth) const {
        const Shaded& shaded = shaded_[id];
        const Surface& surface = *shaded.surface;
        const float px = static_cast<float>(x * Oversampling) + Oversampling / 2.0f;
        const float py = static_cast<float>(y * Oversampling) + Oversampling / 2.0f;
        const float z = camera_.Distance(depth);
        const Visibility::Share share = ShareAt(x, y, id, z, normal);
        const Vec3 at = PointAt(px, py, depth);
        if (surface.grain > 0) {
            const Vec3 p = at * (1 / surface.grainSize);
            const Vec3 bump = Grain::Get().At(p) + Grain::Get().At(p * 2.3f) * 0.6f;
            normal = Normalized(normal + bump * surface.grain);
        }
        // Lights and backdrop stand near, so a flat face does not mirror one point only.
        const float size = std::max(extent_, 1.0f);
        const Vec3 off = camera_.View(at) * (0.34f / size);
        const Vec3 leaning = Normalized(Vec3{normal.x + off.x * 0.6f, normal.y + off.y * 0.6f,
                                             std::max(normal.z, 0.0f) + 0.02f});
        const Light light = shaded.lights->At(leaning.x, leaning.y);
        const float grazing = 1 - std::clamp(leaning.z, 0.0f, 1.0f);
        const float fresnel =
            grazing * grazing * grazing * grazing * grazing * (1 - 0.7f * surface.roughness);
        const float height = (at.z - bounds_.least.z) / size;
        const float floor = std::min(1.0f, 0.30f + 2.6f * height) * (0.55f + 0.45f * share.tent);
        const float diffuse = light.diffuseKey * share.key + light.diffuseTent * share.tent +
                              light.diffuseFloor * floor;
        const float mirror = light.mirrorKey * (0.15f + 0.85f * share.key) +
                             light.mirrorTent * (0.25f + 0.75f * share.tent) +
                             light.mirrorFloor * floor;
        const auto channel = [&](float d, float m) {
            return d * diffuse + (m + (1 - m) * fresnel) * mirror;
        };
        return {channel(surface.diffuse.x, surface.mirror.x),
                channel(surface.diffuse.y, surface.mirror.y),
                channel(surface.diffuse.z, surface.mirror.z)};
    }

    // White paper, falling off towards the corners, a little cooler in the shadow.
    Vec3 Floor(int x, int y) const {
        const Visibility::Share share = ShareAt(x, y, 0, 0, {});
        const float u = (static_cast<float>(x) + 0.5f) / static_cast<float>(size_.width()) - 0.5f;
        const float v = (static_cast<float>(y) + 0.5f) / static_cast<float>(size_.height()) - 0.45f;
        const float paper = 1.04f - 0.22f * (u * u + v * v);
        const float lit = 0.44f * share.key + 0.56f * share.tent;
        const float level = paper * (0.10f + 0.90f * lit);
        return {level * (0.985f + 0.015f * lit), level * (0.99f + 0.01f * lit), level};
    }

    static QRgb Colour(Vec3 c) { return qRgb(Developed(c.x), Developed(c.y), Developed(c.z)); }

    size_t CellIndex(int x, int y) const {
        return static_cast<size_t>(y) * static_cast<size_t>(half_.width()) + static_cast<size_t>(x);
    }

    QSize size_;
    Box bounds_;
    float extent_;  // its diagonal, mm
    Camera camera_;
    Buffers buffers_;
    Visibility visibility_;
    std::vector<Shaded> shaded_;
    QSize half_;
    std::vector<Cell> cells_;
};

}  // namespace

QImage Photo(const Assembly& assembly, QSize size) {
    return Photographer(assembly, size).Develop();
}

}  // namespace render
