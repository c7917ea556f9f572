#include "figureplan.h"

#include "photographs.h"
#include "random.h"
#include "render/exploded.h"
#include "streams.h"

#include <QDir>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

// The frame of the figure screen.
constexpr QSize Frame(582, 343);

// A quarter of the time for a tenth more bytes.
constexpr int LightlyPacked = 85;

constexpr size_t Least = 8;  // items; what has fewer explains itself
constexpr size_t Most = 60;
constexpr quint32 PercentWithoutFigure = 6;
constexpr quint32 PercentAtTwoPlaces = 25;  // of the items that a part has more than one of
constexpr size_t MostAtTwoPlaces = 3;
constexpr quint32 PercentNotSold = 30;  // have one item that no list offers

bool IsVariant(const Item& item) {
    return item.number.back().isLetter();
}

bool IsDrawn(const Item& item) {
    // A variant has the place of what it replaces, and grease has no shape.
    return !IsVariant(item) && item.kind != ComponentKind::Graxa;
}

bool MayStandTwice(const Item& item) {
    const Class group = Components()[static_cast<size_t>(item.kind)].group;
    return item.quantity > 1 && (group == Class::Seal || group == Class::Fixing);
}

}  // namespace

bool FigurePlan::Add(const Construction& construction, const std::vector<Item>& items) {
    Random random(seed_, Stream::Figures, construction.firstPart);
    const auto drawn = static_cast<size_t>(std::count_if(items.begin(), items.end(), IsDrawn));
    if (drawn < Least || drawn > Most || random.Percent(PercentWithoutFigure)) {
        return false;
    }
    Sheet sheet{construction, {}};
    std::vector<std::pair<size_t, Drawn>> again;
    for (const Item& item : items) {
        if (!IsDrawn(item)) {
            continue;
        }
        sheet.items.push_back({item.kind, item.number});
        if (MayStandTwice(item) && again.size() < MostAtTwoPlaces &&
            random.Percent(PercentAtTwoPlaces)) {
            again.emplace_back(sheet.items.size() + random.Between(1, 4), sheet.items.back());
        }
    }
    // From the last to the first, so that the places stay what they are.
    for (auto it = again.rbegin(); it != again.rend() && sheet.items.size() < Most; ++it) {
        const size_t place = std::min(it->first, sheet.items.size());
        sheet.items.insert(sheet.items.begin() + static_cast<std::ptrdiff_t>(place), it->second);
    }
    if (sheet.items.size() < Most && random.Percent(PercentNotSold)) {
        using enum ComponentKind;
        constexpr std::array kinds{Plaqueta, TampaoPlastico, ArruelaVedacao, Niple};
        const int last = items.back().number.first(4).toInt();
        sheet.items.push_back(
            {kinds[random.Below(kinds.size())], QString::number(last + 1).rightJustified(4)});
    }
    sheets_.push_back(std::move(sheet));
    return true;
}

std::vector<Figure> FigurePlan::Draw(const QString& folder) const {
    const QDir target(folder);
    std::vector<Figure> figures(sheets_.size());
    DrawAll(sheets_.size(), [&](size_t i) {
        const Sheet& sheet = sheets_[i];
        const PartModel model = assortment_.ModelOf(sheet.construction, 0);
        const QString slug = QString::fromUtf16(model.family->slug);
        std::vector<render::Item> items;
        for (const Drawn& drawn : sheet.items) {
            items.push_back({drawn.kind, drawn.number});
        }
        const render::ExplodedDrawing drawing =
            render::Explode(render::ItemsOf(slug, ParametersOf(assortment_, model), items), Frame);
        Figure& figure = figures[i];
        const QString name = slug + u'-' + QString::number(i + 1).rightJustified(4, u'0');
        figure.file = name + u".png"_s;
        for (const render::Callout& callout : drawing.callouts) {
            figure.markers.push_back({items[callout.element].number, callout.box.topLeft()});
        }
        SavePicture(drawing.image, target.filePath(figure.file), LightlyPacked);
        SavePicture(drawing.dense, target.filePath(name + u"@3x.png"_s), LightlyPacked);
    });
    return figures;
}

}  // namespace demo
