#include "platform/sql/likepattern.h"

#include "platform/sql/errors.h"

#include <algorithm>

namespace sql {

using letters::Weight;
using namespace Qt::StringLiterals;

namespace {

// Thirty patterns as long as a pattern may be; a search of people's has six.
constexpr std::size_t MostBytes = 60'000'000;
std::size_t bytesInUse = 0;

}  // namespace

void Pattern::Share::Take(std::size_t bytes) {
    if (bytes > MostBytes - bytesInUse) {
        Throw(Failure::Resources);
    }
    bytesInUse += bytes;
    bytes_ = bytes;
}

Pattern::Share::~Share() {
    bytesInUse -= bytes_;
}

std::string_view LiteralBeginning(std::string_view pattern) {
    return pattern.substr(0, std::min(pattern.find_first_of("*?#["), pattern.size()));
}

bool BoundsARange(std::string_view pattern) {
    return !LiteralBeginning(pattern).empty() && pattern.front() != '-';
}

Pattern::Pattern(QStringView pattern, Accents accents) : accents_(accents) {
    // A box that people type into holds 32,767.
    constexpr qsizetype Longest = 40'000;
    if (pattern.size() > Longest) {
        Throw(Failure::BadPattern, pattern.first(40).toString() + u"…"_s);
    }
    elements_.reserve(static_cast<std::size_t>(pattern.size()));
    for (qsizetype at = 0; at < pattern.size(); ++at) {
        const QChar c = pattern.at(at);
        if (c == u'*') {
            if (elements_.empty() || elements_.back().kind != Kind::AnyRun) {
                elements_.push_back({Kind::AnyRun});
            }
        } else if (c == u'?') {
            elements_.push_back({Kind::AnyOne});
        } else if (c == u'#') {
            elements_.push_back({Kind::Digit});
        } else if (c == u'[') {
            const qsizetype close = pattern.indexOf(u']', at + 1);
            if (close < 0) {
                Throw(Failure::BadPattern, pattern.toString());
            }
            AppendList(pattern.sliced(at + 1, close - at - 1));
            at = close;
        } else {
            const bool pair = c.isHighSurrogate() && at + 1 < pattern.size();
            const Weight weight = letters::Utf16Cursor(pattern.sliced(at, pair ? 2 : 1)).Next();
            elements_.push_back({Kind::Character, weight, Span(weight)});
            at += pair ? 1 : 0;
        }
    }
    FindLiterals();
    share_.Take(elements_.capacity() * sizeof(Element) + literals_.capacity() * sizeof(Literal));
}

void Pattern::FindLiterals() {
    for (std::size_t i = 1; i < elements_.size() && literals_.size() < Literal::Most; ++i) {
        if (elements_[i - 1].kind != Kind::AnyRun || elements_[i].kind != Kind::Character) {
            continue;
        }
        Literal literal;
        // What lies beyond the ASCII range may begin any character: it has to be decoded.
        std::fill(literal.places.begin() + 0x80, literal.places.end(), 0xFF);
        while (literal.length < Literal::Longest && i + literal.length < elements_.size() &&
               elements_[i + literal.length].kind == Kind::Character) {
            for (std::size_t byte = 0; byte < 0x80; ++byte) {
                if (elements_[i + literal.length].IsCharacter(letters::Table[byte])) {
                    literal.places[byte] |= static_cast<unsigned char>(1U << literal.length);
                }
            }
            ++literal.length;
        }
        elements_[i].literal = literals_.size();
        literals_.push_back(literal);
    }
}

void Pattern::RefuseLength() const {
    Throw(Failure::BadPattern, u"padrão longo demais para um texto tão longo"_s);
}

// Accents are the low part of a weight; a letter without one has zero there.
Weight Pattern::Span(Weight character) const {
    return accents_ == Accents::AsTyped && (character & 0xFF) == 0 ? 0xFF : 0;
}

void Pattern::AppendList(QStringView list) {
    if (list.isEmpty()) {
        return;  // "[]" stands for nothing at all
    }
    const bool negated = list.size() > 1 && list.front() == u'!';
    if (negated) {
        list = list.sliced(1);
    }
    std::vector<Weight> characters;
    for (letters::Utf16Cursor cursor(list); !cursor.AtEnd();) {
        characters.push_back(cursor.Next());
    }
    const Weight hyphen = letters::WeightOf(U'-');
    Element element{negated ? Kind::ListNot : Kind::List};
    for (std::size_t i = 0; i < characters.size(); ++i) {
        // A hyphen at either end is an ordinary character.
        const bool range = i + 2 < characters.size() && characters[i + 1] == hyphen;
        const Weight first = characters[i];
        const Weight last = range ? characters[i + 2] : first;
        if (last < first) {
            Throw(Failure::BadPattern, list.toString());
        }
        element.ranges.emplace_back(first, last + Span(last));
        i += range ? 2 : 0;
    }
    elements_.push_back(std::move(element));
}

bool Pattern::Element::Takes(Weight character) const {
    switch (kind) {
        case Kind::Character:
            return IsCharacter(character);
        case Kind::AnyOne:
            return true;
        case Kind::Digit:
            return character >= letters::Table[U'0'] && character <= letters::Table[U'9'] &&
                   (character & 0xFF) == 0;
        case Kind::List:
        case Kind::ListNot:
            break;
        case Kind::AnyRun:
            return false;
    }
    bool listed = false;
    for (const auto& [first, last] : ranges) {
        listed = listed || (character >= first && character <= last);
    }
    return listed == (kind == Kind::List);
}

// Moves on to where the element behind a run can begin; false when it cannot any more. Most of a
// search inside descriptions is spent here, so it looks at bytes and skips those that can't be in a
// match.
bool Pattern::SkipTo(const Element& element, letters::Utf8Cursor& text) const {
    if (element.literal == None) {
        return true;
    }
    const Literal& literal = literals_[element.literal];
    const std::size_t last = literal.length - 1;
    while (text.BytesLeft() > last) {
        if (literal.places[text.Byte(last)] == 0) {
            text.Skip(last + 1);  // an ASCII byte that no match has: none begins up to here
            continue;
        }
        const bool second = last == 0 || (literal.places[text.Byte(1)] & 2) != 0;
        if (second && (literal.places[text.Byte(0)] & 1) != 0) {
            letters::Utf8Cursor next = text;
            if (element.IsCharacter(next.Next())) {
                return true;
            }
        }
        text.Next();
    }
    return false;
}

bool Pattern::SkipTo(const Element& element, letters::Utf16Cursor& text) {
    if (element.kind != Kind::Character) {
        return true;
    }
    while (!text.AtEnd()) {
        const letters::Utf16Cursor here = text;
        if (element.IsCharacter(text.Next())) {
            text = here;
            return true;
        }
    }
    return false;
}

// A mismatch goes back to the last run alone: what an earlier run could take, the later one can
// take as well, so nothing is tried twice.
template <typename Cursor>
bool Pattern::Match(Cursor text) const {
    const Element* element = elements_.data();
    const Element* const end = element + elements_.size();
    const Element* afterRun = nullptr;
    Cursor runEnd = text;
    while (!text.AtEnd()) {
        if (element != end && element->kind == Kind::AnyRun) {
            afterRun = ++element;
            if (element == end) {
                return true;
            }
            if (!SkipTo(*afterRun, text)) {
                return false;
            }
            runEnd = text;
            continue;
        }
        if (element != end && element->Takes(text.Next())) {
            ++element;
            continue;
        }
        if (!afterRun) {
            return false;
        }
        runEnd.Next();
        if (!SkipTo(*afterRun, runEnd)) {
            return false;
        }
        text = runEnd;
        element = afterRun;
    }
    while (element != end && element->kind == Kind::AnyRun) {
        ++element;
    }
    return element == end;
}

template bool Pattern::Match(letters::Utf8Cursor) const;
template bool Pattern::Match(letters::Utf16Cursor) const;

}  // namespace sql
