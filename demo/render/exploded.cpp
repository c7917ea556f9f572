#include "exploded.h"

#include "components.h"
#include "families.h"
#include "linework.h"
#include "raster.h"

#include <algorithm>
#include <array>
#include <limits>

namespace render {
namespace {

constexpr float Elevation = 24;  // degrees
constexpr float Turn = 32;       // of the axis out of the picture's plane

// The axis runs from the lower left, where the top of the part is, to the upper right.
Placement AlongThePage() {
    return TurnZ(Turn) * TurnY(-90);
}

bool IsBody(ComponentKind kind) {
    using enum ComponentKind;
    constexpr std::array bodies{Corpo, CorpoCilindro, Carcaca, Carter, Base};
    return std::find(bodies.begin(), bodies.end(), kind) != bodies.end();
}

bool IsScrew(ComponentKind kind) {
    using enum ComponentKind;
    constexpr std::array screws{ParafusoSextavado, ParafusoInterno, ParafusoFenda,
                                ParafusoRegulagem, Bujao,           Silenciador,
                                TampaInferior,     TampaoPlastico};
    return std::find(screws.begin(), screws.end(), kind) != screws.end();
}

// What an element covers on the picture, in mm: along the axis for each band across it.
struct Outline {
    float firstBand = 0;  // index of the lowest band
    std::vector<float> from;
    std::vector<float> to;

    float Across() const { return static_cast<float>(from.size()); }
};

// Lays the elements out in rows without overlap.
class Layout {
public:
    Layout(const Assembly& assembly, const Camera& camera) {
        const Vec3 axis = camera.View(AlongThePage().Direction({0, 0, -1}));
        along_ = Normalized(Vec2{axis.x, axis.y});
        across_ = {-along_.y, along_.x};
        foreshortening_ = Length(Vec2{axis.x, axis.y});
        float size = 1;
        for (const Element& element : assembly.elements) {
            size = std::max(size, Length(element.Bounds().Size()));
        }
        band_ = size / 60;
        for (const Element& element : assembly.elements) {
            outlines_.push_back(OutlineOf(element, camera));
        }
        gap_ = size * 0.045f;
    }

    struct Spot {
        float along = 0;  // mm on the picture
        float across = 0;
    };
    struct Row {
        size_t first = 0;
        size_t count = 0;
        float length = 0;
        float low = 0;  // mm across, relative to its axis
        float high = 0;
    };

    // In `count` rows of about equal length.
    std::vector<Row> Rows(int count, std::vector<Spot>& spots) const {
        spots.assign(outlines_.size(), {});
        const float whole = Pack(0, outlines_.size(), spots).length;
        std::vector<Row> rows;
        size_t first = 0;
        for (int i = 0; i < count && first < outlines_.size(); ++i) {
            size_t end = first;
            Row row;
            const bool last = i + 1 == count;
            while (end < outlines_.size()) {
                Row longer = Pack(first, end + 1, spots);
                if (!last && end > first &&
                    longer.length > whole / static_cast<float>(count) * 1.02f) {
                    break;
                }
                row = longer;
                ++end;
            }
            rows.push_back(Pack(first, end, spots));
            first = end;
        }
        return rows;
    }

    Vec2 Along() const { return along_; }
    Vec2 Across() const { return across_; }

private:
    Outline OutlineOf(const Element& element, const Camera& camera) const {
        std::vector<Vec2> points;
        float low = 1e9f;
        float high = -1e9f;
        const Placement page = AlongThePage();
        for (const Piece& piece : element.pieces) {
            const Placement place = page * element.place * piece.place;
            for (const Vertex& vertex : piece.mesh.vertices) {
                const Vec3 v = camera.View(place.Point(vertex.at));
                const Vec2 p{v.x * along_.x + v.y * along_.y, v.x * across_.x + v.y * across_.y};
                points.push_back(p);
                low = std::min(low, p.y);
                high = std::max(high, p.y);
            }
        }
        Outline outline;
        if (points.empty()) {
            return outline;
        }
        outline.firstBand = std::floor(low / band_);
        const auto bands = static_cast<size_t>(std::floor(high / band_) - outline.firstBand) + 1;
        outline.from.assign(bands, 1e9f);
        outline.to.assign(bands, -1e9f);
        const auto bandOf = [&](float y) {
            return static_cast<size_t>(std::max(0.0f, std::floor(y / band_) - outline.firstBand));
        };
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
                for (size_t b = bandOf(bottom); b <= bandOf(top) && b < bands; ++b) {
                    outline.from[b] = std::min(outline.from[b], left);
                    outline.to[b] = std::max(outline.to[b], right);
                }
            }
            first += piece.mesh.vertices.size();
        }
        return outline;
    }

