#pragma once

#include "assortment.h"
#include "items.h"

#include <QPoint>
#include <QString>

#include <vector>

namespace demo {

// An exploded drawing that all parts of a construction share, with the numbers on it.
struct Figure {
    struct Marker {
        QString item;   // as stored
        QPoint corner;  // of its box, pixels of the picture
    };
    QString file;
    std::vector<Marker> markers;
};

// The figures of a catalogue. What is drawn follows from the seed; the drawing waits for Draw(), so
// that all processors share it.
class FigurePlan {
public:
    FigurePlan(quint64 seed, const Assortment& assortment) : seed_(seed), assortment_(assortment) {}

    // Whether the construction has a figure: enough items, and no gap in the catalogue. If so, it
    // becomes the next one of Draw().
    bool Add(const Construction& construction, const std::vector<Item>& items);

    size_t Count() const { return sheets_.size(); }

    // Writes the pictures into the folder. Throws Erro when it cannot.
    std::vector<Figure> Draw(const QString& folder) const;

private:
    struct Drawn {
        ComponentKind kind;
        QString number;
    };
    struct Sheet {
        Construction construction;
        std::vector<Drawn> items;
    };

    quint64 seed_;
    const Assortment& assortment_;
    std::vector<Sheet> sheets_;
};

}  // namespace demo
