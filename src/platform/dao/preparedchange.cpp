#include "platform/dao/preparedchange.h"

#include "platform/dao/connection.h"

namespace dao {

PreparedChange::PreparedChange(Connection& connection, const sql::Shape& shape,
                               const sql::Translation& translation)
    : connection_(connection),
      statement_(connection, translation.statements.first()),
      parameters_(translation.parameters),
      fixed_(shape.Without(parameters_)) {}

qint64 RowsChangedBy(const Connection& connection, Statement& statement) {
    const qint64 before = connection.AllChanges();
    while (statement.Step()) {
    }
    // The engine's own count stays that of the last change where a statement makes none.
    return connection.AllChanges() == before ? 0 : connection.Changes();
}

qint64 PreparedChange::Run(const sql::Shape& shape) {
    int place = 0;
    for (const sql::Parameter& parameter : parameters_) {
        statement_.Bind(++place, shape.ValueOf(parameter));
    }
    const qint64 changes = RowsChangedBy(connection_, statement_);
    statement_.Reset();
    return changes;
}

}  // namespace dao