    // Each element as far to the front as the ones before leave room, in every band.
    Row Pack(size_t first, size_t end, std::vector<Spot>& spots) const {
        Row row{first, end - first, 0, 1e9f, -1e9f};
        constexpr int Bands = 512;
        std::array<float, Bands> skyline;
        skyline.fill(-1e9f);
        const auto bandAt = [](float index) {
            return static_cast<size_t>(
                std::clamp(static_cast<int>(index) + Bands / 2, 0, Bands - 1));
        };
        float start = 1e9f;
        float reached = -1e9f;
        for (size_t i = first; i < end; ++i) {
            const Outline& outline = outlines_[i];
            float shift = i == first ? 0 : -1e9f;
            for (size_t b = 0; b < outline.from.size(); ++b) {
                const float sky = skyline[bandAt(outline.firstBand + static_cast<float>(b))];
                if (sky > -1e8f && outline.from[b] < 1e8f) {
                    shift = std::max(shift, sky + gap_ - outline.from[b]);
                }
            }
            if (i > first) {
                // In order along the axis, also where nothing is in the way.
                shift = std::max(shift, spots[i - 1].along + gap_ * 0.5f);
            }
            spots[i].along = shift;
            for (size_t b = 0; b < outline.from.size(); ++b) {
                if (outline.to[b] < -1e8f) {
                    continue;
                }
                // Neighbouring bands as well, so that outlines keep a distance across too.
                for (const float beside : {-1.0f, 0.0f, 1.0f}) {
                    float& sky =
                        skyline[bandAt(outline.firstBand + static_cast<float>(b) + beside)];
                    sky = std::max(sky, outline.to[b] + shift);
                }
                start = std::min(start, outline.from[b] + shift);
                reached = std::max(reached, outline.to[b] + shift);
            }
            if (!outline.from.empty()) {
                row.low = std::min(row.low, outline.firstBand * band_);
                row.high = std::max(row.high, (outline.firstBand + outline.Across()) * band_);
            }
        }
        if (start > reached) {
            row.low = row.high = 0;
            return row;
        }
        for (size_t i = first; i < end; ++i) {
            spots[i].along -= start;
        }
        row.length = reached - start;
        return row;
    }

    Vec2 along_;
    Vec2 across_;
    float foreshortening_ = 1;
    float band_ = 1;
    float gap_ = 1;
    std::vector<Outline> outlines_;
};

struct Arrangement {
    std::vector<Layout::Spot> spots;
    std::vector<Layout::Row> rows;
    Vec2 least;  // mm on the picture
    Vec2 most;
    float scale = 0;
};

// Rows lie below each other; `between` is the room in mm that numbers need between them.
Arrangement Arranged(const Layout& layout, int count, QSizeF room, float between) {
    Arrangement a;
    a.rows = layout.Rows(count, a.spots);
    a.least = {1e9f, 1e9f};
    a.most = {-1e9f, -1e9f};
    float across = 0;
    for (size_t r = 0; r < a.rows.size(); ++r) {
        const Layout::Row& row = a.rows[r];
        across -= r == 0 ? 0 : row.high + between;
        for (size_t i = row.first; i < row.first + row.count; ++i) {
            a.spots[i].across = across;
        }
        for (const float u : {0.0f, row.length}) {
            for (const float v : {row.low, row.high}) {
                const Vec2 p = layout.Along() * u + layout.Across() * (v + across);
                a.least = {std::min(a.least.x, p.x), std::min(a.least.y, p.y)};
                a.most = {std::max(a.most.x, p.x), std::max(a.most.y, p.y)};
            }
        }
        across += row.low;
    }
    const Vec2 extent = a.most - a.least;
    a.scale = std::min(static_cast<float>(room.width()) / std::max(extent.x, 1.0f),
                       static_cast<float>(room.height()) / std::max(extent.y, 1.0f));
    return a;
}

}  // namespace

Assembly ItemsOf(QStringView family, const Parameters& parameters, std::span<const Item> items) {
    Assembly whole = AssemblyFor(family, parameters);
    // The body's size without its pose; levers and rods that stick out do not count.
    float body = 0;
    for (const Element& element : whole.elements) {
        if (IsBody(element.kind)) {
            const Vec3 size = element.Bounds().Size();
            body = std::max(body, std::min(size.x, size.y));
        }
    }
    body = body > 0 ? std::clamp(body, 12.0f, 400.0f) : 80;
    std::vector<bool> taken(whole.elements.size(), false);
    std::array<int, static_cast<size_t>(ComponentKind::Count)> seen{};
    Assembly apart;
    bool belowBody = false;
    for (const Item& item : items) {
        size_t own = 0;
        while (own < whole.elements.size() &&
               (taken[own] || whole.elements[own].kind != item.kind)) {
            ++own;
        }
        if (own < whole.elements.size()) {
            taken[own] = true;
            Element& element = apart.Add(std::move(whole.elements[own]), whole.elements[own].place);
            element.place.origin = {};
        } else {
            // A second one of a kind is a little smaller, so that they can be told apart.
            const int before = seen[static_cast<size_t>(item.kind)]++;
            const float share =
                UsualShare(item.kind) * (1 - 0.12f * static_cast<float>(before % 3));
            apart.Add(Component(item.kind, std::max(3.0f, body * share)),
                      belowBody && IsScrew(item.kind) ? Flip() : Placement{});
        }
        apart.elements.back().item = item.number;
        belowBody = belowBody || IsBody(item.kind);
    }
    return apart;
}

