#include "vehicles.h"

#include "assortment.h"
#include "random.h"
#include "streams.h"
#include "wording.h"

#include <algorithm>
#include <utility>

namespace demo {
namespace {

constexpr quint32 PercentWithoutVehicles = 8;
constexpr quint32 LongestRun = 8;  // models that follow each other take the same part

void Describe(const Maker& maker, quint32 count, Random& random, auto&& add) {
    std::vector<Wording> wordings;
    std::vector<double> weights;
    for (const Text text : maker.vehicles) {
        wordings.emplace_back(text);
        weights.push_back(static_cast<double>(wordings.back().Combinations()));
    }
    const std::vector<quint32> shares = Split(count, weights);
    for (size_t i = 0; i < wordings.size(); ++i) {
        const quint64 combinations = wordings[i].Combinations();
        Selection listed(shares[i], combinations);
        quint32 left = shares[i];
        for (quint64 c = 0; c < combinations && left > 0; ++c) {
            if (listed.Take(random)) {
                add(wordings[i].Text(wordings[i].ChoicesOf(c)));
                --left;
            }
        }
        // More vehicles than models: the next series of the same models.
        for (quint64 c = 0; left > 0; ++c, --left) {
            const QString series = QString::number(2 + c / combinations);
            add(wordings[i].Text(wordings[i].ChoicesOf(c)) + QStringLiteral(" - série ") + series);
        }
    }
}

}  // namespace

Fleet::Fleet(quint64 seed, quint32 count, quint32 spare) : seed_(seed) {
    const std::vector<quint32> shares = Split(count, std::vector<double>(Makers().size(), 1.0));
    vehicles_.reserve(count);
    for (quint32 maker = 0; maker < shares.size(); ++maker) {
        begins_.push_back(static_cast<quint32>(vehicles_.size()));
        Random random(seed, Stream::Vehicles, maker);
        Describe(Makers()[maker], shares[maker], random, [this, maker](QString description) {
            vehicles_.push_back({maker, std::move(description)});
        });
    }
    begins_.push_back(count - spare);
}

Fleet::Fit Fleet::FitOf(quint32 part, Use use) const {
    Fit fit;
    Random random(seed_, Stream::VehicleLinks, part);
    if (random.Percent(PercentWithoutVehicles)) {
        return fit;
    }
    std::vector<quint32> candidates;
    for (quint32 maker = 0; maker < Makers().size(); ++maker) {
        if ((Makers()[maker].use & use) != 0 && begins_[maker] < begins_[maker + 1]) {
            candidates.push_back(maker);
        }
    }
    // Half of the parts go to one maker, some to three.
    const quint32 wanted = 1 + (random.Percent(50) ? random.Between(1, 2) : 0);
    for (quint32 i = 0; i < wanted && !candidates.empty(); ++i) {
        const quint32 choice = random.Below(static_cast<quint32>(candidates.size()));
        const quint32 maker = candidates[choice];
        candidates.erase(candidates.begin() + choice);
        fit.makers |= 1U << maker;
        const quint32 start = begins_[maker] + random.Below(begins_[maker + 1] - begins_[maker]);
        const quint32 end = std::min(start + random.Between(1, LongestRun), begins_[maker + 1]);
        for (quint32 vehicle = start; vehicle < end; ++vehicle) {
            fit.vehicles.push_back(vehicle);
        }
    }
    std::sort(fit.vehicles.begin(), fit.vehicles.end());
    return fit;
}

}  // namespace demo
