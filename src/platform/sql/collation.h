#pragma once

#include <QStringView>

#include <string_view>

// The order of all text in a catalogue: Latin letters by base letter, then by accent; case never
// counts. Equality ignores case and minds accents. A fixed table of this source, because indexes
// keep the order on disk: changing it means rebuilding every catalogue.
namespace sql::collation {

// Its name in the definitions on disk; the product gives it.
extern const char Name[];

// Names it behind an expression.
extern const std::string_view Clause;

int Compare(QStringView a, QStringView b);  // <0, 0, >0
int CompareUtf8(const char* a, qsizetype aLength, const char* b, qsizetype bLength);

// A character, as UTF-8, that sorts behind every other: a beginning with this behind it bounds all
// texts that begin so.
inline constexpr std::string_view Last = "\xF4\x8F\xBF\xBF";

}  // namespace sql::collation
