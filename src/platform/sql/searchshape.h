#pragma once

#include "platform/sql/dialect.h"
#include "platform/sql/tree.h"

#include <optional>
#include <vector>

// What a plan knows of a search: which tables, which conditions, what an index can serve.
namespace sql {

// A condition of the form column LIKE 'text' or column = value.
struct Term {
    const Expr* expr;
    const Expr* column;
    bool joined;  // the column is the joined table's
    bool range;   // has a literal beginning or is an equality: an index can find its rows
};

// One select, taken apart.
struct Arm {
    const Select* select = nullptr;
    const Source* table = nullptr;
    const Source* joined = nullptr;     // of a left join, or null
    const Expr* tableColumn = nullptr;  // what the join compares
    const Expr* joinedColumn = nullptr;
    TableInfo info;
    std::vector<Term> terms;

    bool IsJoined(const Expr& column) const;
    bool IsIndexed(const Expr& column) const;
    const Expr& Item(std::size_t ordinal) const { return *select->items[ordinal - 1].expr; }
};

// Whether a condition is on the joined table: rows without a partner do not meet it.
bool NeedsPartner(const Arm& arm);

// Nothing when the select has not the shape of a search.
std::optional<Arm> TakeApart(const Select& select, const Schema& schema);

}  // namespace sql
