#include "assortment.h"

#include "streams.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

constexpr quint32 MostPartsOfConstruction = 8;

// "{saídas}" in the kit's words: the construction settles that place, the parts vary the others.
bool Settles(const Family& family, const QString& axis) {
    return family.kitNoun != nullptr && !axis.isEmpty() &&
           QStringView(family.kitNoun).contains(u'{' + axis + u'}');
}

}  // namespace

std::vector<quint32> Split(quint32 total, const std::vector<double>& weights) {
    const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
    std::vector<quint32> shares(weights.size());
    if (sum <= 0) {
        return shares;
    }
    std::vector<std::pair<double, size_t>> fractions;
    quint32 given = 0;
    for (size_t i = 0; i < weights.size(); ++i) {
        const double exact = total * weights[i] / sum;
        shares[i] = static_cast<quint32>(exact);
        given += shares[i];
        fractions.emplace_back(shares[i] - exact, i);
    }
    std::sort(fractions.begin(), fractions.end());
    for (size_t i = 0; given < total; ++i, ++given) {
        ++shares[fractions[i % fractions.size()].second];
    }
    return shares;
}

Assortment::Assortment(quint64 seed, quint32 parts) : seed_(seed) {
    for (const auto table :
         {ValveFamilies(), ActuatorFamilies(), SupplyFamilies(), LineFamilies()}) {
        families_.insert(families_.end(), table.begin(), table.end());
    }
    std::vector<double> weights;
    for (const Family& family : families_) {
        wordings_.emplace_back(family.wording);
        weights.push_back(family.weight);
    }
    const std::vector<quint32> shares = Split(parts, weights);
    quint32 part = 0;
    for (quint32 family = 0; family < families_.size(); ++family) {
        Random random(seed_, Stream::Constructions, family);
        for (quint32 left = shares[family]; left > 0;) {
            const quint32 size = std::min(left, random.Between(1, MostPartsOfConstruction));
            constructions_.push_back({family, part, size});
            part += size;
            left -= size;
        }
    }
}

const Wording& Assortment::WordingOf(const Family& family) const {
    return wordings_[static_cast<size_t>(&family - families_.data())];
}

PartModel Assortment::ModelOf(const Construction& construction, quint32 ordinal) const {
    const Family& family = families_[construction.family];
    const Wording& wording = WordingOf(family);
    Random random(seed_, Stream::Parameters, construction.firstPart);
    PartModel model{&family, {}};
    // The parts run through the values of the places that are free, the first place fastest.
    quint64 step = ordinal;
    for (const Wording::Axis& axis : wording.Axes()) {
        const auto count = static_cast<quint32>(axis.values.size());
        const quint32 start = random.Below(count);
        if (Settles(family, axis.name)) {
            model.choices.append(static_cast<quint16>(start));
            continue;
        }
        const quint64 place = start + step % count;
        model.choices.append(static_cast<quint16>(place % count));
        step /= count;
    }
    return model;
}

QString Assortment::Description(const PartModel& model) const {
    return WordingOf(*model.family).Text(model.choices);
}

QList<std::pair<QString, QString>> Assortment::ValuesOf(const PartModel& model) const {
    QList<std::pair<QString, QString>> values;
    const QList<Wording::Axis>& axes = WordingOf(*model.family).Axes();
    for (qsizetype i = 0; i < axes.size(); ++i) {
        values.append({axes[i].name, axes[i].values[model.choices[i]]});
    }
    return values;
}

QString Assortment::PhotoOf(const PartModel& model) const {
    QString name = QString::fromUtf16(model.family->slug) + u'-';
    for (const quint16 choice : model.choices) {
        name += QString::number(choice, 36);
    }
    return name + u".jpg"_s;
}

QString Assortment::GalleryPhotoOf(const Family& family) {
    return u"galeria-"_s + QString::fromUtf16(family.slug) + u".jpg"_s;
}

QString Assortment::KitNoun(const Construction& construction) const {
    const Family& family = families_[construction.family];
    const Wording& wording = WordingOf(family);
    const PartModel model = ModelOf(construction, 0);
    QString noun = QString::fromUtf16(family.kitNoun);
    for (qsizetype i = 0; i < wording.Axes().size(); ++i) {
        const Wording::Axis& axis = wording.Axes()[i];
        noun.replace(u'{' + axis.name + u'}', axis.values[model.choices[i]]);
    }
    return noun;
}

}  // namespace demo
