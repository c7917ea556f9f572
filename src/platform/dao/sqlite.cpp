#include "platform/dao/sqlite.h"

#define SQLITE_HAS_CODEC
#include "platform/dao/errors.h"
#include "platform/dao/functions.h"
#include "platform/dao/rowreader.h"
#include "platform/dao/seal.h"
#include "platform/system/paths.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <sqlite3.h>

namespace dao {

namespace {

constexpr char ClientKey[] = "tarvo.connection";

// Never destroyed: the session's own connection may be closed later than any static of this file.
std::vector<Connection*>& Registry() {
    static auto* connections = new std::vector<Connection*>;
    return *connections;
}

struct CodeEntry {
    int code;  // primary or extended
    Failure failure;
};

constexpr CodeEntry Codes[] = {
    {SQLITE_CONSTRAINT_UNIQUE, Failure::DuplicateKey},
    {SQLITE_CONSTRAINT_PRIMARYKEY, Failure::DuplicateKey},
    {SQLITE_CONSTRAINT_ROWID, Failure::DuplicateKey},
    {SQLITE_CONSTRAINT_NOTNULL, Failure::NotNull},
    {SQLITE_CONSTRAINT, Failure::CheckViolated},
    {SQLITE_BUSY, Failure::Locked},
    {SQLITE_LOCKED, Failure::Locked},
    {SQLITE_READONLY, Failure::ReadOnly},
    {SQLITE_CANTOPEN, Failure::ReadOnly},  // the journal cannot be made in the file's folder
    {SQLITE_CORRUPT, Failure::Damaged},
    {SQLITE_NOTADB, Failure::Damaged},
    {SQLITE_FULL, Failure::DiskFull},
    {SQLITE_IOERR, Failure::InOut},
    {SQLITE_TOOBIG, Failure::TextTooLong},
    {SQLITE_PERM, Failure::CannotOpen},
    {SQLITE_INTERRUPT, Failure::Interrupted},
    {SQLITE_ABORT, Failure::ObjectInvalid},  // a result whose transaction was rolled back
};

// The engine tells its SQL errors apart by their message only; what follows is the detail.
struct MessageEntry {
    const char* begins;
    const char* ends;
    Failure failure;
};

constexpr MessageEntry Messages[] = {
    {"no such table: ", "", Failure::UnknownTable},
    {"no such view: ", "", Failure::UnknownTable},
    {"no such index: ", "", Failure::ItemNotFound},
    {"no such column: ", " - should this be a string literal in single-quotes?",
     Failure::UnknownColumn},
    {"no such column: ", "", Failure::UnknownColumn},
    {"ambiguous column name: ", "", Failure::AmbiguousColumn},
    {"no such function: ", "", Failure::UnknownFunction},
    {"duplicate column name: ", "", Failure::DuplicateColumn},
    {"table ", " already exists", Failure::TableExists},
    {"view ", " already exists", Failure::TableExists},
    {"there is already a table named ", "", Failure::TableExists},
    {"there is already an index named ", "", Failure::ObjectExists},
    {"index ", " already exists", Failure::ObjectExists},
    {"table ", " values were supplied", Failure::ValueCount},
    {"", " columns", Failure::ValueCount},
    {"near ", ": syntax error", Failure::SyntaxError},
    {"unrecognized token: ", "", Failure::SyntaxError},
    {"incomplete input", "", Failure::SyntaxError},
    {"integer overflow", "", static_cast<Failure>(Erro::Overflow)},
    // What is left of a page that failed its check on the way to a long text.
    {"SQL logic error", "", Failure::Damaged},
};

// An error of one of the dialect's functions, as functions.cpp sends it through the engine: "erro
// ", the number, ": " and the description.
void RaiseOwn(const QByteArray& message) {
    constexpr QByteArrayView Mark = "erro ";
    const qsizetype colon = message.indexOf(": ");
    if (!message.startsWith(Mark) || colon < 0) {
        return;
    }
    bool ok = false;
    const int number = message.mid(Mark.size(), colon - Mark.size()).toInt(&ok);
    if (ok) {
        throw Erro(number, QString::fromUtf8(message.mid(colon + 2)));
    }
}

[[noreturn]] void RaiseSql(const QByteArray& message) {
    RaiseOwn(message);
    for (const MessageEntry& entry : Messages) {
        const QByteArrayView begins(entry.begins);
        const QByteArrayView ends(entry.ends);
        if (message.startsWith(begins) && message.endsWith(ends)) {
            const qsizetype length = message.size() - begins.size() - ends.size();
            const bool counts = entry.failure == Failure::ValueCount;
            Throw(entry.failure,
                  counts ? QString() : QString::fromUtf8(message.mid(begins.size(), length)));
        }
    }
    Throw(Failure::NotSupported);
}

[[noreturn]] void Raise(sqlite3* handle, int code) {
    const int extended = handle == nullptr ? code : sqlite3_extended_errcode(handle);
    const QByteArray message(handle == nullptr ? "" : sqlite3_errmsg(handle));
    if ((code & 0xFF) == SQLITE_ERROR) {
        RaiseSql(message);
    }
    if ((code & 0xFF) == SQLITE_MISMATCH) {
        throw Erro(Erro::TypeMismatch);
    }
    for (const CodeEntry& entry : Codes) {
        if (entry.code != extended && entry.code != (code & 0xFF)) {
            continue;
        }
        const bool constraint = (code & 0xFF) == SQLITE_CONSTRAINT;
        const qsizetype colon = message.indexOf(": ");
        Throw(entry.failure,
              constraint && colon >= 0 ? QString::fromUtf8(message.mid(colon + 2)) : QString());
    }
    throw Erro(Erro::InternalError);
}

void Check(sqlite3* handle, int code) {
    if (code != SQLITE_OK) {
        Raise(handle, code);
    }
}

// Closing a second handle on a file drops every lock that this process has on it (POSIX), so the
// file itself is read only while no connection has it open; otherwise the engine is asked.
QByteArray SealOf(const QString& path, const Connection* except) {
    for (Connection* other : Connection::All()) {
        if (other != except && other->Path() == path) {
            return QByteArray::fromHex(other->Value("PRAGMA cipher_salt").toByteArray());
        }
    }
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(seal::Size) : QByteArray();
}

}  // namespace

// --- Statement

Statement::Statement(Connection& connection, const QByteArray& sql) : connection_(connection) {
    if (!connection.IsOpen()) {
        Throw(Failure::ObjectInvalid);
    }
    const int code = sqlite3_prepare_v2(connection.Handle(), sql.constData(),
                                        static_cast<int>(sql.size()), &handle_, nullptr);
    Check(connection.Handle(), code);
    if (handle_ == nullptr) {
        Throw(Failure::MissingExpression);
    }
    connection.statements_.push_back(this);
}

Statement::~Statement() {
    if (handle_ != nullptr) {
        sqlite3_finalize(handle_);
        std::erase(connection_.statements_, this);
    }
}

sqlite3_stmt* Statement::Live() const {
    if (handle_ == nullptr) {
        Throw(Failure::ObjectInvalid);
    }
    return handle_;
}

bool Statement::Step() {
    const int code = sqlite3_step(Live());
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        // Resetting lets the locks go; it repeats the code and keeps the message.
        sqlite3_reset(handle_);
        Raise(connection_.Handle(), code);
    }
    return false;
}

