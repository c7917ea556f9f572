#pragma once

// What the engine takes of the memory for a statement is bounded: sorting, grouping and lists of
// distinct rows lie in memory, as they would lie unenciphered on a disk, and a careless join asks
// for more of them than any computer has.
namespace dao {

// Before the first connection of the process is opened.
void BoundMemory();

}  // namespace dao
