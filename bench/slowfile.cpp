#include "slowfile.h"

#include <sqlite3.h>
#include <stdexcept>
#include <thread>
#include <utility>

namespace bench {
namespace {

Traffic traffic;
std::chrono::microseconds readDelay{0};

// The engine allocates it; the file behind it follows in the same piece.
struct SlowFile {
    sqlite3_file base;
    bool catalogue;

    sqlite3_file* Behind() { return reinterpret_cast<sqlite3_file*>(this + 1); }
    static SlowFile& Of(sqlite3_file* file) { return *reinterpret_cast<SlowFile*>(file); }
};

const sqlite3_io_methods& MethodsOf(sqlite3_file* file) {
    return *SlowFile::Of(file).Behind()->pMethods;
}

template <auto Method, typename... Arguments>
int Pass(sqlite3_file* file, Arguments... arguments) {
    return (MethodsOf(file).*Method)(SlowFile::Of(file).Behind(), arguments...);
}

template <auto Method, typename... Arguments>
int PassLock(sqlite3_file* file, Arguments... arguments) {
    traffic.locks += SlowFile::Of(file).catalogue ? 1 : 0;
    return Pass<Method>(file, arguments...);
}

int Read(sqlite3_file* file, void* bytes, int count, sqlite3_int64 from) {
    if (SlowFile::Of(file).catalogue) {
        ++traffic.reads;
        traffic.bytes += count;
        std::this_thread::sleep_for(readDelay);
    }
    return Pass<&sqlite3_io_methods::xRead>(file, bytes, count, from);
}

// Version 1: no shared memory and no mapping, which a network has not either.
constexpr sqlite3_io_methods Methods = {
    1,
    Pass<&sqlite3_io_methods::xClose>,
    Read,
    Pass<&sqlite3_io_methods::xWrite, const void*, int, sqlite3_int64>,
    Pass<&sqlite3_io_methods::xTruncate, sqlite3_int64>,
    Pass<&sqlite3_io_methods::xSync, int>,
    Pass<&sqlite3_io_methods::xFileSize, sqlite3_int64*>,
    PassLock<&sqlite3_io_methods::xLock, int>,
    PassLock<&sqlite3_io_methods::xUnlock, int>,
    PassLock<&sqlite3_io_methods::xCheckReservedLock, int*>,
    Pass<&sqlite3_io_methods::xFileControl, int, void*>,
    Pass<&sqlite3_io_methods::xSectorSize>,
    Pass<&sqlite3_io_methods::xDeviceCharacteristics>,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr};

int Open(sqlite3_vfs* own, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    SlowFile& slow = SlowFile::Of(file);
    slow.catalogue = (flags & SQLITE_OPEN_MAIN_DB) != 0;
    auto* behind = static_cast<sqlite3_vfs*>(own->pAppData);
    const int opened = behind->xOpen(behind, name, slow.Behind(), flags, outFlags);
    file->pMethods = slow.Behind()->pMethods == nullptr ? nullptr : &Methods;
    return opened;
}

}  // namespace

void PutSlowFilesUnderTheEngine() {
    sqlite3_vfs* behind = sqlite3_vfs_find(nullptr);
    static sqlite3_vfs own = *behind;
    own.zName = "slow";
    own.szOsFile += int(sizeof(SlowFile));
    own.pAppData = behind;
    own.xOpen = Open;
    if (sqlite3_vfs_register(&own, 1) != SQLITE_OK) {
        throw std::runtime_error("the engine takes no other files");
    }
}

void SetReadDelay(std::chrono::microseconds delay) {
    readDelay = delay;
}

Traffic TakeTraffic() {
    return std::exchange(traffic, {});
}

}  // namespace bench
