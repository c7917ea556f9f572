#pragma once

#include "assortment.h"
#include "items.h"

#include <QString>

#include <optional>
#include <vector>

namespace demo {

// A repair kit and the items of a construction that it holds.
struct Kit {
    quint32 kit = 0;  // zero-based
    std::vector<size_t> items;
    std::optional<quint32> onlyFor;  // one part of the construction; none: all of them
};

// Hands the kits out to the constructions that are repaired at all.
class KitPlan {
public:
    // The last `spare` kits belong to no part.
    KitPlan(quint64 seed, quint32 count, quint32 spare, const Assortment& assortment);

    // To be called for each construction once, in their order.
    std::vector<Kit> KitsOfNext(const Construction& construction, const std::vector<Item>& items);

    // One for each kit, once all constructions have been through.
    const std::vector<QString>& Descriptions() const { return descriptions_; }

private:
    void DescribeSpare(const std::vector<const Construction*>& repaired);

    quint64 seed_;
    const Assortment& assortment_;
    std::vector<QString> descriptions_;
    quint32 toGive_ = 0;  // without the spare ones
    quint32 given_ = 0;
    quint32 repaired_ = 0;  // constructions that get kits
    quint32 seen_ = 0;
    std::optional<quint32> previousRepairKit_;  // shared with the next construction of its words
    QString previousDescription_;
};

}  // namespace demo
