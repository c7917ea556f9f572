#include "platform/sql/columntypes.h"

#include "platform/convert.h"
#include "platform/sql/collation.h"
#include "platform/sql/errors.h"
#include "platform/sql/functiontable.h"
#include "platform/sql/serialdate.h"
#include "platform/sql/token.h"

#include <iterator>

namespace sql {

namespace {

template <typename To>
QVariant Whole(const QVariant& value, int, int) {
    return static_cast<qlonglong>(convert::Narrow<To>(convert::ToInt64(value)));
}

QVariant Real(const QVariant& value, int, int) {
    return convert::ToDouble(value);
}

QVariant Single(const QVariant& value, int, int) {
    return ToSingle(convert::ToDouble(value));
}

QVariant Decimal(const QVariant& value, int precision, int scale) {
    return ToDecimal(convert::ToDouble(value), precision, scale);
}

QVariant Moment(const QVariant& value, int, int) {
    const double serial = ToSerial(value);
    serialdate::Split(serial);  // refuses what is no day of the calendar
    return serial;
}

QVariant Flag(const QVariant& value, int, int) {
    return ToFlag(value);
}

QVariant Text(const QVariant& value, int length, int) {
    const QString text = convert::ToText(value);
    if (length > 0 && text.size() > length && text.toUcs4().size() > length) {
        Throw(Failure::TextTooLong);
    }
    return text;
}

struct Entry {
    const char* names;     // of the dialect, each with a blank before and behind
    const char* declared;  // to the engine, which derives from it how it keeps the values
    enum { None, Length, Precision } sizes;
    int size;  // without one; fixed where `sizes` is None
    Type reads;
    QVariant (*store)(const QVariant& value, int size, int scale);
    int scale = 0;
};

// Whole numbers are INT, not INTEGER: as a key the latter would number a row that was given no
// value, instead of refusing it. What has no name is declared by definitions of other makers.
constexpr Entry Entries[] = {
    {" TEXT CHAR VARCHAR CHARACTER STRING ALPHANUMERIC NCHAR NVARCHAR NATIONAL ", "TEXT",
     Entry::Length, 255, Type::Text, Text},
    {" MEMO LONGTEXT LONGCHAR NOTE NTEXT ", "LONGTEXT", Entry::None, 0, Type::Text, Text},
    {" GUID UNIQUEIDENTIFIER ", "TEXT", Entry::None, 38, Type::Text, Text},
    {" BYTE TINYINT INTEGER1 ", "TINYINT", Entry::None, 0, Type::Number, Whole<quint8>},
    {" SHORT SMALLINT INTEGER2 ", "SMALLINT", Entry::None, 0, Type::Number, Whole<qint16>},
    {" LONG INTEGER INT INTEGER4 ", "INT", Entry::None, 0, Type::Number, Whole<qint32>},
    {" COUNTER AUTOINCREMENT IDENTITY ", "INTEGER", Entry::None, 0, Type::Number, Whole<qint32>},
    {" SINGLE REAL FLOAT4 IEEESINGLE ", "FLOAT", Entry::None, 0, Type::Number, Single},
    {" DOUBLE FLOAT FLOAT8 IEEEDOUBLE NUMBER ", "DOUBLE", Entry::None, 0, Type::Number, Real},
    {"", "REAL", Entry::None, 0, Type::Number, Real},
    {"", "NUMERIC", Entry::None, 0, Type::Number, Real},
    {" DECIMAL NUMERIC DEC ", "DECIMAL", Entry::Precision, 18, Type::Number, Decimal},
    {" CURRENCY MONEY ", "DECIMAL", Entry::None, 19, Type::Number, Decimal, 4},
    {" DATETIME DATE TIME TIMESTAMP ", "DATETIME", Entry::None, 0, Type::Date, Moment},
    {" BIT YESNO LOGICAL LOGICAL1 BOOLEAN ", "BIT", Entry::None, 0, Type::Number, Flag},
    {" BINARY VARBINARY OLEOBJECT LONGBINARY GENERAL IMAGE ", "BLOB", Entry::None, 0, Type::Unknown,
     nullptr},
    {"", "", Entry::None, 0, Type::Unknown, nullptr},
};
constexpr int AnyEntry = static_cast<int>(std::size(Entries)) - 1;

template <typename Test>
int FindEntry(Test test) {
    int entry = 0;
    while (entry < AnyEntry && !test(Entries[entry])) {
        ++entry;
    }
    return entry;
}

// The whole number at `place` of sizes in brackets.
int SizeAt(const QStringList& sizes, qsizetype place, int otherwise) {
    bool ok = false;
    const int size = sizes.value(place).trimmed().toInt(&ok);
    return ok ? size : otherwise;
}

}  // namespace

ColumnType ColumnType::OfDialect(const WrittenType& written) {
    const QString word = u' ' + written.name + u' ';
    ColumnType type(
        FindEntry([&](const Entry& entry) { return QLatin1String(entry.names).contains(word); }));
    const Entry& entry = Entries[type.entry_];
    if (type.entry_ == AnyEntry) {
        Throw(Failure::SyntaxError, written.name);
    }
    const QStringList& sizes = written.sizes;
    type.size_ = entry.sizes == Entry::None ? entry.size : SizeAt(sizes, 0, entry.size);
    type.scale_ = entry.sizes == Entry::Precision ? SizeAt(sizes, 1, entry.scale) : entry.scale;
    // The limits of the dialect; a decimal's digits beyond the fifteenth would not be kept.
    const bool fits = entry.sizes == Entry::None ||
                      (type.size_ >= 1 && type.size_ <= (entry.sizes == Entry::Length ? 255 : 28) &&
                       type.scale_ >= 0 && type.scale_ <= type.size_);
    if (!fits) {
        Throw(Failure::SyntaxError, written.name + u'(' + sizes.join(u", ") + u')');
    }
    return type;
}

ColumnType ColumnType::OfDeclaration(const QString& declared) {
    const QString word = declared.section(u'(', 0, 0).trimmed();
    ColumnType type(FindEntry([&](const Entry& entry) {
        return word.compare(QLatin1String(entry.declared), Qt::CaseInsensitive) == 0;
    }));
    const QStringList sizes = declared.section(u'(', 1).section(u')', 0, 0).split(u',');
    type.size_ = SizeAt(sizes, 0, 0);
    type.scale_ = SizeAt(sizes, 1, 0);
    return type;
}

ColumnType ColumnType::OfCode(int entry, int size, int scale) {
    ColumnType type(std::clamp(entry, 0, AnyEntry));
    type.size_ = size;
    type.scale_ = scale;
    return type;
}

QByteArray ColumnType::Declaration() const {
    const Entry& entry = Entries[entry_];
    QByteArray text = entry.declared;
    if (size_ > 0) {
        text += '(' + QByteArray::number(size_);
        text += (entry.reads == Type::Text ? QByteArray() : ',' + QByteArray::number(scale_)) + ')';
    }
    if (entry.reads == Type::Text) {
        text += QByteArray(collation::Clause.data(), collation::Clause.size());
    }
    return IsCounter() ? text + " PRIMARY KEY AUTOINCREMENT" : text;
}

QByteArray ColumnType::Code() const {
    return QByteArray::number(entry_) + ", " + QByteArray::number(size_) + ", " +
           QByteArray::number(scale_);
}

int ColumnType::Length() const {
    return Entries[entry_].reads == Type::Text ? size_ : 0;
}

Type ColumnType::Reads() const {
    return Entries[entry_].reads;
}

bool ColumnType::IsCounter() const {
    return Entries[entry_].declared == std::string_view("INTEGER");
}

bool ColumnType::IsFlag() const {
    return Entries[entry_].declared == std::string_view("BIT");
}

bool ColumnType::Converts() const {
    return Entries[entry_].store != nullptr;
}

QVariant ColumnType::Store(const QVariant& value) const {
    const Entry& entry = Entries[entry_];
    return convert::IsNull(value) || !entry.store ? value : entry.store(value, size_, scale_);
}

}  // namespace sql
