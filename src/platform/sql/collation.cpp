#include "platform/sql/collation.h"

#include "platform/sql/letters.h"

#include <cstring>

namespace sql::collation {

constinit const char Name[] = DIALECT_COLLATION;
constinit const std::string_view Clause = " COLLATE " DIALECT_COLLATION;

namespace {

using letters::Weight;

template <typename Cursor>
int CompareCursors(Cursor a, Cursor b) {
    int accents = 0;
    while (!a.AtEnd() && !b.AtEnd()) {
        const Weight left = a.Next();
        const Weight right = b.Next();
        if (left == right) {
            continue;
        }
        const int order = left < right ? -1 : 1;
        if (letters::RankOf(left) != letters::RankOf(right)) {
            return order;
        }
        if (accents == 0) {
            accents = order;
        }
    }
    if (a.AtEnd() != b.AtEnd()) {
        return a.AtEnd() ? -1 : 1;
    }
    return accents;
}

bool IsAscii(std::uint64_t eightBytes) {
    return (eightBytes & 0x8080808080808080U) == 0;
}

}  // namespace

int Compare(QStringView a, QStringView b) {
    return CompareCursors(letters::Utf16Cursor(a), letters::Utf16Cursor(b));
}

int CompareUtf8(const char* a, qsizetype aLength, const char* b, qsizetype bLength) {
    // Sorting compares mostly ASCII texts with long common beginnings: those bytes need no table.
    const qsizetype common = std::min(aLength, bLength);
    qsizetype at = 0;
    for (; at + 8 <= common; at += 8) {
        std::uint64_t left = 0;
        std::uint64_t right = 0;
        std::memcpy(&left, a + at, 8);
        std::memcpy(&right, b + at, 8);
        if (left != right || !IsAscii(left)) {
            break;
        }
    }
    for (; at < common; ++at) {
        const auto left = static_cast<unsigned char>(a[at]);
        const auto right = static_cast<unsigned char>(b[at]);
        if ((left | right) & 0x80) {
            return CompareCursors(
                letters::Utf8Cursor({a + at, static_cast<std::size_t>(aLength - at)}),
                letters::Utf8Cursor({b + at, static_cast<std::size_t>(bLength - at)}));
        }
        // ASCII has no accents, so a difference is one of rank and decides.
        if (letters::Table[left] != letters::Table[right]) {
            return letters::Table[left] < letters::Table[right] ? -1 : 1;
        }
    }
    return aLength == bLength ? 0 : (aLength < bLength ? -1 : 1);
}

}  // namespace sql::collation
