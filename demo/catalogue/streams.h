#pragma once

#include <QtGlobal>

// Streams of the random generator, one for each thing that is drawn: adding to one leaves the
// others as they are.
namespace demo::Stream {

enum : quint64 {
    Constructions = 1,
    Parameters,
    ComponentKinds,
    ComponentTexts,
    Numbers,
    Items,
    PartItems,
    Kits,
    Vehicles,
    VehicleLinks,
    Gaps,
    CrossReferences,
    Figures,
};

}  // namespace demo::Stream