void Statement::Reset() {
    sqlite3_reset(Live());  // repeats the error of the last Step, which was thrown there
    sqlite3_clear_bindings(handle_);
}

void Statement::Bind(int index, const QVariant& value) {
    sqlite3_stmt* handle = Live();
    int code = SQLITE_OK;
    if (!value.isValid() || value.isNull()) {
        code = sqlite3_bind_null(handle, index);
    } else if (value.typeId() == QMetaType::QString || value.typeId() == QMetaType::QByteArray) {
        const QByteArray utf8 =
            value.typeId() == QMetaType::QString ? value.toString().toUtf8() : value.toByteArray();
        code = sqlite3_bind_text(handle, index, utf8.constData(), static_cast<int>(utf8.size()),
                                 SQLITE_TRANSIENT);
    } else if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float) {
        code = sqlite3_bind_double(handle, index, value.toDouble());
    } else {
        code = sqlite3_bind_int64(handle, index, value.toLongLong());
    }
    Check(connection_.Handle(), code);
}

int Statement::ColumnCount() const {
    return sqlite3_column_count(Live());
}

QString Statement::ColumnName(int column) const {
    return QString::fromUtf8(sqlite3_column_name(Live(), column));
}

qint64 Statement::Int64(int column) const {
    return sqlite3_column_int64(Live(), column);
}

