#pragma once

#include "assortment.h"
#include "random.h"
#include "vocabulary.h"
#include "wording.h"

#include <QString>

#include <optional>
#include <vector>

namespace demo {

// The components: of each kind as many as the bills of material ask for, and for each use one of
// them.
class ComponentStock {
public:
    // The last `spare` components are never picked: nothing uses them.
    ComponentStock(quint64 seed, quint32 count, quint32 spare, const Assortment& assortment);

    quint32 Count() const { return static_cast<quint32>(kinds_.size()); }
    ComponentKind KindOf(quint32 component) const { return kinds_[component]; }
    QString Description(quint32 component) const;

    // One of the kind: some that were used before, and over a whole run every one of them. Empty
    // when the catalogue is so small that it has none of that kind.
    std::optional<quint32> Pick(ComponentKind kind, Random& random);

private:
    struct Pool {
        std::vector<quint32> components;
        size_t used = 0;
        double picksToCome = 0;
    };

    quint64 seed_;
    std::vector<Wording> wordings_;
    std::vector<ComponentKind> kinds_;
    std::vector<Pool> pools_;
};

}  // namespace demo
