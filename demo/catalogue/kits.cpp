#include "kits.h"

#include "streams.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

constexpr quint32 PercentShared = 50;

bool IsRepaired(const Family& family) {
    return family.kitNoun != nullptr;
}

std::vector<size_t> ItemsFor(const KitKind& kind, const std::vector<Item>& items) {
    std::vector<size_t> chosen;
    for (size_t i = 0; i < items.size(); ++i) {
        const Class group = Components()[static_cast<size_t>(items[i].kind)].group;
        if (std::find(kind.groups.begin(), kind.groups.end(), group) != kind.groups.end()) {
            chosen.push_back(i);
        }
    }
    return chosen;
}

QString Describe(const KitKind& kind, const QString& noun) {
    return QString::fromUtf16(kind.title) + u" - "_s + noun;
}

}  // namespace

KitPlan::KitPlan(quint64 seed, quint32 count, quint32 spare, const Assortment& assortment)
    : seed_(seed), assortment_(assortment), descriptions_(count) {
    std::vector<const Construction*> repaired;
    for (const Construction& construction : assortment.Constructions()) {
        if (IsRepaired(assortment.Families()[construction.family])) {
            repaired.push_back(&construction);
        }
    }
    repaired_ = static_cast<quint32>(repaired.size());
    toGive_ = repaired_ == 0 ? 0 : count - spare;
    DescribeSpare(repaired);
}

// Kits of parts that are no longer made.
void KitPlan::DescribeSpare(const std::vector<const Construction*>& repaired) {
    Random random(seed_, Stream::Kits);
    for (size_t i = toGive_; i < descriptions_.size(); ++i) {
        const QString noun =
            repaired.empty() ? u"conjunto"_s
                             : assortment_.KitNoun(
                                   *repaired[random.Below(static_cast<quint32>(repaired.size()))]);
        descriptions_[i] = u"Fora de linha - "_s + noun;
    }
}

std::vector<Kit> KitPlan::KitsOfNext(const Construction& construction,
                                     const std::vector<Item>& items) {
    const Family& family = assortment_.Families()[construction.family];
    if (!IsRepaired(family)) {
        return {};
    }
    ++seen_;
    const quint32 until = static_cast<quint32>(static_cast<quint64>(toGive_) * seen_ / repaired_);
    const QString noun = assortment_.KitNoun(construction);

    std::vector<Kit> possible;
    std::vector<QString> descriptions;
    for (const KitKind& kind : KitsOf(family.bill)) {
        std::vector<size_t> chosen = ItemsFor(kind, items);
        if (!chosen.empty()) {
            possible.push_back({0, std::move(chosen), {}});
            descriptions.push_back(Describe(kind, noun));
        }
    }

    std::vector<Kit> kits;
    for (size_t i = 0; given_ < until; ++i, ++given_) {
        if (possible.empty()) {
            // Too few components for a list: the kit stands in the catalogue all the same.
            descriptions_[given_] = Describe(KitsOf(family.bill).front(), noun);
            continue;
        }
        const size_t choice = i % possible.size();
        const size_t round = i / possible.size();
        kits.push_back({given_, possible[choice].items, {}});
        if (round > 0) {
            kits.back().onlyFor = static_cast<quint32>((round - 1) % construction.parts);
        }
        descriptions_[given_] = descriptions[choice];
    }
    if (kits.empty()) {
        return kits;
    }

    // Constructions with the same words often take the same full repair kit.
    Random random(seed_, Stream::Kits, construction.firstPart + 1);
    const quint32 first = kits.front().kit;
    if (previousRepairKit_ && previousDescription_ == descriptions_[first] &&
        random.Percent(PercentShared)) {
        kits.push_back({*previousRepairKit_, kits.front().items, {}});
    }
    previousRepairKit_ = first;
    previousDescription_ = descriptions_[first];
    return kits;
}

}  // namespace demo
