#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace importar {

// What stands at one place of what is read.
struct Value {
    enum class Type { Null, Integer, Real, Text, Unreadable };
    Type type = Type::Null;
    qint64 integer = 0;
    double real = 0;
    QString text;

    QString Shown() const;  // as the user would write it
};

struct Row {
    qint64 line = 0;  // on which it begins, or its number, from 1
    std::vector<Value> values;
    QString complaint;  // why it cannot be read as a row; empty: it can
};

struct SourceTable {
    QString name;
    QString label;  // by which the user knows it: "PECA.csv"
    QStringList columns;
    qint64 size = 0;             // all that Read goes through, in the unit of its `done`
    bool pointDecimals = false;  // "1.500" is one and a half
};

// Where the rows come from.
class Source {
public:
    using Use = std::function<void(const Row& row, qint64 done)>;

    virtual ~Source() = default;
    virtual const std::vector<SourceTable>& Tables() const = 0;
    // Every row of one of the tables, in its order; may be called again. Throws Erro with words
    // when not every row can be read.
    virtual void Read(std::size_t table, const Use& use) = 0;
    // What the user should know of the source as a whole.
    virtual QStringList Remarks() const { return {}; }
};

}  // namespace importar
