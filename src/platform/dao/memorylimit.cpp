#include "platform/dao/memorylimit.h"

#include "platform/dao/connection.h"
#include "platform/dao/errors.h"

#include <QFileInfo>

#include <algorithm>
#include <sqlite3.h>

namespace dao {

namespace {

// Bytes for a statement beside its data: what connections keep of their files in memory, and once
// more the largest file, so that what a catalogue holds can be sorted and indexed.
constexpr qint64 ForStatements = 120'000'000;
// Of them nothing is for large results, so that beside one that has grown too much the engine still
// works and small ones are still read.
constexpr qint64 Reserve = 20'000'000;
constexpr qint64 SmallResult = 1'000'000;

sqlite3_mem_methods engines;  // its own way to the memory
qint64 used = 0;
qint64 allowed = ForStatements;

qint64 Allowed() {
    qint64 cached = 0;
    qint64 largest = 0;
    for (const Connection* connection : Connection::All()) {
        cached += connection->CacheBytes();
        largest = std::max(largest, QFileInfo(connection->Path()).size());
    }
    return ForStatements + cached + largest;
}

// What is allowed grows with the data, so it is looked up where it seems to be used up.
bool IsTooMuch(qint64 more) {
    const qint64 wanted = used + more;
    if (wanted > allowed) {
        allowed = Allowed();
    }
    return wanted > allowed;
}

// With what the system's heap adds to a piece: rows that are sorted are small.
int SizeOf(void* piece) {
    constexpr int Added = 16;
    return engines.xSize(piece) + Added;
}

void* Take(int bytes) {
    void* piece = IsTooMuch(bytes) ? nullptr : engines.xMalloc(bytes);
    if (piece) {
        used += SizeOf(piece);
    }
    return piece;
}

void Free(void* piece) {
    used -= SizeOf(piece);
    engines.xFree(piece);
}

void* Resize(void* piece, int bytes) {
    const int before = SizeOf(piece);
    void* resized = IsTooMuch(bytes - before) ? nullptr : engines.xRealloc(piece, bytes);
    if (resized) {
        used += SizeOf(resized) - before;
    }
    return resized;
}

}  // namespace

void MemoryShare::Grow(qint64 bytes) {
    if (IsTooMuch(bytes_ + bytes > SmallResult ? bytes + Reserve : bytes)) {
        Throw(Failure::Resources);
    }
    bytes_ += bytes;
    used += bytes;
}

void MemoryShare::Reset(qint64 bytes) {
    used += bytes - bytes_;
    bytes_ = bytes;
}

void BoundMemory() {
    // Nobody reads the engine's own count, and keeping it takes a lock at each piece.
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &engines) != SQLITE_OK) {
        return;  // somebody else has begun to use the library in this process
    }
    sqlite3_mem_methods bounded = engines;
    bounded.xMalloc = Take;
    bounded.xFree = Free;
    bounded.xRealloc = Resize;
    sqlite3_config(SQLITE_CONFIG_MALLOC, &bounded);
}

}  // namespace dao
