#pragma once

#include "verificar/finding.h"

namespace verificar {

struct Order {
    QString folder;     // the data folder, in the platform's form
    int examples = 5;   // at most so many for each finding
    bool full = false;  // compares each index with its table, entry by entry
};

// All faults and hints of a data folder, in the order in which they should be put right: the file,
// its structure, its rows, its pictures. Reads only. Throws Erro when the catalogue cannot be
// opened, with the numbers of dao::Workspace::OpenDatabase.
QList<Finding> Check(const Order& order);

}  // namespace verificar
