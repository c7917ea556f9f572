#pragma once

#include "importar/source.h"
#include "tabelas/tables.h"

namespace importar {

// Where one of the catalogue's tables comes from.
struct Match {
    const tabelas::Table* table = nullptr;
    std::size_t source = 0;
    // For each column of the table the one of the source, -1 for none; and that by which a link is
    // told by name.
    std::vector<int> columns;
    std::vector<int> names;
    // Numbers of figures that stand by part, with the figure's file in each row: these two columns
    // of the source, -1 otherwise.
    int part = -1;
    int file = -1;

    bool ByPart() const { return part >= 0; }
};

struct Matches {
    std::vector<Match> found;  // in the order of tabelas::All
    QStringList missing;       // tables
    QStringList remarks;       // what is not taken, and what was found by its shape alone

    const Match* Of(tabelas::Id id) const;
};

// Names are compared without regard to case. The two tables that an old catalogue shows through
// views are also found by their columns. Throws Erro 5 with words where this is no catalogue: the
// parts are missing, a table lacks a column, two could be the same one.
Matches MatchTables(const std::vector<SourceTable>& tables);

}  // namespace importar
