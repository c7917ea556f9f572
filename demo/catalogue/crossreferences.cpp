#include "crossreferences.h"

#include "assortment.h"
#include "numbers.h"
#include "random.h"
#include "streams.h"
#include "vocabulary.h"

#include <algorithm>
#include <bit>

namespace demo {
namespace {

constexpr quint32 OneInSecond = 25;  // cross references of which one is a second number

const Company& CompanyOf(quint32 index) {
    const auto makers = static_cast<quint32>(Makers().size());
    return index < makers ? Makers()[index].company : Competitors()[index - makers];
}

QString TheirNumber(quint32 company, Random& random) {
    const auto forms = CompanyOf(company).numbers;
    const Text form = forms[random.Below(static_cast<quint32>(forms.size()))];
    return NumberLike(QStringView(form), {}, random);
}

// Shares of the count, none of them above what its table can take.
std::vector<quint32> SharesOf(quint32 count, const std::vector<Referenced>& tables) {
    std::vector<double> weights;
    for (const Referenced& table : tables) {
        weights.push_back(table.numbers.isEmpty() ? 0 : table.share);
    }
    std::vector<quint32> shares = Split(count, weights);
    quint32 over = 0;
    for (int pass = 0; pass < 2; ++pass) {
        for (size_t i = 0; i < tables.size(); ++i) {
            const auto room = static_cast<quint32>(tables[i].numbers.size()) * CompanyCount();
            const quint32 wanted = shares[i] + over;
            shares[i] = std::min(wanted, room);
            over = wanted - shares[i];
        }
    }
    return shares;
}

class Run {
public:
    Run(quint32 count, const Referenced& table, Random random, const CrossReferenceSink& sink)
        : table_(table),
          random_(random),
          sink_(sink),
          left_(count - count / OneInSecond),
          second_(count / OneInSecond, left_) {
        for (const quint32 mask : table.makers) {
            sure_ += static_cast<quint64>(std::popcount(mask));
        }
        slots_ = static_cast<quint64>(table.numbers.size()) * CompanyCount() - sure_;
    }

    void Make() {
        for (qsizetype i = 0; i < table_.numbers.size() && left_ > 0; ++i) {
            const quint32 mask = table_.makers.empty() ? 0 : table_.makers[static_cast<size_t>(i)];
            for (quint32 company = 0; company < CompanyCount(); ++company) {
                if (Wanted(company < 32 && (mask >> company & 1U) != 0)) {
                    Add(company, table_.numbers[i]);
                }
            }
        }
    }

private:
    // Keeps enough back for the makers that come for sure, and takes all when it has to.
    bool Wanted(bool sure) {
        if (left_ == 0) {
            return false;
        }
        if (sure) {
            --sure_;
            return true;
        }
        const quint64 free = left_ > sure_ ? left_ - sure_ : 0;
        return random_.Next() % slots_-- < free;
    }

    void Add(quint32 company, const QString& own) {
        --left_;
        const QString first = TheirNumber(company, random_);
        sink_(company, own, first);
        if (!second_.Take(random_)) {
            return;
        }
        QString other = first;
        while (other == first) {
            other = TheirNumber(company, random_);
        }
        sink_(company, own, other);
    }

    const Referenced& table_;
    Random random_;
    const CrossReferenceSink& sink_;
    quint64 left_;
    Selection second_;
    quint64 sure_ = 0;
    quint64 slots_ = 0;
};

}  // namespace

quint32 CompanyCount() {
    return static_cast<quint32>(Makers().size() + Competitors().size());
}

void MakeCrossReferences(quint64 seed, quint32 count, const std::vector<Referenced>& tables,
                         const CrossReferenceSink& sink) {
    const std::vector<quint32> shares = SharesOf(count, tables);
    for (size_t i = 0; i < tables.size(); ++i) {
        Run(shares[i], tables[i], Random(seed, Stream::CrossReferences, i), sink).Make();
    }
}

}  // namespace demo
