#pragma once

#include "publicar/release.h"

namespace publicar {

// What is wrong with the names and sizes: what an installer refuses or a list cannot hold, and what
// earlier lists of the site name already. Expects gCaminho.
void CheckNames(const Order& order, const std::vector<File>& files, QList<Finding>& findings);

// Whether the site may get this version.
void CheckSite(const Order& order, QList<Finding>& findings);

}  // namespace publicar
