#pragma once

#include "platform/system/filelocks.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

struct sqlite3;

// The engine's own SQL, below the dialect: for platform/dao itself and for the programs that make,
// check or measure the file of a catalogue (tools, demonstration, benchmarks). The catalogue's
// rooms have dao.h. With functions.cpp the only door to the C API of SQLCipher.
namespace dao {

class RowReader;
class Statement;
struct TableCache;

class Connection : public std::enable_shared_from_this<Connection> {
public:
    enum class Mode { ReadWrite, ReadOnly, Create };
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::milliseconds Patience{5000};  // for another computer's lock

    // `path` in the platform's form. Sets key, collation, functions and pragmas, and reads the
    // first page, so that a wrong password or another kind of file fails here: 3343, 3031, 3049,
    // 3051, 3260. Create makes the file and marks it as a catalogue.
    Connection(const QString& path, const QByteArray& key, Mode mode);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void Close();  // ends every statement; an open transaction is rolled back
    bool IsOpen() const { return handle_ != nullptr; }
    const QString& Path() const { return path_; }

    void Run(const QByteArray& sql);        // one or several statements without a result
    QVariant Value(const QByteArray& sql);  // first column of the first row
    qint64 Changes() const;                 // rows of the last change
    qint64 AllChanges() const;              // rows of all changes since the opening
    qint64 PagesRead() const;               // from the file, since the connection was opened
    qint64 CacheBytes() const;              // of the memory that its pages take
    void SetBusyTimeout(std::chrono::milliseconds timeout);
    bool InTransaction() const;
    // See Database::SetIdle and Database::SetPatience.
    void SetIdle(std::function<bool()> idle);
    void SetPatience(std::function<bool(std::chrono::milliseconds)> patience);
    // COMMIT. Readers are waited for before it, as SetPatience says: a commit that waits by itself
    // lets nobody else begin to read.
    void Commit();
    // Somebody else who reads the file just now.
    std::optional<sys::LockHolder> Reader() const;
    sqlite3* Handle() const {
        return handle_.get();
    }  // for the files of platform/dao that register functions

    // A transaction that the next change begins: until then nothing of it is locked.
    void WantTransaction(bool wanted) { transactionWanted_ = wanted; }
    void BeginIfWanted();

    // Results that are still being read hold the file's read lock. FinishReads reads them to their
    // end into memory; a failure there belongs to the reader, not to the caller.
    void FinishReads();
    // Only those to which a change of this very connection would show through.
    void FinishUnsettledReads();
    bool HasPendingReads() const { return !readers_.empty(); }

    // When the present slice of reading has to return. A function that runs for long on the
    // engine's behalf looks at it.
    void SetDeadline(Clock::time_point deadline) { deadline_ = deadline; }
    Clock::time_point Deadline() const { return deadline_; }
    // What schema.cpp remembers of the tables that it has read.
    std::shared_ptr<TableCache>& Tables() { return tables_; }

    static const Connection& Of(sqlite3* handle);  // the open connection that owns a handle

    // Every open connection of this process, in the order of opening.
    static const std::vector<Connection*>& All();

private:
    friend class Statement;
    friend class RowReader;

    struct Closer {
        void operator()(sqlite3* handle) const;
    };
    void Open(const QByteArray& key, Mode mode);
    bool KeepWaiting(int tries);
    qint64 Status(int what) const;

    QString path_;
    std::unique_ptr<sqlite3, Closer> handle_;
    std::vector<Statement*> statements_;
    std::vector<RowReader*> readers_;
    std::shared_ptr<TableCache> tables_;
    std::function<bool()> idle_;
    std::function<bool(std::chrono::milliseconds)> patience_;
    Clock::time_point waitingSince_;
    bool committing_ = false;
    Clock::time_point deadline_ = Clock::time_point::max();
    bool transactionWanted_ = false;
};

}  // namespace dao
