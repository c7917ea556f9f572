#pragma once

#include "platform/sql/dialect.h"
#include "platform/sql/tree.h"

// What the columns of a query are, before it has run.
namespace sql {

// The table of this name or alias among those of a FROM clause, or null.
const Source* FindTable(const Source& source, std::string_view name);

std::optional<TableInfo> InfoOf(const Schema& schema, std::string_view table);

// How a query's columns are called; empty where that cannot be told.
QStringList NamesOf(const Schema& schema, const Query& query);

// The declared type of what an expression gives, as a column of a new table.
QString DeclaredType(const Schema& schema, const Select& select, const Expr& expr);

}  // namespace sql
