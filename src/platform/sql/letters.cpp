#include "platform/sql/letters.h"

namespace sql::letters {

namespace {

constexpr Weight MakeWeight(Weight rank, Weight accent = 0) {
    return rank << 8 | accent;
}

// Ranks: control characters, blank, punctuation and signs, digits, letters, everything else.
constexpr Weight ControlRank = 0x01;
constexpr Weight BlankRank = 0x50;
constexpr Weight SignRank = 0x60;
constexpr Weight FarSignRank = 0x1000;
constexpr Weight DigitRank = 0x2000;
constexpr Weight LetterRank = 0x2100;
constexpr Weight OtherRank = 0x10000;

constexpr char32_t FarSignsBegin = 0x2000;
constexpr char32_t FarSignsEnd = 0x2C00;

// The accents in their order; the place in this list is the low part of the weight.
constexpr std::string_view Accents = "'`^~:*,;<=(.\"/-&!";

// Base letter and accent of each character from U+00C0 on; ".." is a sign.
constexpr std::string_view AccentedLetters =
    "a`a'a^a~a:a*a&c,e`e'e^e:i`i'i^i:"     // U+00C0
    "d-n~o`o'o^o~o:..o/u`u'u^u:y't&s&"     // U+00D0
    "a`a'a^a~a:a*a&c,e`e'e^e:i`i'i^i:"     // U+00E0
    "d-n~o`o'o^o~o:..o/u`u'u^u:y't&y:"     // U+00F0
    "a=a=a(a(a;a;c'c'c^c^c.c.c<c<d<d<"     // U+0100
    "d/d/e=e=e(e(e.e.e;e;e<e<g^g^g(g("     // U+0110
    "g.g.g,g,h^h^h/h/i~i~i=i=i(i(i;i;"     // U+0120
    "i.i!i&i&j^j^k,k,k!l'l'l,l,l<l<l."     // U+0130
    "l.l/l/n'n'n,n,n<n<n!n&n&o=o=o(o("     // U+0140
    "o\"o\"o&o&r'r'r,r,r<r<s's's^s^s,s,"   // U+0150
    "s<s<t,t,t<t<t/t/u~u~u=u=u(u(u*u*"     // U+0160
    "u\"u\"u;u;w^w^y^y^y:z'z'z.z.z<z<s!";  // U+0170

constexpr char32_t FirstAccented = 0xC0;
static_assert(AccentedLetters.size() == 2 * (TableEnd - FirstAccented));

constexpr Weight Accent(char mark) {
    return static_cast<Weight>(Accents.find(mark)) + 1;
}

constexpr Weight Letter(char letter, Weight accent = 0) {
    return MakeWeight(LetterRank + static_cast<Weight>(letter - 'a'), accent);
}

constexpr Weight Compute(char32_t c) {
    if (c < 0x20 || (c >= 0x7F && c < 0xA0)) {
        return MakeWeight(ControlRank + (c < 0x20 ? c : c - 0x7F + 0x20));
    }
    if (c >= U'0' && c <= U'9') {
        return MakeWeight(DigitRank + (c - U'0'));
    }
    if (c >= U'a' && c <= U'z') {
        return Letter(static_cast<char>(c));
    }
    if (c >= U'A' && c <= U'Z') {
        return Letter(static_cast<char>(c - U'A' + U'a'));
    }
    switch (c) {
        case U' ':
            return MakeWeight(BlankRank);
        case 0xA0:  // the blank that does not break
            return MakeWeight(BlankRank, Accent('!'));
        case 0xAA:  // feminine and masculine ordinal signs
            return Letter('a', Accent('!'));
        case 0xBA:
            return Letter('o', Accent('!'));
        case 0xB9:  // raised digits
            return MakeWeight(DigitRank + 1, Accent('!'));
        case 0xB2:
        case 0xB3:
            return MakeWeight(DigitRank + (c - 0xB0), Accent('!'));
        default:
            break;
    }
    if (c >= FirstAccented) {
        const char letter = AccentedLetters[2 * (c - FirstAccented)];
        if (letter != '.') {
            return Letter(letter, Accent(AccentedLetters[2 * (c - FirstAccented) + 1]));
        }
    }
    return MakeWeight(SignRank + c);
}

constexpr std::array<Weight, TableEnd> MakeTable() {
    std::array<Weight, TableEnd> table{};
    for (char32_t c = 0; c < TableEnd; ++c) {
        table[c] = Compute(c);
    }
    return table;
}

// Alphabets whose small letters stand at a fixed distance from the capitals.
struct CaseRange {
    char32_t firstSmall;
    char32_t lastSmall;
    char32_t distance;
};
constexpr CaseRange CaseRanges[] = {
    {0x3B1, 0x3C9, 0x20},
    {0x430, 0x44F, 0x20},
    {0x450, 0x45F, 0x50},
};

}  // namespace

constexpr std::array<Weight, TableEnd> Table = MakeTable();

Weight WeightBeyondTable(char32_t character) {
    for (const CaseRange& range : CaseRanges) {
        if (character >= range.firstSmall && character <= range.lastSmall) {
            return MakeWeight(OtherRank + character - range.distance);
        }
    }
    if (character >= FarSignsBegin && character < FarSignsEnd) {
        return MakeWeight(FarSignRank + character - FarSignsBegin);
    }
    return MakeWeight(OtherRank + character);
}

Weight Utf8Cursor::NextBeyondAscii() {
    const unsigned char lead = *at_++;
    int more = 0;
    char32_t character = 0;
    char32_t least = 0;
    if (lead >= 0xC2 && lead < 0xE0) {
        more = 1;
        character = lead & 0x1F;
        least = 0x80;
    } else if (lead >= 0xE0 && lead < 0xF0) {
        more = 2;
        character = lead & 0x0F;
        least = 0x800;
    } else if (lead >= 0xF0 && lead < 0xF5) {
        more = 3;
        character = lead & 0x07;
        least = 0x10000;
    }
    bool valid = more > 0 && end_ - at_ >= more;
    for (int i = 0; valid && i < more; ++i) {
        valid = (at_[i] & 0xC0) == 0x80;
        character = character << 6 | (at_[i] & 0x3F);
    }
    valid = valid && character >= least && character <= 0x10FFFF &&
            !(character >= 0xD800 && character < 0xE000);
    if (!valid) {
        // In the place of a lone surrogate, which valid UTF-8 never holds.
        return MakeWeight(OtherRank + 0xDC00 + lead);
    }
    at_ += more;
    return WeightOf(character);
}

}  // namespace sql::letters
