#include "platform/dao/rowstore.h"

#include "platform/convert.h"
#include "platform/dao/sqlite.h"

#include <algorithm>
#include <cstring>

namespace dao {

namespace {

// Blocks grow from one to the other, so that a result of one row costs little and a large one few
// allocations.
constexpr std::size_t FirstBlock = std::size_t{1} << 12;
constexpr std::size_t LargestBlock = std::size_t{1} << 20;

// Each cell is a tag and what belongs to it. Tags from ShortText on hold the length of a text up
// to LongestShort bytes in themselves.
enum Tag : unsigned char { Null, Integer, Real, LongText, ShortText };
constexpr std::size_t LongestShort = 255 - ShortText;

std::size_t CellSize(const Statement& row, int column) {
    switch (row.Type(column)) {
        case 5:
            return 1;
        case 1:
        case 2:
            return 1 + sizeof(qint64);
        default: {
            const auto length = static_cast<std::size_t>(row.Utf8(column).size());
            return 1 + (length > LongestShort ? sizeof(quint32) : 0) + length;
        }
    }
}

template <typename Number>
char* PutNumber(char* at, Tag tag, Number number) {
    *at++ = static_cast<char>(tag);
    std::memcpy(at, &number, sizeof number);
    return at + sizeof number;
}

char* PutText(char* at, QByteArrayView text) {
    const auto length = static_cast<std::size_t>(text.size());
    if (length > LongestShort) {
        at = PutNumber(at, LongText, static_cast<quint32>(length));
    } else {
        *at++ = static_cast<char>(ShortText + length);
    }
    std::copy(text.begin(), text.end(), at);
    return at + length;
}

template <typename Number>
Number GetNumber(const char* at) {
    Number number;
    std::memcpy(&number, at, sizeof number);
    return number;
}

}  // namespace

struct RowStore::Cell {
    Tag tag;
    const char* data;
    std::size_t size;
};

char* RowStore::Reserve(std::size_t bytes) {
    if (bytes > left_) {
        left_ = std::max(
            bytes, std::min(FirstBlock << std::min<std::size_t>(blocks_.size(), 8), LargestBlock));
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(left_));
        free_ = blocks_.back().get();
    }
    char* at = free_;
    free_ += bytes;
    left_ -= bytes;
    return at;
}

void RowStore::Append(const Statement& row, int columns) {
    std::size_t size = 0;
    for (int column = 0; column < columns; ++column) {
        size += CellSize(row, column);
    }
    char* at = Reserve(size);
    rows_.push_back(at);
    for (int column = 0; column < columns; ++column) {
        switch (row.Type(column)) {
            case 5:
                *at++ = static_cast<char>(Null);
                break;
            case 1:
                at = PutNumber(at, Integer, row.Int64(column));
                break;
            case 2:
                at = PutNumber(at, Real, row.Double(column));
                break;
            default:
                at = PutText(at, row.Utf8(column));
        }
    }
}

void RowStore::Clear() {
    rows_.clear();
    // One block stays, so that a result of which one row is kept at a time allocates once.
    blocks_.resize(std::min<std::size_t>(blocks_.size(), 1));
    free_ = blocks_.empty() ? nullptr : blocks_.front().get();
    left_ = blocks_.empty() ? 0 : FirstBlock;
}

RowStore::Cell RowStore::Decode(const char* at) {
    const auto tag = static_cast<unsigned char>(*at++);
    switch (tag) {
        case Null:
            return {Null, at, 0};
        case Integer:
        case Real:
            return {static_cast<Tag>(tag), at, sizeof(qint64)};
        case LongText:
            return {LongText, at + sizeof(quint32), GetNumber<quint32>(at)};
        default:
            return {ShortText, at, static_cast<std::size_t>(tag - ShortText)};
    }
}

const char* RowStore::Find(qint64 row, int column) const {
    const char* at = rows_[static_cast<std::size_t>(row)];
    for (; column > 0; --column) {
        const Cell cell = Decode(at);
        at = cell.data + cell.size;
    }
    return at;
}

QVariant RowStore::Value(qint64 row, int column) const {
    const Cell cell = Decode(Find(row, column));
    switch (cell.tag) {
        case Null:
            return {};
        case Integer:
            return GetNumber<qlonglong>(cell.data);
        case Real:
            return GetNumber<double>(cell.data);
        default:
            return QString::fromUtf8(cell.data, static_cast<qsizetype>(cell.size));
    }
}

QString RowStore::Text(qint64 row, int column) const {
    const Cell cell = Decode(Find(row, column));
    switch (cell.tag) {
        case Null:
            return {};
        case Integer:
            return QString::number(GetNumber<qint64>(cell.data));
        case Real:
            return convert::ToTextOrEmpty(GetNumber<double>(cell.data));
        default:
            return QString::fromUtf8(cell.data, static_cast<qsizetype>(cell.size));
    }
}

}  // namespace dao
