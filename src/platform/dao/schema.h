#pragma once

#include "platform/dao/connection.h"
#include "platform/sql/dialect.h"
#include "platform/sql/likepattern.h"

#include <QString>

namespace dao {

// Translates a text of the dialect for a connection, and attaches the companion file when the text
// names a table that is kept there.
sql::Translation Prepare(Connection& connection, const QString& sql,
                         sql::Accents accents = sql::Accents::Minded);

// What the translator may ask of a connection.
sql::Schema SchemaOf(Connection& connection);

// A definition of this catalogue has changed: what its connections remember of its tables is void.
void ForgetTables(const Connection& connection);

}  // namespace dao
