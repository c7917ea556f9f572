#pragma once

#include "platform/sql/dialect.h"

#include <QByteArray>
#include <QString>

#include <vector>

// The engine can add and drop a column; any other change of a table is made by building it anew
// from its own definition. This takes a definition apart, lets it be changed, and writes it again.
namespace sql {

class TableDefinition {
public:
    // Throws Erro 3000 for a view.
    explicit TableDefinition(const TableInfo& table);

    bool HasPrimaryKey() const;
    void SetColumn(const QString& name, const QByteArray& text);  // replaces or appends
    void RequireValue(const QString& column);                     // NOT NULL
    void AddConstraint(const QByteArray& text);
    bool DropConstraint(const QString& name);  // false: there is none

    // Statements that put the new table in the place of the old one, with its rows, indexes and
    // triggers. `values` gives, by column, what a row gets; columns not named keep their value.
    struct NewValue {
        QString column;
        QByteArray sql;
    };
    QList<QByteArray> Rebuild(const QList<NewValue>& values) const;

private:
    struct Piece {
        bool constraint;
        QString name;
        QByteArray text;
    };
    Piece* FindColumn(const QString& name);

    TableInfo table_;
    std::vector<Piece> pieces_;
    QByteArray tail_;  // behind the closing bracket
};

// Name of a bare column, constraint or index as the engine keeps it in a definition: the first word
// of `text`, without its quotes. `rest` is what follows.
QString FirstName(const QByteArray& text, QByteArray* rest = nullptr);

// Under which name the engine has an index of a table, or empty. The dialect's index names belong
// to their table, the engine's to the whole file, so new ones carry their table's name.
QString EngineIndexName(const TableInfo& table, const QString& index);

}  // namespace sql
