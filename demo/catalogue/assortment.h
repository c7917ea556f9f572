#pragma once

#include "random.h"
#include "vocabulary.h"
#include "wording.h"

#include <QList>
#include <QString>

#include <vector>

namespace demo {

struct Sizes {
    quint32 parts = 3000;
    quint32 components = 9000;
    quint32 kits = 1200;
    quint32 vehicles = 600;
    quint32 crossReferences = 40000;
};

// Parts of one family with the same inner construction: they share item numbers, kits and, when
// they have one, the drawing.
struct Construction {
    quint32 family = 0;
    quint32 firstPart = 0;  // zero-based; parts of a construction follow each other
    quint32 parts = 0;
};

// One part as a set of parameters: its text and its looks follow from these.
struct PartModel {
    const Family* family = nullptr;
    Wording::Choices choices;
};

// What is sold: how many parts each family has, in which constructions and with which parameters.
// The same seed and number of parts give the same assortment, whatever the other sizes.
class Assortment {
public:
    Assortment(quint64 seed, quint32 parts);

    const std::vector<Family>& Families() const { return families_; }
    const std::vector<Construction>& Constructions() const { return constructions_; }

    PartModel ModelOf(const Construction& construction, quint32 ordinal) const;
    QString Description(const PartModel& model) const;

    // The places of its text that have a name, with their values.
    QList<std::pair<QString, QString>> ValuesOf(const PartModel& model) const;

    // File name of the photograph: one for each look, so that parts that look alike share it.
    QString PhotoOf(const PartModel& model) const;
    static QString GalleryPhotoOf(const Family& family);

    // How a kit of this construction names what it repairs.
    QString KitNoun(const Construction& construction) const;

private:
    const Wording& WordingOf(const Family& family) const;

    quint64 seed_;
    std::vector<Family> families_;
    std::vector<Wording> wordings_;
    std::vector<Construction> constructions_;
};

// `total` split in proportion to `weights`; the remainders go to the largest fractions.
std::vector<quint32> Split(quint32 total, const std::vector<double>& weights);

}  // namespace demo
