#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <chrono>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

// The only door to the C API of SQLCipher (sqlite.cpp). Texts here are the engine's own SQL, not
// the dialect; callers above platform/dao never see it.
namespace dao {

class Connection;

// A prepared statement; owns its handle before the return code is tested.
class Statement {
public:
    Statement(Connection& connection, const QByteArray& sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    bool Step();   // true: a row is there; false: the end. Throws Erro.
    void Reset();
    void Bind(int index, const QVariant& value);  // from 1

    int ColumnCount() const;
    QString ColumnName(int column) const;
    QVariant Column(int column) const;
    bool IsNull(int column) const;
    int Type(int column) const;               // the engine's type code: 1 integer, 2 float, 3 text
    qint64 Int64(int column) const;
    double Double(int column) const;
    QByteArrayView Utf8(int column) const;    // valid until the next Step

private:
    Connection& connection_;
    sqlite3_stmt* handle_ = nullptr;
};

class Connection : public std::enable_shared_from_this<Connection> {
public:
    enum class Mode { ReadWrite, ReadOnly, Create };

    // `path` in the platform's form. Sets key, collation, functions and pragmas, and reads the
    // first page, so that a wrong password or another kind of file fails here.
    Connection(const QString& path, const QByteArray& key, Mode mode);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void Run(const QByteArray& sql);          // one or several statements without a result
    qint64 Changes() const;
    void SetBusyTimeout(std::chrono::milliseconds timeout);
    bool InTransaction() const;
    sqlite3* Handle() const { return handle_; }  // for the files of platform/dao that register functions

private:
    friend class Statement;
    sqlite3* handle_ = nullptr;
    QString path_;
};

}  // namespace dao
