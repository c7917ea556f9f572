#pragma once

#include "platform/sql/likepattern.h"
#include "platform/system/filelocks.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

// The database operations of the system under their usual names, over SQLCipher. One thread uses
// them. Every operation throws Erro with a number of platform/dao/errors.h.
namespace dao {

class Connection;
class RowReader;
class RowStore;

inline constexpr int dbUseJet = 2;
inline constexpr int dbRefreshCache = 8;
inline constexpr int dbForceOSFlush = 1;
inline constexpr int dbFailOnError = 128;
inline constexpr int dbSeeChanges = 512;

enum RecordsetType : int {
    dbOpenDynaset = 2,      // lazily filled, moved and bound to a grid
    dbOpenSnapshot = 4,     // lazily filled, searched and counted
    dbOpenForwardOnly = 8,  // read once from top to bottom; only MoveNext moves
};

using sql::Accents;

// Identifies a row of one recordset; rows of two recordsets never compare equal.
struct Bookmark {
    quint64 recordset = 0;
    qint64 row = -1;
    friend bool operator==(const Bookmark&, const Bookmark&) = default;
};

class Recordset;

// A column of a recordset's current row. Reads at the time of the call.
class Field {
public:
    // A null QVariant for Null; otherwise qlonglong, double or QString. Throws 3021 without a
    // current row.
    QVariant Value() const;

private:
    friend class Recordset;
    Field(const Recordset* owner, int column) : owner_(owner), column_(column) {}
    const Recordset* owner_;
    int column_;
};

// A result. Rows are read when they are needed; what has been read stays (but for forward-only
// results, which keep the current row only). Dropping it releases everything.
class Recordset : public QObject {
    Q_OBJECT

public:
    ~Recordset() override;
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // True when there is no current row behind the last one, or no row at all. (`EOF` itself is a
    // macro of the C library.)
    bool Eof() const;

    // Both throw 3021 where there is no such row; MoveNext goes behind the last one first.
    void MoveNext();
    void MoveLast();  // finishes the reading, so that RecordCount is exact

    // Number of rows visited (read) so far; exact once IsComplete().
    qint64 RecordCount() const;

    // Zero-based position of the current row, -1 without one. Setting it reads up to that row;
    // throws 3021 when the result has no such row.
    qint64 AbsolutePosition() const;
    void SetAbsolutePosition(qint64 position);

    Bookmark CurrentBookmark() const;  // throws 3021 without a current row

    // Moves to the first row that meets `criteria`, an expression of the SQL dialect over the
    // result's columns. A comparison with Null is not met. Without a match the current row stays
    // and NoMatch() is true.
    void FindFirst(const QString& criteria);
    bool NoMatch() const { return noMatch_; }

    // Throws 3265 for an unknown name. Names are compared without regard to case.
    Field Fields(const QString& name) const;
    Field Fields(int index) const;
    int FieldCount() const;
    int FieldIndex(const QString& name) const;  // -1 when there is none

    void Close();

    // For the bound grid: rows in slices, texts without moving the current row.
    bool IsComplete() const;       // whole result read, read lock gone
    qint64 ReadUpTo(qint64 rows);  // reads until `rows` rows are there; returns RecordCount
    // The same, but gives up for now when about that much time is over.
    qint64 ReadUpTo(qint64 rows, std::chrono::microseconds budget);
    // Reads for about that long; returns IsComplete().
    bool ReadFor(std::chrono::microseconds budget);
    // Null as the empty text. Throws 9 from RecordCount() on.
    QString Text(qint64 row, int column) const;  // for people: decimals behind a comma
    // The same value in its own type, as Field::Value gives it. Throws 9 likewise.
    QVariant Value(qint64 row, int column) const;

Q_SIGNALS:
    void CurrentChanged();                     // the current row is another one, or none
    void RowsRead(qint64 first, qint64 last);  // after reading; zero-based, inclusive

private:
    friend std::unique_ptr<Recordset> OpenRecordset(const std::shared_ptr<Connection>& connection,
                                                    const QString& sql, RecordsetType type,
                                                    Accents accents);
    friend class Field;
    Recordset(std::shared_ptr<Connection> connection, const QString& sql, RecordsetType type,
              Accents accents);
    void MoveTo(qint64 row);
    void Announce();

