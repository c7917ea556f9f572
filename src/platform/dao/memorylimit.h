#pragma once

#include <QtGlobal>

// What statements take of the memory is bounded, the engine's part and the rows that results keep
// together: sorting, grouping and lists of distinct rows lie in memory, as they would lie
// unenciphered on a disk, and a careless join asks for more of them than any computer has. The
// bound grows with the largest open file: a list of everything in it is smaller than the file
// itself, which holds each row's texts and their indexes.
namespace dao {

// Before the first connection of the process is opened.
void BoundMemory();

// What one result keeps.
class MemoryShare {
public:
    MemoryShare() = default;
    ~MemoryShare() { Reset(); }
    MemoryShare(const MemoryShare&) = delete;
    MemoryShare& operator=(const MemoryShare&) = delete;

    void Grow(qint64 bytes);  // throws 3035
    void Reset(qint64 bytes = 0);

private:
    qint64 bytes_ = 0;
};

}  // namespace dao
