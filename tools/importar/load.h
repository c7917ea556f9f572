#pragma once

#include "importar/match.h"
#include "importar/refused.h"
#include "tabelas/progress.h"

namespace dao {
class Connection;
}

namespace importar {

struct Loaded {
    QString table;
    qint64 rows = 0;
    qint64 refused = 0;
    qint64 changed = 0;  // rows of which something stood in another form
};

struct LoadResult {
    std::vector<Loaded> tables;
    QStringList remarks;
};

// Fills an empty catalogue, of which `catalogue` is the only user; what is in it when this throws
// is worth nothing. Rows that break a rule go to `refused` and nowhere else.
LoadResult Load(dao::Connection& catalogue, Source& source, const Matches& matches,
                Refused& refused, tabelas::Progress& progress);

}  // namespace importar
