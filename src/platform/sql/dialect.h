#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

// The one place where a text of the system's SQL dialect becomes what the engine runs: tokenizer,
// syntax tree, writer. Never text replacement.
namespace sql {

struct ColumnInfo {
    QString name;
    QString declaredType;  // as in the table's definition
    bool notNull = false;
    int primaryKey = 0;  // 1-based place in the key, 0: none
};

struct TableInfo {
    QString name;
    bool isView = false;
    QList<ColumnInfo> columns;
    QString definition;   // the CREATE text that the engine keeps
    QStringList indexes;  // the CREATE texts of its indexes and triggers

    // Without regard to case; null when there is none.
    const ColumnInfo* Column(const QString& wanted) const;
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
    // The last column of a query's statements is no part of the result: where it is 0 or Null, the
    // row is none, and only lets the reader look at the clock on a long way to the next one.
    bool flagColumn = false;
    // Upper-case names of the tables named, so that a table kept in a companion file is attached.
    QStringList tables;
};

// A condition on a row that lies in memory, for FindFirst.
class Criterion {
public:
    using ColumnReader = std::function<QVariant(int column)>;
    // `columns` are the result's names; throws 3061 for a name that is none of them, 3075 for
    // syntax.
    Criterion(const QString& text, const QStringList& columns);
    ~Criterion();
    // Null is not met.
    bool Matches(const ColumnReader& value) const;

private:
    struct Node;
    std::unique_ptr<Node> root_;
};

}  // namespace sql
