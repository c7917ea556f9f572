#pragma once

struct sqlite3;

// What a result code of the engine's C API means to the callers of platform/dao.
namespace dao {

// Throws the Erro of a primary code; the connection tells the details. `handle` is null where there
// was no memory for a connection.
[[noreturn]] void Raise(sqlite3* handle, int code);

void Check(sqlite3* handle, int code);  // the same, unless the code is that of success

}  // namespace dao
