#pragma once

struct sqlite3;

namespace dao {

// Registers the collation and the functions of the dialect with a connection.
void RegisterFunctions(sqlite3* handle);

}  // namespace dao
