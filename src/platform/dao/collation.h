#pragma once

#include <QStringView>

// The order of all text in a catalogue: Latin letters by base letter, then by accent; case never
// counts. Equality ignores case and minds accents. A fixed table of this source, because indexes
// keep the order on disk: changing it means rebuilding every catalogue.
namespace dao::collation {

inline constexpr char Name[] = "TARVO";

int Compare(QStringView a, QStringView b);  // <0, 0, >0
int CompareUtf8(const char* a, qsizetype aLength, const char* b, qsizetype bLength);

// `text LIKE pattern` with * ? # [list] [!list] and ranges; case folded, accents minded. Throws
// Erro 3093 for a bracket left open.
bool Like(QStringView text, QStringView pattern);

// The literal beginning of a pattern, up to its first wildcard.
QStringView LiteralPrefix(QStringView pattern);

// A character that sorts behind every other: prefix + this bounds all texts that begin with prefix.
inline constexpr char32_t Last = 0x10FFFF;

}  // namespace dao::collation
