#pragma once

#include "importar/cells.h"
#include "importar/match.h"
#include "importar/names.h"
#include "platform/dao/connection.h"
#include "platform/dao/statement.h"

#include <map>

namespace importar {

// Which codes there are, and which code goes with a number or a name. Knows the rows that are in
// the catalogue already.
class Links {
public:
    Links(dao::Connection& catalogue, const Matches& matches);

    // The code that the row's column `column` links to.
    Cell Resolve(const Match& match, std::size_t column, const Row& row, bool pointDecimals);

    bool Exists(tabelas::Id id, qint64 code);
    // Whether a part, a component or a kit has this number.
    bool IsOwnNumber(const QString& number);
    // After a row has gone in.
    void Learn(const tabelas::Table& table, const std::vector<QVariant>& values);

private:
    Cell ByName(const tabelas::Column& link, const Value& value, bool pointDecimals);

    dao::Connection& catalogue_;
    const Matches& matches_;
    std::map<tabelas::Id, Names> names_;  // of the tables that are asked by name
    struct Known {
        std::unique_ptr<dao::Statement> statement;
        qint64 code = 0;  // the one that was asked last
        bool exists = false;
    };
    std::map<tabelas::Id, Known> codes_;
};

// "Coluna: "valor" complaint", for the list of refused rows.
QString Complain(const QString& column, const Value& value, const QString& complaint);

}  // namespace importar
