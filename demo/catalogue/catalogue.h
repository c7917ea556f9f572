#pragma once

#include "assortment.h"
#include "platform/dao/connection.h"

#include <QtGlobal>

namespace demo {

// A code of more than six digits would be cut on its way from the search to the part views.
inline constexpr quint32 MostRows = 999999;

// Fills an empty catalogue. Rows and codes are the same for the same seed and sizes. `connection`
// is the only user of the file, and what is in it when this throws is worth nothing.
// Figures are drawn into `figureFolder`; without one no part has a figure.
void FillCatalogue(dao::Connection& connection, const Sizes& sizes, quint64 seed,
                   const QString& figureFolder = {});

}  // namespace demo
