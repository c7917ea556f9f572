#include "platform/dao/rowstore.h"

#include "platform/convert.h"
#include "platform/dao/connection.h"
#include "platform/dao/statement.h"
#include "platform/sizes.h"

#include <algorithm>
#include <cstring>
#include <ranges>

namespace dao {

namespace {

// Blocks double from one to the other, so that a result of one row costs little and a large one few
// allocations.
constexpr std::size_t FirstBlock = 4_KiB;
constexpr std::size_t Doublings = 8;

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
    const std::size_t size = std::max(bytes, FirstBlock << std::min(blocks_.size(), Doublings));
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

    void PutNull() { Put(Null, nullptr, 0); }

    template <typename Number>
    void PutNumber(Tag tag, Number number) {
        Put(tag, &number, sizeof number);
    }

    void PutText(QByteArrayView text) {
        const auto length = static_cast<std::size_t>(text.size());
        if (length > LongestShort) {
            PutNumber(LongText, static_cast<quint32>(length));
            Copy(text.data(), length);
        } else {
            Put(ShortText + length, text.data(), length);
        }
    }

    const char* Finish() {
        store_.free_ = at_;
        return start_;
    }

private:
    void Put(std::size_t tag, const void* bytes, std::size_t size) {
        const auto byte = static_cast<char>(tag);
        Copy(&byte, sizeof byte);
        Copy(bytes, size);
    }

    void Copy(const void* bytes, std::size_t size) {
        Ensure(size);
        at_ = std::copy_n(static_cast<const char*>(bytes), size, at_);
    }

    void Ensure(std::size_t bytes) {
        if (static_cast<std::size_t>(store_.end_ - at_) >= bytes) {
            return;
        }
        const char* old = start_;
        const auto written = static_cast<std::size_t>(at_ - start_);
        store_.AddBlock(written + bytes);
        start_ = store_.free_;
        at_ = std::copy_n(old, written, start_);
    }

    RowStore& store_;
    char* start_;
    char* at_;
};

void RowStore::Append(const Statement& row, int columns) {
    Writer writer(*this);
    for (const int column : std::views::iota(0, columns)) {
        const Cell cell = row.Read(column);
        switch (cell.type) {
            case Cell::Type::Null:
                writer.PutNull();
                break;
            case Cell::Type::Integer:
                writer.PutNumber(Integer, cell.integer);
                break;
            case Cell::Type::Real:
                writer.PutNumber(Real, cell.real);
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
    if (blocks_.empty()) {
        return;
    }
    // One block stays, so that a result of which one row is kept at a time allocates once.
    blocks_.erase(blocks_.begin(), blocks_.end() - 1);
    free_ = blocks_.front().bytes.get();
    share_.Reset(static_cast<qint64>(blocks_.front().size));
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
