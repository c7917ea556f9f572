#pragma once

#include "vocabulary.h"

#include <QString>

#include <vector>

namespace demo {

// The vehicles, those of one maker after another, and which part fits which.
class Fleet {
public:
    struct Vehicle {
        quint32 maker = 0;  // in the order of Makers()
        QString description;
    };
    struct Fit {
        quint32 makers = 0;             // bit mask
        std::vector<quint32> vehicles;  // zero-based, ascending
    };

    // The last `spare` vehicles take no part.
    Fleet(quint64 seed, quint32 count, quint32 spare);

    const std::vector<Vehicle>& Vehicles() const { return vehicles_; }

    // The same for the same part, whenever it is asked.
    Fit FitOf(quint32 part, Use use) const;

private:
    quint64 seed_;
    std::vector<Vehicle> vehicles_;
    std::vector<quint32> begins_;  // first vehicle of each maker; one more for the end
};

}  // namespace demo
