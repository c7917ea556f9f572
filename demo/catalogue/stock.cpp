#include "stock.h"

#include "streams.h"

#include <algorithm>
#include <utility>

namespace demo {
namespace {

// How many picks of each kind the constructions will make, roughly.
std::vector<double> ExpectedPicks(const Assortment& assortment) {
    std::vector<double> picks(static_cast<size_t>(ComponentKind::Count));
    for (const Construction& construction : assortment.Constructions()) {
        const Family& family = assortment.Families()[construction.family];
        for (const BillLine& line : LinesOf(family.bill)) {
            picks[static_cast<size_t>(line.kind)] +=
                (line.least + line.most) / 2.0 * line.percent / 100.0;
        }
    }
    return picks;
}

}  // namespace

ComponentStock::ComponentStock(quint64 seed, quint32 count, quint32 spare,
                               const Assortment& assortment)
    : seed_(seed) {
    for (const Component& component : Components()) {
        wordings_.emplace_back(component.wording);
    }
    const std::vector<double> picks = ExpectedPicks(assortment);
    const std::vector<quint32> shares = Split(count, picks);
    kinds_.reserve(count);
    for (size_t kind = 0; kind < shares.size(); ++kind) {
        kinds_.insert(kinds_.end(), shares[kind], static_cast<ComponentKind>(kind));
    }
    // Nothing asks for a component when only loose parts are sold.
    kinds_.resize(count, ComponentKind::AnelVedacao);
    Random random(seed, Stream::ComponentKinds);
    for (quint32 i = count; i > 1; --i) {
        std::swap(kinds_[i - 1], kinds_[random.Below(i)]);
    }

    pools_.resize(shares.size());
    for (quint32 component = 0; component + spare < count; ++component) {
        pools_[static_cast<size_t>(kinds_[component])].components.push_back(component);
    }
    for (size_t kind = 0; kind < pools_.size(); ++kind) {
        pools_[kind].picksToCome = picks[kind];
    }
}

QString ComponentStock::Description(quint32 component) const {
    const Wording& wording = wordings_[static_cast<size_t>(kinds_[component])];
    Random random(seed_, Stream::ComponentTexts, component);
    return wording.Text(wording.ChoicesOf(random.Next() % wording.Combinations()));
}

std::optional<quint32> ComponentStock::Pick(ComponentKind kind, Random& random) {
    Pool& pool = pools_[static_cast<size_t>(kind)];
    const auto size = static_cast<quint32>(pool.components.size());
    if (size == 0) {
        return std::nullopt;
    }
    // A little more than its share, so that the last ones do not hang on the last picks.
    const double unused = static_cast<double>(size - pool.used);
    const double percent = 115.0 * unused / std::max(pool.picksToCome, 1.0);
    pool.picksToCome -= 1;
    if (pool.used < size && random.Below(100) < percent) {
        return pool.components[pool.used++];
    }
    return pool.components[random.Below(size)];
}

}  // namespace demo
