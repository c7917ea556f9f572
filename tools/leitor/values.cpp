#include "leitor/values.h"

#include <bit>
#include <charconv>
#include <cstdlib>
#include <memory>
#include <optional>

namespace {

using namespace mdbprotocol;

// A long text's place in its row: its length with flags, where it stands, and something unused.
constexpr std::uint32_t InRow = 0x80000000;
constexpr std::uint32_t OnOnePage = 0x40000000;
constexpr std::uint32_t LengthMask = 0x3FFFFFFF;
constexpr int PointerAt = 4;
constexpr std::size_t LinkSize = 4;  // to the next piece, in front of each

struct Free {
    void operator()(char* text) const { std::free(text); }
};

std::uint32_t Word(const void* bytes, int offset) {
    return static_cast<std::uint32_t>(mdb_get_int32(const_cast<void*>(bytes), offset));
}

std::optional<std::string> PieceAt(MdbHandle* file, std::uint32_t place) {
    void* page = nullptr;
    int start = 0;
    std::size_t size = 0;
    if (mdb_find_pg_row(file, static_cast<int>(place), &page, &start, &size) != 0 ||
        static_cast<std::size_t>(start) + size > static_cast<std::size_t>(file->fmt->pg_size)) {
        return std::nullopt;
    }
    return std::string(static_cast<const char*>(page) + start, size);
}

// The bytes of a long text, exactly as many as it says it has. The library's own way cuts it where
// its buffer ends, and gives an empty text for one that it cannot read.
std::optional<std::string> LongText(MdbHandle* file, const MdbField& field) {
    const char* row = reinterpret_cast<const char*>(file->pg_buf) + field.start;
    const std::uint32_t head = Word(row, 0);
    const std::size_t length = head & LengthMask;
    if ((head & InRow) != 0) {
        return static_cast<std::size_t>(field.siz) < MDB_MEMO_OVERHEAD + length
                   ? std::nullopt
                   : std::optional<std::string>(std::in_place, row + MDB_MEMO_OVERHEAD, length);
    }
    std::uint32_t place = Word(row, PointerAt);
    if ((head & OnOnePage) != 0) {
        auto piece = PieceAt(file, place);
        return piece && piece->size() == length ? piece : std::nullopt;
    }
    std::string text;
    while (text.size() < length) {
        const auto piece = place == 0 ? std::nullopt : PieceAt(file, place);
        if (!piece || piece->size() <= LinkSize) {
            return std::nullopt;
        }
        text.append(*piece, LinkSize);
        place = Word(piece->data(), 0);
    }
    text.resize(length);
    return text;
}

void SendText(MdbHandle* file, const char* bytes, std::size_t size, Output& output) {
    // A letter takes three bytes at the most; the library puts a zero behind the last.
    std::string text(size * 3 + 4, '\0');
    const int length = mdb_unicode2ascii(file, bytes, size, text.data(), text.size() - 1);
    text.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    output.Byte(Text).Text(text);
}

void SendInteger(std::int64_t number, Output& output) {
    output.Byte(Integer).U64(static_cast<std::uint64_t>(number));
}

// A single-precision number means the shortest decimal that it stands for.
void SendSingle(float number, Output& output) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    output.Byte(Decimal).Text({digits, static_cast<std::size_t>(end - digits)});
}

// Ten-thousandths in 64 bits.
void SendMoney(std::uint64_t bits, Output& output) {
    const auto amount = static_cast<std::int64_t>(bits);
    const std::uint64_t size = amount < 0 ? 0 - bits : bits;
    const std::string fraction = std::to_string(10000 + size % 10000).substr(1);
    output.Byte(Decimal).Text((amount < 0 ? "-" : "") + std::to_string(size / 10000) + '.' +
                              fraction);
}

int SizeOf(int type) {
    switch (type) {
        case MDB_BYTE:
            return 1;
        case MDB_INT:
            return 2;
        case MDB_LONGINT:
        case MDB_COMPLEX:
        case MDB_FLOAT:
            return 4;
        case MDB_DOUBLE:
        case MDB_DATETIME:
        case MDB_MONEY:
            return 8;
        case MDB_NUMERIC:
            return 17;
        case MDB_MEMO:
            return MDB_MEMO_OVERHEAD;
        default:
            return 0;
    }
}

}  // namespace

bool SendValue(MdbHandle* file, const MdbColumn& column, const MdbField& field, Output& output) {
    // The bit that marks a Null elsewhere is a flag's value.
    if (column.col_type == MDB_BOOL) {
        SendInteger(field.is_null ? 0 : 1, output);
        return true;
    }
    if (field.is_null) {
        output.Byte(Null);
        return true;
    }
    if (field.start < 0 || field.siz < SizeOf(column.col_type) ||
        field.start + field.siz > file->fmt->pg_size) {
        return false;
    }
    void* page = file->pg_buf;
    switch (column.col_type) {
        case MDB_BYTE:
            SendInteger(mdb_get_byte(page, field.start), output);
            return true;
        case MDB_INT:
            SendInteger(static_cast<std::int16_t>(mdb_get_int16(page, field.start)), output);
            return true;
        case MDB_LONGINT:
        case MDB_COMPLEX:
            SendInteger(static_cast<std::int32_t>(Word(page, field.start)), output);
            return true;
        case MDB_FLOAT:
            SendSingle(mdb_get_single(page, field.start), output);
            return true;
        case MDB_DOUBLE:
        case MDB_DATETIME:
            output.Byte(Real).U64(std::bit_cast<std::uint64_t>(mdb_get_double(page, field.start)));
            return true;
        case MDB_MONEY:
            SendMoney(Word(page, field.start) |
                          static_cast<std::uint64_t>(Word(page, field.start + 4)) << 32,
                      output);
            return true;
        case MDB_NUMERIC: {
            const std::unique_ptr<char, Free> digits(
                mdb_numeric_to_string(file, field.start, column.col_scale, column.col_prec));
            output.Byte(Decimal).Text(digits ? digits.get() : "");
            return digits != nullptr;
        }
        case MDB_TEXT:
            SendText(file, reinterpret_cast<const char*>(file->pg_buf) + field.start,
                     static_cast<std::size_t>(field.siz), output);
            return true;
        case MDB_MEMO: {
            const auto bytes = LongText(file, field);
            if (bytes) {
                SendText(file, bytes->data(), bytes->size(), output);
            }
            return bytes.has_value();
        }
        default:
            output.Byte(Other);
            return true;
    }
}
