#include "exploded.h"

#include "components.h"
#include "composition.h"
#include "linework.h"
#include "models.h"
#include "raster.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace render {
namespace {

constexpr int Margin = 22;  // pixels that stay free for numbers at every side
constexpr int Attempts = 24;

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

namespace {

Element Enlarged(const Element& element, float factor) {
    Element large = element;
    for (Piece& piece : large.pieces) {
        piece.place.origin = piece.place.origin * factor;
        for (Vertex& vertex : piece.mesh.vertices) {
            vertex.at = vertex.at * factor;
        }
    }
    return large;
}

Assembly WithSmallOnesEnlarged(const Assembly& assembly) {
    float largest = 1;
    std::vector<float> sizes;
    for (const Element& element : assembly.elements) {
        sizes.push_back(Length(element.Bounds().Size()));
        largest = std::max(largest, sizes.back());
    }
    Assembly all;
    all.pose = assembly.pose;
    for (size_t i = 0; i < sizes.size(); ++i) {
        const float factor = std::pow(largest / std::max(sizes[i], 0.1f), 0.32f);
        all.elements.push_back(Enlarged(assembly.elements[i], std::min(factor, 2.2f)));
    }
    return all;
}

// One way to lay the elements out, as samples of the picture.
class Sheet {
public:
    Sheet(const Assembly& assembly, const Composition& composition, QSize size, int oversampling)
        : composition_(composition),
          camera_(composition.View()),
          size_(size),
          oversampling_(oversampling),
          buffers_(size.width() * oversampling, size.height() * oversampling) {
        camera_.scale = composition.scale * static_cast<float>(oversampling);
        camera_.centre = {
            static_cast<float>(buffers_.width) / 2 - composition.middle.x * camera_.scale,
            static_cast<float>(buffers_.height) / 2 + composition.middle.y * camera_.scale};
        for (size_t i = 0; i < assembly.elements.size(); ++i) {
            const Element& element = assembly.elements[i];
            const Vec2 at = composition.spots[i];
            const Placement page =
                Move(camera_.right * at.x + camera_.up * at.y) * composition.Page();
            for (const Piece& piece : element.pieces) {
                elementOf_.push_back(static_cast<uint16_t>(i + 1));
                Rasterise(piece.mesh, page * element.place * piece.place, camera_,
                          static_cast<uint16_t>(elementOf_.size() - 1), buffers_);
            }
        }
    }

    Plan ToPlan() const {
        Plan plan;
        plan.size = size_;
        const auto pixels =
            static_cast<size_t>(size_.width()) * static_cast<size_t>(size_.height());
        plan.elementOf.reserve(pixels);
        for (int y = 0; y < size_.height(); ++y) {
            for (int x = 0; x < size_.width(); ++x) {
                const int middle = oversampling_ / 2;
                const size_t i =
                    buffers_.Index(x * oversampling_ + middle, y * oversampling_ + middle);
                plan.elementOf.push_back(elementOf_[buffers_.samples[i].surface]);
            }
        }
        plan.lines.assign(pixels, 0);
        for (const Composition::CentreLine& row : composition_.rows) {
            const auto [from, to] = CentreLine(row);
            const float steps = Length(to - from) + 1;
            for (float t = 0; t <= 1; t += 1 / steps) {
                const Vec2 p = (from + (to - from) * t) * (1 / static_cast<float>(oversampling_));
                if (size_.width() > p.x && p.x >= 0 && size_.height() > p.y && p.y >= 0) {
                    plan.lines[static_cast<size_t>(static_cast<int>(p.y) * size_.width() +
                                                   static_cast<int>(p.x))] = 1;
                }
            }
        }
        return plan;
    }

    Linework ToLines() const {
        Linework lines(buffers_, elementOf_, camera_.scale);
        for (const Composition::CentreLine& row : composition_.rows) {
            const auto [from, to] = CentreLine(row);
            lines.AddCentreLine(from, to);
        }
        return lines;
    }

private:
    // In samples, a little longer than its row.
    std::pair<Vec2, Vec2> CentreLine(const Composition::CentreLine& row) const {
        const auto sample = [this](Vec2 p) {
            return Vec2{camera_.centre.x + p.x * camera_.scale,
                        camera_.centre.y - p.y * camera_.scale};
        };
        const Vec2 from = sample(row.from);
        const Vec2 to = sample(row.to);
        const Vec2 out = Normalized(to - from) * (7.0f * static_cast<float>(oversampling_));
        return {from - out, to + out};
    }

    const Composition& composition_;
    Camera camera_;
    QSize size_;
    int oversampling_;
    Buffers buffers_;
    std::vector<uint16_t> elementOf_{0};
};

void DrawLeaders(QImage& image, const std::vector<Callout>& callouts, int density) {
    QImage canvas = image.convertToFormat(QImage::Format_RGB32);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(density, density);
    painter.setPen(QPen(Qt::black, 0.7, Qt::SolidLine, Qt::FlatCap));
    for (const Callout& callout : callouts) {
        painter.drawLine(callout.onPart + QPointF(0.5, 0.5), callout.atNumber + QPointF(0.5, 0.5));
    }
    painter.end();
    image = canvas.convertToFormat(QImage::Format_Grayscale8);
}

}  // namespace

ExplodedDrawing Explode(const Assembly& original, QSize size) {
    const Assembly assembly = WithSmallOnesEnlarged(original);
    std::vector<QString> numbers;
    for (const Element& element : assembly.elements) {
        numbers.push_back(element.item);
    }
    // The largest drawing on which all numbers find a place; else the one with the fewest faults.
    const std::vector<Composition> all = Compositions(assembly, size, Margin);
    const Composition* best = nullptr;
    Callouts callouts;
    for (size_t i = 0; i < all.size() && i < Attempts; ++i) {
        const Plan plan = Sheet(assembly, all[i], size, 1).ToPlan();
        Callouts placed = PlaceCallouts(plan, numbers, all[i].slope);
        if (best == nullptr || placed.faults < callouts.faults) {
            best = &all[i];
            callouts = std::move(placed);
        }
        if (callouts.faults == 0) {
            break;
        }
    }
    ExplodedDrawing drawing;
    const Sheet sheet(assembly, *best, size, LineOversampling);
    const Linework lines = sheet.ToLines();
    drawing.image = lines.Picture(LineOversampling);
    DrawLeaders(drawing.image, callouts.all, 1);
    drawing.dense = lines.Picture(LineOversampling / Density);
    DrawLeaders(drawing.dense, callouts.all, Density);
    drawing.callouts = std::move(callouts.all);
    drawing.faults = callouts.faults;
    drawing.plan = sheet.ToPlan();
    drawing.scale = best->scale;
    return drawing;
}

}  // namespace render
