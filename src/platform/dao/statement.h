#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

struct sqlite3_stmt;

// The engine's own SQL, below the dialect: for platform/dao itself and for the programs that make,
// check or measure the file of a catalogue (tools, demonstration, benchmarks). The catalogue's
// rooms have dao.h. With functions.cpp the only door to the C API of SQLCipher.
namespace dao {

class Connection;

// One value of a row, in the type that it has there; valid until the next Step.
struct Cell {
    enum class Type { Null, Integer, Real, Text };
    Type type = Type::Null;
    qint64 integer = 0;
    double real = 0;
    QByteArrayView utf8;  // for Text
};

// A prepared statement; owns its handle before the return code is tested. Once its connection has
// been closed, every use throws 3420.
class Statement {
public:
    Statement(Connection& connection, const QByteArray& sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    bool Step();  // true: a row is there; false: the end. Throws Erro.
    void Reset();
    void Bind(int index, const QVariant& value);  // from 1

    int ColumnCount() const;
    QString ColumnName(int column) const;
    QVariant Column(int column) const;
    qint64 Int64(int column) const;
    // For reading many rows: all about a value in one call.
    Cell Read(int column) const;

private:
    friend class Connection;
    sqlite3_stmt* Live() const;

    Connection& connection_;
    sqlite3_stmt* handle_ = nullptr;
};

}  // namespace dao
