#pragma once

struct sqlite3;

namespace dao {

// What sys::FindLock takes for `own`: on Windows the handle of a connection's file while it holds
// the bytes of readers shared and keeps other writers out, null otherwise and elsewhere.
void* HandleOfSharedLock(sqlite3* handle);

}  // namespace dao
