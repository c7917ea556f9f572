#pragma once

#include "platform/sql/shape.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <optional>
#include <vector>

// The one place where a text of the system's SQL dialect becomes what the engine runs: tokenizer,
// syntax tree, writer. Never text replacement.
//
// A text of SQL, the dialect's or the engine's, is a QByteArray in UTF-8, a piece of one a
// std::string_view; a literal that the parser had to make owns its letters. What has left the text,
// a name of the schema, a value, a word of an error, is a QString.
namespace sql {

struct ColumnInfo {
    QString name;
    QString declaredType;  // as in the table's definition
    bool notNull = false;
    int primaryKey = 0;  // 1-based place in the key, 0: none
};

struct IndexInfo {
    QString name;
    bool partial = false;  // of the rows that meet a condition only
    QStringList columns;   // empty text: an expression
    QString definition;    // the CREATE text that the engine keeps; empty: part of the table's
};

struct TableInfo {
    QString name;
    bool isView = false;
    bool hasRowid = true;
    bool numbersRows = false;  // a row without a key gets one
    QList<ColumnInfo> columns;
    QString definition;  // the CREATE text that the engine keeps
    QList<IndexInfo> indexes;
    QStringList triggers;  // their CREATE texts

    // Without regard to case; null when there is none.
    const ColumnInfo* Column(QAnyStringView wanted) const;
    // The one column that is the engine's own number of a row, or null. Where the table does not
    // number its rows, the engine would make up a value for a row without one.
    const ColumnInfo* RowNumber() const;
};

// What the translator may ask of the database: the definition of a table, without regard to case.
struct Schema {
    std::function<std::optional<TableInfo>(const QString& name)> table;
};

struct Translation {
    enum class Kind { Query, Change, Definition };
    Kind kind = Kind::Query;
    // Run in this order, all or nothing. The rows of a query are those of its statements, one
    // statement after the other; names and number of columns are those of the first.
    QList<QByteArray> statements;
    // Columns of the result, where a query's statements have more, or 0. The one behind them is a
    // flag: where it is 0 or Null, the row is none, and only lets the reader look at the clock on a
    // long way to the next one. Others behind it are there to be sorted by.
    int resultColumns = 0;
    // Upper-case names of the tables named, so that a table kept in a companion file is attached.
    QStringList tables;
    // Of a change that is one statement: values that are bound to it (see Shape).
    std::vector<Parameter> parameters;
    QString defined;  // upper-case name of the table or view that it makes, or empty
};

// A condition on a row that lies in memory, for FindFirst: column = text, column >= text, or the
// same with a number. Anything else is the work of a query.
class Criterion {
public:
    using ColumnReader = std::function<QVariant(int column)>;
    // `columns` are the result's names; throws 3061 for a name that is none of them, 3075 for
    // syntax, 3000 for another condition.
    Criterion(const QString& text, const QStringList& columns);
    // Null is not met. Throws 3464 where a text meets a number.
    bool Matches(const ColumnReader& value) const;

private:
    int column_ = -1;
    bool orBehind_ = false;  // >=
    QVariant value_;
};

}  // namespace sql
