#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace demo {

// Makers and competitors, counted through in this order.
quint32 CompanyCount();

// The maker's numbers that cross references are made for.
struct Referenced {
    const QStringList& numbers;
    std::vector<quint32> makers;  // for each number a bit mask of makers that surely have one
    quint32 share;                // of all cross references, in percent
};

using CrossReferenceSink =
    std::function<void(quint32 company, const QString& own, const QString& theirs)>;

// Exactly `count` cross references, at most one a number and company apart from those few that
// have a second one. `count` may be up to CompanyCount() for each number.
void MakeCrossReferences(quint64 seed, quint32 count, const std::vector<Referenced>& tables,
                         const CrossReferenceSink& sink);

}  // namespace demo
