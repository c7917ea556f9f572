#pragma once

#include "verificar/finding.h"

namespace dao {
class Connection;
}

namespace verificar {

// Files that the rows name and the folder does not hold, or that are no pictures; numbers beside
// their figure; the tour's pages and the help; what updates that were cut short left behind. Only
// the head of each picture is read.
void CheckPictures(dao::Connection& catalogue, const QString& folder, int examples, bool whole,
                   QList<Finding>& findings);

}  // namespace verificar
