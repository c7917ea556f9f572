#include "items.h"

#include "streams.h"

#include <algorithm>

namespace demo {
namespace {

constexpr quint32 PercentSameAgain = 25;  // a line's next item is the same component once more
constexpr quint32 PercentVariant = 5;     // an item has a variant, with a letter
constexpr quint32 PercentThirdVariant = 25;
constexpr quint32 PercentOwnComponent = 12;
constexpr int Attempts = 4;

QString ItemNumber(quint32 number, QLatin1StringView letter = {}) {
    return QString::number(number).rightJustified(4) + letter;
}

quint32 QuantityOf(ComponentKind kind, Random& random) {
    const quint32 most = Components()[static_cast<size_t>(kind)].most;
    // Fixings come in pairs.
    return most < 4 ? random.Between(1, most) : 2 * random.Between(1, most / 2);
}

bool Holds(const std::vector<Item>& items, quint32 component) {
    return std::any_of(items.begin(), items.end(),
                       [component](const Item& item) { return item.component == component; });
}

// A component that the list does not have yet, as far as the stock goes.
std::optional<quint32> PickNew(ComponentKind kind, const std::vector<Item>& items,
                               ComponentStock& stock, Random& random) {
    std::optional<quint32> component;
    for (int i = 0; i < Attempts; ++i) {
        component = stock.Pick(kind, random);
        if (!component || !Holds(items, *component)) {
            break;
        }
    }
    return component;
}

class Builder {
public:
    Builder(ComponentStock& stock, Random& random) : stock_(stock), random_(random) {}

    void AddLine(const BillLine& line) {
        if (!random_.Percent(line.percent)) {
            return;
        }
        const quint32 count = random_.Between(line.least, line.most);
        for (quint32 i = 0; i < count; ++i) {
            if (i > 0 && !items_.empty() && random_.Percent(PercentSameAgain)) {
                const quint32 component = items_.back().component;
                Add(line.kind, component, ItemNumber(++number_));
                continue;
            }
            AddNew(line.kind);
        }
    }

    std::vector<Item> Take() { return std::move(items_); }

private:
    void AddNew(ComponentKind kind) {
        const auto component = PickNew(kind, items_, stock_, random_);
        if (!component) {
            return;
        }
        Add(kind, *component, ItemNumber(++number_));
        if (!random_.Percent(PercentVariant)) {
            return;
        }
        AddVariant(kind, QLatin1StringView("a"));
        if (random_.Percent(PercentThirdVariant)) {
            AddVariant(kind, QLatin1StringView("b"));
        }
    }

    void AddVariant(ComponentKind kind, QLatin1StringView letter) {
        if (const auto component = PickNew(kind, items_, stock_, random_)) {
            Add(kind, *component, ItemNumber(number_, letter));
        }
    }

    void Add(ComponentKind kind, quint32 component, const QString& number) {
        items_.push_back({number, kind, component, QuantityOf(kind, random_)});
    }

    ComponentStock& stock_;
    Random& random_;
    std::vector<Item> items_;
    quint32 number_ = 0;
};

}  // namespace

std::vector<Item> ItemsOf(const Construction& construction, const Assortment& assortment,
                          ComponentStock& stock, quint64 seed) {
    Random random(seed, Stream::Items, construction.firstPart);
    Builder builder(stock, random);
    for (const BillLine& line : LinesOf(assortment.Families()[construction.family].bill)) {
        builder.AddLine(line);
    }
    return builder.Take();
}

std::vector<Item> ItemsOfPart(const std::vector<Item>& items, quint32 part, ComponentStock& stock,
                              quint64 seed) {
    std::vector<Item> own = items;
    Random random(seed, Stream::PartItems, part);
    for (Item& item : own) {
        if (!random.Percent(PercentOwnComponent)) {
            continue;
        }
        if (const auto component = PickNew(item.kind, own, stock, random)) {
            item.component = *component;
        }
    }
    return own;
}

}  // namespace demo
