#pragma once

#include "verificar/finding.h"

namespace dao {
class Connection;
}

namespace verificar {

// Tables, columns and indexes that a new catalogue has and this one lacks. An index counts by its
// columns, their collation and whether it is unique, not by its name. What a catalogue has beyond
// that is its own affair. Returns whether it lacks nothing.
bool CheckStructure(dao::Connection& catalogue, int examples, QList<Finding>& findings);

}  // namespace verificar