Cell Statement::Read(int column) const {
    sqlite3_stmt* handle = Live();
    Cell cell;
    switch (sqlite3_column_type(handle, column)) {
        case SQLITE_NULL:
            break;
        case SQLITE_INTEGER:
            cell.type = Cell::Type::Integer;
            cell.integer = sqlite3_column_int64(handle, column);
            break;
        case SQLITE_FLOAT:
            cell.type = Cell::Type::Real;
            cell.real = sqlite3_column_double(handle, column);
            break;
        default: {
            cell.type = Cell::Type::Text;
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle, column));
            cell.utf8 = {text, text == nullptr ? 0 : sqlite3_column_bytes(handle, column)};
        }
    }
    return cell;
}

QVariant Statement::Column(int column) const {
    const Cell cell = Read(column);
    switch (cell.type) {
        case Cell::Type::Null:
            break;
        case Cell::Type::Integer:
            return static_cast<qlonglong>(cell.integer);
        case Cell::Type::Real:
            return cell.real;
        case Cell::Type::Text:
            return QString::fromUtf8(cell.utf8);
    }
    return {};
}

// --- Connection

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
    static_assert(SQLITE_VERSION_NUMBER >= 3044000, "client data needs 3.44");
    // Nobody reads the engine's count of its memory, and keeping it takes a lock at each piece.
    [[maybe_unused]] static const int uncounted = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    constexpr std::array Flags = {SQLITE_OPEN_READWRITE, SQLITE_OPEN_READONLY,
                                  SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE};
    sqlite3* raw = nullptr;
    // One thread: a lock taken for every value of every row would only cost time.
    const int opened =
        sqlite3_open_v2(path_.toUtf8().constData(), &raw,
                        Flags.at(static_cast<std::size_t>(mode)) | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(raw);
    if ((opened & 0xFF) == SQLITE_CANTOPEN) {
        Throw(Failure::CannotOpen, sys::ToShown(path_));
    }
    Check(raw, opened);
    sqlite3_extended_result_codes(raw, 1);
    sqlite3_set_clientdata(raw, ClientKey, this, nullptr);
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
    if ((read & 0xFF) == SQLITE_NOTADB) {
        handle_.reset();
        const QString file = QFileInfo(path_).canonicalFilePath();
        Throw(seal::Explain(SealOf(file, this), key), sys::ToShown(path_));
    }
    if ((read & 0xFF) == SQLITE_CANTOPEN) {
        Throw(Failure::CannotOpen, sys::ToShown(path_));
    }
    Check(raw, read);

    // The cache (KiB) holds the indexes of the largest catalogue: every page that it lacks costs a
    // decipherment. Never a write-ahead log: its shared memory does not work over a network. Links
    // between tables are not enforced: an update's script may bring the rows in any order.
    Run("PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL; PRAGMA temp_store = MEMORY;"
        "PRAGMA cache_size = -262144; PRAGMA foreign_keys = OFF");
}

void Connection::Close() {
    std::erase(Registry(), this);
    for (Statement* statement : statements_) {
        sqlite3_finalize(statement->handle_);
        statement->handle_ = nullptr;
    }
    statements_.clear();
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
    int pages = 0;
    int highest = 0;
    Check(handle_.get(),
          sqlite3_db_status(handle_.get(), SQLITE_DBSTATUS_CACHE_MISS, &pages, &highest, 0));
    return pages;
}

qint64 Connection::Changes() const {
    return sqlite3_changes64(Handle());
}

qint64 Connection::AllChanges() const {
    return sqlite3_total_changes64(Handle());
}

void Connection::SetBusyTimeout(std::chrono::milliseconds timeout) {
    sqlite3_busy_timeout(Handle(), static_cast<int>(timeout.count()));
}

void Connection::SetIdle(std::function<bool()> idle) {
    constexpr int Steps = 5000;  // of the engine's machine: well under a millisecond
    idle_ = std::move(idle);
    const auto callback = [](void* self) {
        return static_cast<Connection*>(self)->idle_() ? 0 : 1;
    };
    sqlite3_progress_handler(Handle(), idle_ ? Steps : 0, callback, this);
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
    return *static_cast<const Connection*>(sqlite3_get_clientdata(handle, ClientKey));
}

const std::vector<Connection*>& Connection::All() {
    return Registry();
}

}  // namespace dao
