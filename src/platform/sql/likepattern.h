#pragma once

#include "platform/sql/letters.h"

#include <QStringView>

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace sql {

// How a pattern takes the accents of a text.
enum class Accents {
    Minded,   // equal, as everywhere in the dialect
    AsTyped,  // for what people type: a letter without accent stands for all its accented forms,
              // one with an accent for itself alone
};

// What of a pattern, as UTF-8, is literal: its beginning, up to the first wildcard.
std::string_view LiteralBeginning(std::string_view pattern);

// Whether all texts that fit lie within a range of the order, so that an index can find them. A
// number below zero begins with a minus sign and sorts the other way round.
bool BoundsARange(std::string_view pattern);

// A LIKE pattern made ready: * any run, ? one character, # one digit, [list] and [!list] with
// ranges; in a list the other wildcards stand for themselves. Case never counts; how accents do,
// `accents` says. Matching takes at most length of text times length of pattern steps.
class Pattern {
public:
    // Throws Erro 3093 for a bracket left open, for a range that runs backwards and for more than
    // 40,000 characters; 3035 where all patterns in use together would take too much memory.
    explicit Pattern(QStringView pattern, Accents accents = Accents::Minded);

    // Both throw Erro 3093 where text and pattern are so long that nobody would wait for the
    // answer.
    bool Matches(QStringView text) const {
        CheckLength(static_cast<std::size_t>(text.size()));
        return Match(letters::Utf16Cursor(text));
    }
    bool MatchesUtf8(std::string_view text) const {
        CheckLength(text.size());
        return Match(letters::Utf8Cursor(text));
    }

private:
    enum class Kind { Character, AnyRun, AnyOne, Digit, List, ListNot };
    static constexpr auto None = static_cast<std::size_t>(-1);
    static constexpr std::size_t MostSteps = 200'000'000;  // well under a second
    struct Element {
        Kind kind;
        letters::Weight weight = 0;
        letters::Weight span = 0;  // a character may weigh that much more: any accent
        std::vector<std::pair<letters::Weight, letters::Weight>> ranges = {};
        std::size_t literal = None;  // in literals_, of the first character behind a run
        bool IsCharacter(letters::Weight character) const { return character - weight <= span; }
        bool Takes(letters::Weight character) const;
    };

    // The characters that stand behind a run, up to the next wildcard, for a scan over bytes. Bit i
    // of a byte's places: a character of the weight at place i can begin with it.
    struct Literal {
        static constexpr std::size_t Longest = 8;
        static constexpr std::size_t Most = 32;  // in one pattern; behind them nothing is skipped
        std::size_t length = 0;                  // in characters; no match has fewer bytes
        std::array<unsigned char, 256> places{};
    };

    // Its part in the memory that all patterns take: a statement may hold any number of them.
    class Share {
    public:
        Share() = default;
        Share(const Share&) = delete;
        Share& operator=(const Share&) = delete;
        ~Share();
        void Take(std::size_t bytes);

    private:
        std::size_t bytes_ = 0;
    };

    void CheckLength(std::size_t text) const {
        if (text > MostSteps / (elements_.size() + 1)) {
            RefuseLength();
        }
    }
    [[noreturn]] void RefuseLength() const;
    void AppendList(QStringView list);
    letters::Weight Span(letters::Weight character) const;
    void FindLiterals();
    bool SkipTo(const Element& element, letters::Utf8Cursor& text) const;
    static bool SkipTo(const Element& element, letters::Utf16Cursor& text);
    template <typename Cursor>
    bool Match(Cursor text) const;

    Accents accents_;
    std::vector<Element> elements_;
    std::vector<Literal> literals_;
    Share share_;
};

}  // namespace sql
