#pragma once

#include "assortment.h"
#include "stock.h"

#include <QString>

#include <vector>

namespace demo {

// A row of a part's component list.
struct Item {
    QString number;  // as stored: right-aligned in four, a small letter as a fifth
    ComponentKind kind{};
    quint32 component = 0;
    quint32 quantity = 1;
};

// The items that all parts of a construction have.
std::vector<Item> ItemsOf(const Construction& construction, const Assortment& assortment,
                          ComponentStock& stock, quint64 seed);

// The same list for one of its parts, which has a few components of its own.
std::vector<Item> ItemsOfPart(const std::vector<Item>& items, quint32 part, ComponentStock& stock,
                              quint64 seed);

}  // namespace demo
