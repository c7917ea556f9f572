#pragma once

#include "tabelas/progress.h"

#include <QString>

#include <vector>

namespace exportar {

struct Written {
    QString file;
    qint64 rows;
};

// The rows of a data folder's catalogue as CSV files in a new folder, one a table, each in the
// order of its key: the same catalogue gives the same bytes, and tarvo-importar makes the same
// catalogue of them. The folder is there as a whole or not at all. Reads only. Throws Erro with
// words for the user.
std::vector<Written> Export(const QString& data, const QString& folder,
                            tabelas::Progress& progress);

}  // namespace exportar
