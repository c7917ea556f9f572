#pragma once

#include <QStringView>

#include <array>
#include <cstdint>
#include <string_view>

// What collation and patterns share: the weight of each character, and reading characters from the
// two encodings in which texts come.
namespace sql::letters {

// Rank in the upper bits, accent in the low eight. Two characters that differ only in case have one
// weight; two that differ only in accent have one rank. Never 0.
using Weight = std::uint32_t;

constexpr Weight RankOf(Weight weight) {
    return weight >> 8;
}

inline constexpr char32_t TableEnd = 0x180;
extern const std::array<Weight, TableEnd> Table;

Weight WeightBeyondTable(char32_t character);

inline Weight WeightOf(char32_t character) {
    return character < TableEnd ? Table[character] : WeightBeyondTable(character);
}

// Reads UTF-8. A byte that belongs to no valid sequence counts as one character of its own, so that
// any content of a file has its place in the order.
class Utf8Cursor {
public:
    explicit Utf8Cursor(std::string_view text)
        : at_(reinterpret_cast<const unsigned char*>(text.data())), end_(at_ + text.size()) {}

    bool AtEnd() const { return at_ == end_; }
    Weight Next() { return *at_ < 0x80 ? Table[*at_++] : NextBeyondAscii(); }

    // For a scan over the bytes themselves; a step of `bytes` must end between two characters.
    std::size_t BytesLeft() const { return static_cast<std::size_t>(end_ - at_); }
    unsigned char Byte(std::size_t ahead) const { return at_[ahead]; }
    void Skip(std::size_t bytes) { at_ += bytes; }

private:
    Weight NextBeyondAscii();

    const unsigned char* at_;
    const unsigned char* end_;
};

class Utf16Cursor {
public:
    explicit Utf16Cursor(QStringView text) : at_(text.utf16()), end_(at_ + text.size()) {}

    bool AtEnd() const { return at_ == end_; }
    Weight Next() {
        const char16_t unit = *at_++;
        if (QChar::isHighSurrogate(unit) && at_ != end_ && QChar::isLowSurrogate(*at_)) {
            return WeightOf(QChar::surrogateToUcs4(unit, *at_++));
        }
        return WeightOf(unit);
    }

private:
    const char16_t* at_;
    const char16_t* end_;
};

}  // namespace sql::letters
