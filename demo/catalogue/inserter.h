#pragma once

#include "platform/dao/connection.h"
#include "platform/dao/statement.h"

#include <QByteArray>
#include <QList>
#include <QVariant>

namespace demo {

// Adds rows to one table through one prepared statement.
class Inserter {
public:
    Inserter(dao::Connection& connection, const QByteArray& table, const QByteArray& columns)
        : statement_(connection, "INSERT INTO " + table + " (" + columns + ") VALUES (?" +
                                     QByteArray(",?").repeated(columns.count(',')) + ")") {}

    template <typename... Values>
    void Add(const Values&... values) {
        int index = 0;
        (statement_.Bind(++index, QVariant(values)), ...);
        statement_.Step();
        statement_.Reset();
    }

private:
    dao::Statement statement_;
};

}  // namespace demo
