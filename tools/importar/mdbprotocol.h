#pragma once

#include <cstddef>
#include <cstdint>

// What tarvo-leitor-mdb writes to its standard output. First the mark, then frames: a letter, the
// size of what follows in four bytes, and that. Numbers are little-endian, a text is its size in
// four bytes and its UTF-8. The last frame is End, which tells how many came before it, so that an
// output that was cut short cannot be taken for a whole one.
namespace mdbprotocol {

inline constexpr char Mark[] = "TARVOMDB1\n";
inline constexpr std::size_t MarkSize = sizeof(Mark) - 1;
inline constexpr std::size_t HeadSize = 5;
inline constexpr std::uint32_t LargestFrame = 256u << 20;

enum Frame : char {
    Table = 'T',    // u32 its number, u32 rows that it declares, text name, u32 columns, text each
    Linked = 'L',   // text name: a table that only points to another file
    Row = 'R',      // one value for each column
    Rows = 'F',     // u32 rows that were sent, u32 that the table declares
    Failure = 'E',  // text for the user, in Portuguese; the last but End
    End = 'Z',      // u32 frames before this one
};

enum Value : char {
    Null = 'N',
    Integer = 'I',  // i64
    Real = 'D',     // the eight bytes of a double
    Decimal = 'M',  // text, with a point
    Text = 'S',     // text
    Other = 'U',    // of a type that no catalogue holds
};

}  // namespace mdbprotocol
