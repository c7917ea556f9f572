#pragma once

#include "random.h"
#include "vocabulary.h"

#include <QString>

#include <unordered_set>

namespace demo {

// A number in the form of `pattern` (see Company), as the catalogue stores it: upper-case letters
// and digits, no zero in front.
QString NumberLike(QStringView pattern, QStringView prefix, Random& random);

// Gives out the maker's own numbers, no number twice: it is the key by which cross references
// attach to parts, components and kits alike.
class OwnNumbers {
public:
    explicit OwnNumbers(qsizetype expected) { given_.reserve(static_cast<size_t>(expected)); }

    QString Take(QStringView prefix, Random& random);

private:
    std::unordered_set<quint64>
        given_;  // each number read in base 37, which is exact up to 12 places
};

}  // namespace demo
