#pragma once

#include "platform/sql/tree.h"

#include <QString>
#include <QVariant>

// The types of columns, in one table: what the dialect calls them, how the engine's definitions
// declare them, what becomes of a value that is stored, and what a stored value is.
namespace sql {

// What is known of a value before it is computed. A condition is a Number: -1 or 0.
enum class Type { Unknown, Null, Number, Date, Text };

class ColumnType {
public:
    // Throws Erro 3075 for a name that is none of the dialect's.
    static ColumnType OfDialect(const WrittenType& written);
    // From a definition of the engine's; a word that the table lacks stores values as they are.
    static ColumnType OfDeclaration(const QString& declared);
    // As Code has written it.
    static ColumnType OfCode(int entry, int size, int scale);

    QByteArray Declaration() const;  // with sizes and collation
    QByteArray Code() const;         // three numbers, with commas between them
    int Length() const;              // most characters of a text; 0: any
    Type Reads() const;
    bool IsCounter() const;  // the engine numbers the rows by itself
    bool IsFlag() const;     // yes or no; never Null

    bool Converts() const;
    // What is kept of a value: the same for VALUES, SELECT, UPDATE, defaults and a changed type.
    // Null stays Null. Throws Erro 13 or 6 for what the type cannot hold, 3163 for too long a text.
    QVariant Store(const QVariant& value) const;

private:
    explicit ColumnType(int entry) : entry_(entry) {}

    int entry_;
    int size_ = 0;
    int scale_ = 0;
};

}  // namespace sql
