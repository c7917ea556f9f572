#pragma once

#include "platform/dao/letters.h"

#include <QStringView>

#include <string_view>
#include <utility>
#include <vector>

namespace dao {

// A LIKE pattern made ready: * any run, ? one character, # one digit, [list] and [!list] with
// ranges; in a list the other wildcards stand for themselves. Case never counts, accents do.
// Matching takes at most length of text times length of pattern steps.
class Pattern {
public:
    // Throws Erro 3093 for a bracket left open and for a range that runs backwards.
    explicit Pattern(QStringView pattern);

    bool Matches(QStringView text) const { return Match(letters::Utf16Cursor(text)); }
    bool MatchesUtf8(std::string_view text) const { return Match(letters::Utf8Cursor(text)); }

private:
    enum class Kind { Character, AnyRun, AnyOne, Digit, List, ListNot };
    struct Element {
        Kind kind;
        letters::Weight weight = 0;
        std::vector<std::pair<letters::Weight, letters::Weight>> ranges = {};
        bool Takes(letters::Weight character) const;
    };

    void AppendList(QStringView list);
    template <typename Cursor>
    static bool SkipTo(const Element& element, Cursor& text);
    template <typename Cursor>
    bool Match(Cursor text) const;

    std::vector<Element> elements_;
};

}  // namespace dao
