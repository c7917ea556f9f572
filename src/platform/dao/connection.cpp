#include "platform/dao/connection.h"

#define SQLITE_HAS_CODEC
#include "platform/dao/enginefailure.h"
#include "platform/dao/errors.h"
#include "platform/dao/functions.h"
#include "platform/dao/memorylimit.h"
#include "platform/dao/rowreader.h"
#include "platform/dao/seal.h"
#include "platform/dao/sharedlock.h"
#include "platform/dao/statement.h"
#include "platform/system/enginelocks.h"
#include "platform/system/paths.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <array>
#include <mutex>
#include <sqlite3.h>
#include <thread>
#include <utility>

using namespace std::chrono_literals;

namespace dao {

namespace {

constexpr auto WaitSlice = 20ms;
// Which every reader locks, by the engine's file format.
constexpr qint64 FirstSharedByte = 0x40000002;
constexpr qint64 SharedBytes = 510;

// Never destroyed: the session's own connection may be closed later than any static of this file.
std::vector<Connection*>& Registry() {
    static auto* connections = new std::vector<Connection*>;
    return *connections;
}

// Closing a second handle on a file drops every lock that this process has on it (POSIX), so the
// file itself is read only while no connection has it open; otherwise the engine is asked.
QByteArray SealOf(const QString& path) {
    for (Connection* other : Connection::All()) {
        if (other->Path() == path) {
            return QByteArray::fromHex(other->Value("PRAGMA cipher_salt").toByteArray());
        }
    }
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(seal::Size) : QByteArray();
}

// Once, before the first file is opened.
void PrepareEngine() {
    BoundMemory();
    if (const sys::SystemCall lock = sys::EngineLockCall()) {
        sqlite3_vfs* files = sqlite3_vfs_find(nullptr);
        files->xSetSystemCall(files, "fcntl", lock);
    }
}

void CheckOpened(sqlite3* handle, int code, const QString& path) {
    if (code == SQLITE_CANTOPEN) {
        Throw(Failure::CannotOpen, sys::ToShown(path));
    }
    Check(handle, code);
}

}  // namespace

void Connection::Closer::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

Connection::Connection(const QString& path, const QByteArray& key, Mode mode) : path_(path) {
    Open(key, mode);
    // Only now is there a file to find the one true path of.
    path_ = QFileInfo(path).canonicalFilePath();
    Registry().push_back(this);
}

Connection::~Connection() {
    Close();
}

void Connection::Open(const QByteArray& key, Mode mode) {
    static std::once_flag prepared;
    std::call_once(prepared, PrepareEngine);
    constexpr std::array Flags = {SQLITE_OPEN_READWRITE, SQLITE_OPEN_READONLY,
                                  SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE};
    sqlite3* raw = nullptr;
    // One thread: a lock taken for every value of every row would only cost time.
    const int opened =
        sqlite3_open_v2(sys::ToSystem(path_).toUtf8().constData(), &raw,
                        Flags.at(static_cast<std::size_t>(mode)) | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(raw);
    CheckOpened(raw, opened, path_);
    SetBusyTimeout(Patience);
    // A name in double quotes that is no column must not turn into a text.
    sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    if (!key.isEmpty()) {
        Check(raw, sqlite3_key(raw, key.constData(), static_cast<int>(key.size())));
    }
    // Otherwise the library reports damage on the standard error stream by itself.
    Run("PRAGMA cipher_log_level = NONE");
    RegisterFunctions(raw);
    if (mode == Mode::Create) {
        Run("PRAGMA cipher_salt = \"x'" + seal::Make(key).toHex() + "'\"");
    }

    const int read =
        sqlite3_exec(raw, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
    if (read == SQLITE_NOTADB) {
        const QString file = QFileInfo(path_).canonicalFilePath();
        Throw(seal::Explain(SealOf(file), key), sys::ToShown(path_));
    }
    CheckOpened(raw, read, path_);

    // The cache (KiB) holds the indexes of the largest catalogue: every page that it lacks costs a
    // decipherment. Never a write-ahead log: its shared memory does not work over a network. Links
    // between tables are not enforced: an update's script may bring the rows in any order.
    Run("PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL; PRAGMA temp_store = MEMORY;"
        "PRAGMA cache_size = -262144; PRAGMA foreign_keys = OFF");
}

void Connection::Close() {
    std::erase(Registry(), this);
    for (Statement* statement : std::exchange(statements_, {})) {
        sqlite3_finalize(statement->handle_);
        statement->handle_ = nullptr;
    }
    handle_.reset();
}

void Connection::Run(const QByteArray& sql) {
    if (!IsOpen()) {
        Throw(Failure::ObjectInvalid);
    }
    Check(Handle(), sqlite3_exec(Handle(), sql.constData(), nullptr, nullptr, nullptr));
}

QVariant Connection::Value(const QByteArray& sql) {
    Statement statement(*this, sql);
    return statement.Step() ? statement.Column(0) : QVariant();
}

qint64 Connection::PagesRead() const {
    return Status(SQLITE_DBSTATUS_CACHE_MISS);
}

qint64 Connection::CacheBytes() const {
    return Status(SQLITE_DBSTATUS_CACHE_USED);
}

qint64 Connection::Status(int what) const {
    int value = 0;
    int highest = 0;
    sqlite3_db_status(Handle(), what, &value, &highest, 0);
    return value;
}

qint64 Connection::Changes() const {
    return sqlite3_changes64(Handle());
}

qint64 Connection::AllChanges() const {
    return sqlite3_total_changes64(Handle());
}

void Connection::SetIdle(std::function<bool()> idle) {
    constexpr int Steps = 5000;  // of the engine's machine: well under a millisecond
    idle_ = std::move(idle);
    const auto callback = [](void* self) -> int {
        return !static_cast<Connection*>(self)->idle_();
    };
    sqlite3_progress_handler(Handle(), idle_ ? Steps : 0, callback, this);
}

void Connection::SetBusyTimeout(std::chrono::milliseconds timeout) {
    if (timeout != timeout.zero() && patience_) {
        sqlite3_busy_handler(
            Handle(),
            [](void* self, int tries) -> int {
                return static_cast<Connection*>(self)->KeepWaiting(tries);
            },
            this);
        return;
    }
    sqlite3_busy_timeout(Handle(), static_cast<int>(timeout.count()));
}

void Connection::SetPatience(std::function<bool(std::chrono::milliseconds)> patience) {
    patience_ = std::move(patience);
    SetBusyTimeout(Patience);
}

bool Connection::KeepWaiting(int tries) {
    if (tries == 0) {
        waitingSince_ = Clock::now();
    }
    std::this_thread::sleep_for(WaitSlice);
    const auto waited =
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - waitingSince_);
    // Meanwhile a commit keeps everybody else from reading.
    return patience_(waited) && (!committing_ || waited < Patience);
}

void Connection::Commit() {
    for (int tries = 0; patience_ && Reader(); ++tries) {
        if (!KeepWaiting(tries)) {
            Throw(Failure::Locked);
        }
    }
    committing_ = true;
    const auto committed = qScopeGuard([this] { committing_ = false; });
    Run("COMMIT");
}

std::optional<sys::LockHolder> Connection::Reader() const {
    return sys::FindLock(path_, HandleOfSharedLock(Handle()), FirstSharedByte, SharedBytes);
}

bool Connection::InTransaction() const {
    return IsOpen() && sqlite3_get_autocommit(Handle()) == 0;
}

void Connection::BeginIfWanted() {
    if (transactionWanted_ && !InTransaction()) {
        Run("BEGIN");
    }
}

void Connection::FinishReads() {
    const std::vector<RowReader*> pending = readers_;
    for (RowReader* reader : pending) {
        reader->Finish();
    }
}

void Connection::FinishUnsettledReads() {
    const std::vector<RowReader*> pending = readers_;
    for (RowReader* reader : pending) {
        if (!reader->IsSettled()) {
            reader->Finish();
        }
    }
}

const Connection& Connection::Of(sqlite3* handle) {
    return **std::ranges::find(All(), handle, &Connection::Handle);
}

const std::vector<Connection*>& Connection::All() {
    return Registry();
}

}  // namespace dao
