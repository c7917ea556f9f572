#pragma once

#include "platform/sql/tree.h"

#include <QString>

#include <string_view>

// The types of columns: what the dialect calls them, what the engine keeps them as.
namespace sql {

// The engine's type for one of the dialect, without its sizes. Throws Erro 3075 for an unknown one.
QString EngineType(const ColumnType& type);

// Whether the engine numbers the column's rows by itself.
bool IsCounter(const ColumnDefinition& column);

// The function that makes of a value what a column of this engine's type stores, or empty where the
// engine does so by itself.
std::string_view StoringFunction(const QString& declaredType);

}  // namespace sql
