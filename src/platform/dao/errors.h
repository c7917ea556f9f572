#pragma once

#include "platform/erro.h"

namespace dao {

// Numbers of the engine's errors: the field's usual numbers, so that a support desk reads them
// without a table. Each has its own description (errors.cpp).
enum class Failure : int {
    DuplicateKey = 3022,  // a unique index would hold a value twice
    NoCurrentRecord = 3021,
    FileNotFound = 3024,
    ReadOnly = 3027,  // the file or its folder cannot be written
    WrongPassword = 3031,
    PathNotFound = 3044,  // the folder of the file does not exist
    Damaged = 3049,       // is a catalogue, but a page of it cannot be read
    Locked = 3260,        // another connection holds the lock
    UnknownColumn = 3061,
    SyntaxError = 3075,
    UnknownTable = 3078,
    MissingExpression = 3129,  // an empty text, or no statement that the engine knows
    UnknownFunction = 3085,
    BadPattern = 3093,    // a LIKE pattern with a bracket left open
    NotSupported = 3000,  // part of the dialect that cannot be carried over
    NotNull = 3314,
    CheckViolated = 3317,
    ItemNotFound = 3265,   // no such field in a recordset
    ObjectInvalid = 3420,  // used after Close, or after its database went away
    NotACatalogue = 3343,  // some other kind of file
    DiskFull = 3183,
    TableExists = 3010,
    InOut = 3043,  // the disk or the network failed
    ObjectExists = 3012,
    InvalidOperation = 3219,
    NoTransaction = 3034,  // commit or rollback without a beginning
    CannotOpen = 3051,     // the file is there, but may not be read
    NotAnAction = 3065,    // Execute with a text that returns rows
    AmbiguousColumn = 3079,
    BadBookmark = 3159,  // a bookmark of another recordset
    DuplicateColumn = 3191,
    ValueCount = 3346,  // number of values and of columns differ
};

// `detail` names the table, column, file or piece of SQL concerned; empty: no detail.
[[noreturn]] void Throw(Failure failure, const QString& detail = {});

}  // namespace dao
