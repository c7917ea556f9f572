#pragma once

#include "publicar/lines.h"

namespace publicar {

// Runs the lines on a copy of the order's catalogue, twice, as a customer's computer does after a
// power cut: which statements fail, and what a second run changes that the first one had settled.
// Nothing of the catalogue itself is touched, and no program is started. Throws Erro when there is
// no catalogue to try them on.
void TryScripts(const Order& order, const std::vector<Line>& lines, QList<Finding>& findings);

}  // namespace publicar
