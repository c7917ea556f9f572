#pragma once

#include <QString>

// What the part views are measured on, besides the catalogue as it is made.
namespace bench {

struct ViewData {
    QString smallPart;        // stored number of a part of 20 items
    QString largePart;        // of a part of 1,000 items
    QString sharedComponent;  // stored number of a component that 40 parts have
};

// Looks them up in the open catalogue and makes them and their photos where they are missing.
ViewData PrepareViewData();

}  // namespace bench
