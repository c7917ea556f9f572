#pragma once

#include "verificar/finding.h"

namespace verificar {

// What the program prints: faults first, then hints, then one line that sums them up.
QString Report(const QString& folder, const QList<Finding>& findings);

}  // namespace verificar