int ExplodedDrawing::ElementAt(QPoint pixel) const {
    if (!image.rect().contains(pixel)) {
        return -1;
    }
    return static_cast<int>(elementOf[static_cast<size_t>(pixel.y() * image.width() + pixel.x())]) -
           1;
}

namespace {

// A pixel of the element as near as can be to a share of its box's height from the top.
QPoint PixelOf(const ExplodedDrawing& drawing, const ExplodedDrawing::Place& place, double share) {
    const QPointF wanted(place.box.center().x(),
                         place.box.top() + share * (place.box.height() - 1));
    QPoint best;
    double distance = std::numeric_limits<double>::max();
    for (int y = place.box.top(); y <= place.box.bottom(); ++y) {
        for (int x = place.box.left(); x <= place.box.right(); ++x) {
            if (drawing.ElementAt({x, y}) != static_cast<int>(place.element)) {
                continue;
            }
            const QPointF off = QPointF(x, y) - wanted;
            if (const double d = QPointF::dotProduct(off, off); d < distance) {
                distance = d;
                best = {x, y};
            }
        }
    }
    return best;
}

void FindPlaces(ExplodedDrawing& drawing, size_t elements) {
    std::vector<QRect> boxes(elements);
    for (int y = 0; y < drawing.image.height(); ++y) {
        for (int x = 0; x < drawing.image.width(); ++x) {
            if (const int element = drawing.ElementAt({x, y}); element >= 0) {
                boxes[static_cast<size_t>(element)] |= QRect(x, y, 1, 1);
            }
        }
    }
    for (size_t i = 0; i < elements; ++i) {
        if (boxes[i].isEmpty()) {
            continue;
        }
        ExplodedDrawing::Place place{i, boxes[i], {}, {}};
        place.upper = PixelOf(drawing, place, 0.2);
        place.lower = PixelOf(drawing, place, 0.8);
        drawing.places.push_back(place);
    }
}

}  // namespace

ExplodedDrawing Explode(const Assembly& assembly, QSize size, int margin) {
    Camera camera = Camera::Looking(0, Elevation);
    const Layout layout(assembly, camera);
    const QSizeF room(std::max(1, size.width() - 2 * margin),
                      std::max(1, size.height() - 2 * margin));
    Arrangement best;
    constexpr int MostRows = 6;
    constexpr float RowGap = 16;  // pixels
    for (int rows = 1; rows <= MostRows; ++rows) {
        // The gap is in pixels: a second round knows the scale.
        const Arrangement first = Arranged(layout, rows, room, 0);
        Arrangement a = Arranged(layout, rows, room, RowGap / std::max(first.scale, 0.01f));
        if (a.scale > best.scale) {
            best = std::move(a);
        }
    }

    ExplodedDrawing drawing;
    drawing.scale = best.scale;
    Buffers buffers(size.width() * LineOversampling, size.height() * LineOversampling);
    camera.scale = best.scale * LineOversampling;
    const Vec2 middle = (best.least + best.most) * 0.5f;
    camera.centre = {static_cast<float>(buffers.width) / 2 - middle.x * camera.scale,
                     static_cast<float>(buffers.height) / 2 + middle.y * camera.scale};
    std::vector<uint16_t> elementOf{0};
    for (size_t i = 0; i < assembly.elements.size(); ++i) {
        const Element& element = assembly.elements[i];
        const Layout::Spot spot = best.spots[i];
        const Vec2 at = layout.Along() * spot.along + layout.Across() * spot.across;
        const Placement page = Move(camera.right * at.x + camera.up * at.y) * AlongThePage();
        for (const Piece& piece : element.pieces) {
            elementOf.push_back(static_cast<uint16_t>(i + 1));
            Rasterise(piece.mesh, page * element.place * piece.place, camera,
                      static_cast<uint16_t>(elementOf.size() - 1), buffers);
        }
    }

    Linework lines(buffers, elementOf, camera.scale);
    constexpr float Overhang = 7 * LineOversampling;
    for (const Layout::Row& row : best.rows) {
        if (row.count == 0) {
            continue;
        }
        const auto sample = [&](float along) {
            const Vec2 p = layout.Along() * along + layout.Across() * best.spots[row.first].across;
            return Vec2{camera.centre.x + p.x * camera.scale, camera.centre.y - p.y * camera.scale};
        };
        const Vec2 from = sample(0);
        const Vec2 to = sample(row.length);
        const Vec2 out = Normalized(to - from) * Overhang;
        lines.AddCentreLine(from - out, to + out);
    }
    drawing.image = lines.Picture();
    drawing.elementOf.resize(static_cast<size_t>(size.width()) *
                             static_cast<size_t>(size.height()));
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            constexpr int Middle = LineOversampling / 2;
            const size_t i =
                buffers.Index(x * LineOversampling + Middle, y * LineOversampling + Middle);
            drawing.elementOf[static_cast<size_t>(y * size.width() + x)] =
                elementOf[buffers.samples[i].surface];
        }
    }
    FindPlaces(drawing, assembly.elements.size());
    return drawing;
}

}  // namespace render
