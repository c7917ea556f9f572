#include "platform/dao/enginefailure.h"

#include "platform/dao/errors.h"

#include <cerrno>
#include <cstdlib>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

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
    {SQLITE_INTERRUPT, Failure::Interrupted},
    {SQLITE_TOOBIG, Failure::TextTooLong},
    {SQLITE_NOMEM, Failure::Resources},
    {SQLITE_PERM, Failure::CannotOpen},
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
    // What is left of a page that failed its check on the way to a long text.
    {"SQL logic error", "", Failure::Damaged},
};

// What stands behind the first colon of a message, if there is one.
QString DetailOf(const QByteArray& message) {
    return QString::fromUtf8(message).section(u": "_s, 1);
}

[[noreturn]] void RaiseSql(const QByteArray& message) {
    // An error of one of the dialect's functions, as functions.cpp sends it through the engine:
    // "erro ", the number, ": " and the description.
    if (constexpr QByteArrayView Own = "erro "; message.startsWith(Own)) {
        throw Erro(std::atoi(message.constData() + Own.size()), DetailOf(message));
    }
    if (message == "integer overflow") {
        throw Erro(Erro::Overflow);
    }
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

// Of a read that the system refuses the engine thinks the worst, that the file is damaged; it may
// be a share whose server has gone.
bool CouldNotBeRead(sqlite3* handle) {
    int reason = 0;
    return sqlite3_file_control(handle, "main", SQLITE_FCNTL_LAST_ERRNO, &reason) == SQLITE_OK &&
           (reason == EIO || reason == ENXIO || reason == ERANGE);
}

}  // namespace

void Raise(sqlite3* handle, int code) {
    const int extended = sqlite3_extended_errcode(handle);
    const QByteArray message(sqlite3_errmsg(handle));
    if (code == SQLITE_ERROR) {
        RaiseSql(message);
    }
    if (code == SQLITE_MISMATCH) {
        throw Erro(Erro::TypeMismatch);
    }
    if (code == SQLITE_CORRUPT && CouldNotBeRead(handle)) {
        Throw(Failure::InOut);
    }
    for (const CodeEntry& entry : Codes) {
        if (entry.code == extended || entry.code == code) {
            Throw(entry.failure, code == SQLITE_CONSTRAINT ? DetailOf(message) : QString());
        }
    }
    throw Erro(Erro::InternalError);
}

void Check(sqlite3* handle, int code) {
    if (code != SQLITE_OK) {
        Raise(handle, code);
    }
}

}  // namespace dao