    struct Private;
    std::unique_ptr<Private> d_;
    bool noMatch_ = false;
};

// For a data source, which has a connection and no database object of its own.
std::unique_ptr<Recordset> OpenRecordset(const std::shared_ptr<Connection>& connection,
                                         const QString& sql, RecordsetType type,
                                         Accents accents = Accents::Minded);

class Database {
public:
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // `sql` is a text of the dialect. The first row is current when it returns.
    std::unique_ptr<Recordset> OpenRecordset(const QString& sql,
                                             RecordsetType type = dbOpenSnapshot);

    // Runs a changing statement. With dbFailOnError a failure changes nothing and is thrown, and so
    // it is without: the caller that wants to go on traps it. With dbSeeChanges the statement does
    // not wait for another computer's lock: it fails at once.
    void Execute(const QString& sql, int options = 0);

    // Hides tables and views of the file, for this object alone and until it is closed, behind
    // temporary ones of the same names: a table with a copy of its rows, a view with its definition
    // over what is seen then. What the file does not have is passed over. A second call begins
    // anew.
    void Shadow(const QStringList& names);

    qint64 RecordsAffected() const;

    // Called again and again while a statement runs; false ends it with 3059 and rolls its
    // transaction back. It must not throw and not use this database. Empty: nobody is called.
    void SetIdle(std::function<bool()> goOn);

    // Called again and again, every few milliseconds, while a statement or a commit waits for the
    // locks of another computer, with how long it has waited; false ends the wait with 3260. It
    // must not throw and, Reader() apart, not use this database. Empty: five seconds, in which
    // nothing else happens.
    void SetPatience(std::function<bool(std::chrono::milliseconds waited)> goOn);
    // Who reads the file just now and so lets no commit through, as far as the system knows.
    std::optional<sys::LockHolder> Reader() const;
    void Close();

    // For tools and data sources only: the connection under this object.
    const std::shared_ptr<Connection>& GetConnection() const { return connection_; }

private:
    friend class Workspace;
    explicit Database(std::shared_ptr<Connection> connection);
    std::shared_ptr<Connection> connection_;
    qint64 affected_ = 0;
};

// A transaction scope. Closing it rolls an open transaction back.
class Workspace {
public:
    ~Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    QString Name() const { return name_; }

    // `path` in the system's form (backslashes). `connect` is ";pwd=" and the password. The errors
    // tell apart: folder missing 3044, file missing 3024, not a catalogue 3343, wrong password
    // 3031, damaged 3049, locked 3260, unwritable 3027 (only when writing).
    std::unique_ptr<Database> OpenDatabase(const QString& path, bool options, bool readOnly,
                                           const QString& connect);

    void BeginTrans();
    void CommitTrans(int options = 0);  // on return the data are on the disk, whatever the options
    void Rollback();
    void Close();

private:
    friend class DBEngine;
    explicit Workspace(QString name);
    QString name_;
    void Drop();
    void End(bool commit);
    std::vector<std::shared_ptr<Connection>> Connections() const;
    std::vector<std::weak_ptr<Connection>> connections_;
    bool inTransaction_ = false;
    bool closed_ = false;
};

class DBEngine {
public:
    static DBEngine& Instance();

    std::unique_ptr<Workspace> CreateWorkspace(const QString& name, const QString& user,
                                               const QString& password, int useType);

    // Makes a new file and runs `definition` in it: the engine's own SQL, since the dialect has no
    // words for collations, views and triggers. All or nothing. Throws 3012 when the file is there
    // already, 3044 when its folder is not.
    void CreateDatabase(const QString& path, const QString& connect, const QByteArray& definition);

    // Action 8: what other connections committed is seen by the next read of this process.
    void Idle(int action);

    // The connection of the database that was opened first on this path and is still open, or
    // null: what a data source without a password of its own reads through.
    std::shared_ptr<Connection> SharedConnection(const QString& path) const;

private:
    DBEngine() = default;
};

}  // namespace dao
