#include "platform/dao/rowstore.h"

#include "platform/convert.h"
#include "platform/dao/connection.h"
#include "platform/dao/statement.h"

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

template <typename Number>
Number GetNumber(const char* at) {
    Number number;
    std::memcpy(&number, at, sizeof number);
    return number;
}

}  // namespace

// A value as it lies in the arena.
struct RowStore::Stored {
    Tag tag;
    const char* data;
    std::size_t size;
};

void RowStore::AddBlock(std::size_t bytes) {
    const std::size_t size = std::max(
        bytes, std::min(FirstBlock << std::min<std::size_t>(blocks_.size(), 8), LargestBlock));
    share_.Grow(static_cast<qint64>(size));
    blocks_.push_back({std::make_unique_for_overwrite<char[]>(size), size});
    free_ = blocks_.back().bytes.get();
    end_ = free_ + size;
}

// Puts one row down, each value asked for once: how long it will be shows only on the way. A row
// that does not fit moves to a new block.
class RowStore::Writer {
public:
    explicit Writer(RowStore& store) : store_(store), start_(store.free_), at_(start_) {}

    template <typename Number>
    void Put(Tag tag, Number number) {
        Ensure(1 + sizeof number);
        *at_++ = static_cast<char>(tag);
        std::memcpy(at_, &number, sizeof number);
        at_ += sizeof number;
    }

    void PutNull() {
        Ensure(1);
        *at_++ = static_cast<char>(Null);
    }

    void PutText(QByteArrayView text) {
        const auto length = static_cast<std::size_t>(text.size());
        if (length > LongestShort) {
            Put(LongText, static_cast<quint32>(length));
            Ensure(length);
        } else {
            Ensure(1 + length);
            *at_++ = static_cast<char>(ShortText + length);
        }
        at_ = std::copy(text.begin(), text.end(), at_);
    }

    const char* Finish() {
        store_.free_ = at_;
        return start_;
    }

private:
    void Ensure(std::size_t bytes) {
        if (static_cast<std::size_t>(store_.end_ - at_) >= bytes) {
            return;
        }
        const char* old = start_;
        const auto written = static_cast<std::size_t>(at_ - start_);
        store_.AddBlock(2 * written + bytes);
        start_ = store_.free_;
        at_ = std::copy_n(old, written, start_);
    }

    RowStore& store_;
    char* start_;
    char* at_;
};

void RowStore::Append(const Statement& row, int columns) {
    Writer writer(*this);
    for (int column = 0; column < columns; ++column) {
        const Cell cell = row.Read(column);
        switch (cell.type) {
            case Cell::Type::Null:
                writer.PutNull();
                break;
            case Cell::Type::Integer:
                writer.Put(Integer, cell.integer);
                break;
            case Cell::Type::Real:
                writer.Put(Real, cell.real);
                break;
            case Cell::Type::Text:
                writer.PutText(cell.utf8);
                break;
        }
    }
    share_.Grow(sizeof(const char*));
    rows_.push_back(writer.Finish());
}

void RowStore::Clear() {
    rows_.clear();
    // One block stays, so that a result of which one row is kept at a time allocates once.
    if (blocks_.size() > 1) {
        blocks_.erase(blocks_.begin(), blocks_.end() - 1);
    }
    free_ = blocks_.empty() ? nullptr : blocks_.front().bytes.get();
    share_.Reset(blocks_.empty() ? 0 : static_cast<qint64>(blocks_.front().size));
}

RowStore::Stored RowStore::Decode(const char* at) {
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
        const Stored cell = Decode(at);
        at = cell.data + cell.size;
    }
    return at;
}

QVariant RowStore::Value(qint64 row, int column) const {
    const Stored cell = Decode(Find(row, column));
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
    const Stored cell = Decode(Find(row, column));
    switch (cell.tag) {
        case Null:
            return {};
        case Integer:
            return QString::number(GetNumber<qint64>(cell.data));
        case Real:
            return convert::ToShownText(GetNumber<double>(cell.data));
        default:
            return QString::fromUtf8(cell.data, static_cast<qsizetype>(cell.size));
    }
}

}  // namespace dao
