#pragma once

#include "verificar/finding.h"

namespace dao {
class Connection;
}

namespace verificar {

// What the program requires of the rows: the form of numbers and items, ranges of codes, links,
// tables of one row. Unless the structure is `whole`, a rule whose tables or columns are missing is
// left out.
void CheckRows(dao::Connection& catalogue, int examples, bool whole, QList<Finding>& findings);

// The lock's row in the companion file (platform's path). The file may be missing: it is made when
// it is needed.
void CheckCompanion(dao::Connection& catalogue, const QString& companion, int examples,
                    QList<Finding>& findings);

}  // namespace verificar
