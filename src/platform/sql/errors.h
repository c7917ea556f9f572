#pragma once

#include "platform/erro.h"

namespace sql {

// Numbers of the engine's errors: the field's usual numbers, so that a support desk reads them
// without a table. Each has its own description (errors.cpp).
enum class Failure : int {
    NotSupported = 3000,  // part of the dialect that cannot be carried over
    TableExists = 3010,
    ObjectExists = 3012,
    NoCurrentRecord = 3021,
    DuplicateKey = 3022,  // a unique index would hold a value twice
    FileNotFound = 3024,
    ReadOnly = 3027,  // the file or its folder cannot be written
    WrongPassword = 3031,
    NoTransaction = 3034,  // commit or rollback without a beginning
    Resources = 3035,      // more memory than a statement may take
    InOut = 3043,          // the disk or the network failed
    PathNotFound = 3044,   // the folder of the file does not exist
    Damaged = 3049,        // is a catalogue, but a page of it cannot be read
    CannotOpen = 3051,     // the file is there, but may not be read
    Interrupted = 3059,    // ended by the program's idle function (Connection::SetIdle)
    UnknownColumn = 3061,
    NotAnAction = 3065,  // Execute with a text that returns rows
    SyntaxError = 3075,
    UnknownTable = 3078,
    AmbiguousColumn = 3079,
    NotUpdatable = 3073,  // a view: what is written goes to its tables
    UnknownFunction = 3085,
    BadPattern = 3093,         // a LIKE pattern with a bracket left open
    MissingExpression = 3129,  // an empty text, or no statement that the engine knows
    DiskFull = 3183,
    NotGrouped = 3122,  // a column outside GROUP BY and every aggregate
    TextTooLong = 3163,
    DuplicateColumn = 3191,
    InvalidOperation = 3219,
    Locked = 3260,        // another connection holds the lock
    ItemNotFound = 3265,  // no such field in a recordset
    NotNull = 3314,
    CheckViolated = 3317,
    NotACatalogue = 3343,    // some other kind of file
    ValueCount = 3346,       // number of values and of columns differ
    MixedComparison = 3464,  // of a text with a number
    ObjectInvalid = 3420,    // used after Close, or after its database went away
};

// `detail` names the table, column, file or piece of SQL concerned; empty: no detail.
[[noreturn]] void Throw(Failure failure, const QString& detail = {});

}  // namespace sql
