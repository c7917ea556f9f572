#pragma once

#include "platform/dao/statement.h"
#include "platform/sql/dialect.h"

#include <memory>

namespace dao {

class Connection;

// Runs a statement to its end.
qint64 RowsChangedBy(const Connection& connection, Statement& statement);

// A change whose statement is ready to run again with the values of another text of its shape.
class PreparedChange {
public:
    // Throws what the engine does for an unknown table or column, say.
    PreparedChange(Connection& connection, const sql::Shape& shape,
                   const sql::Translation& translation);

    bool Fits(const sql::Shape& shape) const { return shape.Has(fixed_); }

    // Rows changed by the statement itself. Throws what a value's conversion does, and the engine.
    qint64 Run(const sql::Shape& shape);

private:
    Connection& connection_;
    Statement statement_;
    std::vector<sql::Parameter> parameters_;
    sql::Shape::Fixed fixed_;
};

// The one that a connection keeps for texts of this shape, or null. What it keeps is void when its
// tables are (see ForgetTables).
std::shared_ptr<PreparedChange> FindChange(Connection& connection, const sql::Shape& shape);
void KeepChange(Connection& connection, const sql::Shape& shape,
                const std::shared_ptr<PreparedChange>& change);

}  // namespace dao
