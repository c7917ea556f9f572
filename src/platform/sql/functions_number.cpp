#include "platform/convert.h"
#include "platform/sql/functiontable.h"

#include <QStringList>

#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

namespace sql {

namespace {

using Arguments = QList<QVariant>;

double NumberAt(const Arguments& a, qsizetype i) {
    return convert::ToDouble(a.at(i));
}

// By way of the decimal text, so that 2.675 to two places is told from its neighbours as it is
// written; halves go to the even neighbour.
double RoundTo(double value, int places) {
    const double scale = std::pow(10.0, places);
    const double scaled = value * scale;
    const double whole = std::floor(scaled);
    const double rest = scaled - whole;
    constexpr double Fuzz = 1e-9;
    if (std::abs(rest - 0.5) < Fuzz) {
        return (std::fmod(whole, 2.0) == 0.0 ? whole : whole + 1) / scale;
    }
    return std::nearbyint(scaled) / scale;
}

QVariant Abs(const Arguments& a) {
    return Number(std::abs(NumberAt(a, 0)));
}

QVariant Int(const Arguments& a) {
    return Number(std::floor(NumberAt(a, 0)));
}

QVariant Fix(const Arguments& a) {
    return Number(std::trunc(NumberAt(a, 0)));
}

QVariant Round(const Arguments& a) {
    const qint64 places = a.size() > 1 ? convert::ToInt64(a.at(1)) : 0;
    if (places < 0 || places > 22) {
        throw Erro(Erro::InvalidArgument);
    }
    return Number(RoundTo(NumberAt(a, 0), static_cast<int>(places)));
}

QVariant Sgn(const Arguments& a) {
    const double number = NumberAt(a, 0);
    return number < 0 ? -1 : (number > 0 ? 1 : 0);
}

QVariant Sqr(const Arguments& a) {
    const double number = NumberAt(a, 0);
    if (number < 0) {
        throw Erro(Erro::InvalidArgument);
    }
    return Number(std::sqrt(number));
}

template <typename To>
QVariant ToWhole(const Arguments& a) {
    return static_cast<qlonglong>(convert::Narrow<To>(convert::ToInt64(a.at(0))));
}

QVariant CDbl(const Arguments& a) {
    return NumberAt(a, 0);
}

QVariant CSng(const Arguments& a) {
    return ToSingle(NumberAt(a, 0));
}

QVariant CCur(const Arguments& a) {
    return Number(ToDecimal(NumberAt(a, 0), 19, 4));
}

QVariant CBool(const Arguments& a) {
    return ToFlag(a.at(0));
}

QVariant IsNumeric(const Arguments& a) {
    try {
        return convert::IsNull(a.at(0)) ? 0 : (NumberAt(a, 0), -1);
    } catch (const Erro&) {
        return 0;
    }
}

QVariant Finite(double value) {
    if (!std::isfinite(value)) {
        throw Erro(Erro::Overflow);
    }
    return value;
}

// Whole numbers stay whole as long as their result fits.
template <typename Real>
QVariant Calculate(const QVariant& left, const QVariant& right,
                   bool (*whole)(qlonglong, qlonglong, qlonglong*), Real real) {
    if (convert::IsNull(left) || convert::IsNull(right)) {
        return {};
    }
    qlonglong result = 0;
    if (IsWhole(left) && IsWhole(right) && !whole(left.toLongLong(), right.toLongLong(), &result)) {
        return result;
    }
    return Finite(real(convert::ToDouble(left), convert::ToDouble(right)));
}

bool AddWhole(qlonglong a, qlonglong b, qlonglong* sum) {
    return __builtin_add_overflow(a, b, sum);
}

bool SubtractWhole(qlonglong a, qlonglong b, qlonglong* difference) {
    return __builtin_sub_overflow(a, b, difference);
}

bool MultiplyWhole(qlonglong a, qlonglong b, qlonglong* product) {
    return __builtin_mul_overflow(a, b, product);
}

constexpr auto Evaluated = Function::Form::Evaluated;
constexpr auto Aggregate = Function::Form::Aggregate;
constexpr auto Serial = Function::Dates::Serial;

const Function Table[] = {
    {"IIF", 2, 3, Type::Unknown, Function::Form::Iif},
    {"ISNULL", 1, 1, Type::Number, Function::Form::IsNull},
    {"NZ", 1, 2, Type::Unknown, Function::Form::Nz},
    {"SWITCH", 2, AnyNumber, Type::Unknown, Function::Form::Switch},
    {"CHOOSE", 2, AnyNumber, Type::Unknown, Function::Form::Choose},
    {"COUNT", 1, 1, Type::Number, Aggregate},
    {"SUM", 1, 1, Type::Number, Aggregate},
    {"AVG", 1, 1, Type::Number, Aggregate},
    {"MIN", 1, 1, Type::Unknown, Aggregate},
    {"MAX", 1, 1, Type::Unknown, Aggregate},
    {"FIRST", 1, 1, Type::Unknown, Function::Form::First},
    {"LAST", 1, 1, Type::Unknown, Function::Form::Last},
    {"ABS", 1, 1, Type::Number, Evaluated, Abs},
    {"INT", 1, 1, Type::Number, Evaluated, Int},
    {"FIX", 1, 1, Type::Number, Evaluated, Fix},
    {"ROUND", 1, 2, Type::Number, Evaluated, Round},
    {"SGN", 1, 1, Type::Number, Evaluated, Sgn},
    {"SQR", 1, 1, Type::Number, Evaluated, Sqr},
    {"CBYTE", 1, 1, Type::Number, Evaluated, ToWhole<quint8>},
    {"CINT", 1, 1, Type::Number, Evaluated, ToWhole<qint16>},
    {"CLNG", 1, 1, Type::Number, Evaluated, ToWhole<qint32>},
    {"CDBL", 1, 1, Type::Number, Evaluated, CDbl},
    {"CSNG", 1, 1, Type::Number, Evaluated, CSng},
    {"CCUR", 1, 1, Type::Number, Evaluated, CCur},
    {"CBOOL", 1, 1, Type::Number, Evaluated, CBool},
    {"ISNUMERIC", 1, 1, Type::Number, Evaluated, IsNumeric, Serial, true, true},
};

}  // namespace

std::span<const Function> NumberFunctions() {
    return Table;
}

QVariant Number(double value) {
    if (!std::isfinite(value)) {
        throw Erro(Erro::Overflow);
    }
    if (std::trunc(value) == value && std::abs(value) < 0x1p53) {
        return static_cast<qlonglong>(value);
    }
    return value;
}

double ToSingle(double number) {
    constexpr int Digits = 7;
    constexpr double Largest = 3.402823e38;
    if (!(std::abs(number) <= Largest)) {
        throw Erro(Erro::Overflow);
    }
    return QByteArray::number(number, 'g', Digits).toDouble();
}

double ToDecimal(double number, int precision, int scale) {
    const double rounded = RoundTo(number, scale);
    if (!(std::abs(rounded) < std::pow(10.0, precision - scale))) {
        throw Erro(Erro::Overflow);
    }
    return rounded;
}

int ToFlag(const QVariant& value) {
    static const QStringList yes = {u"TRUE"_s, u"YES"_s, u"ON"_s, u"VERDADEIRO"_s, u"SIM"_s};
    static const QStringList no = {u"FALSE"_s, u"NO"_s, u"OFF"_s, u"FALSO"_s, u"NÃO"_s};
    const QString word = IsText(value) ? value.toString().trimmed().toUpper() : QString();
    if (yes.contains(word)) {
        return -1;
    }
    return no.contains(word) || convert::ToDouble(value) == 0 ? 0 : -1;
}

QVariant Concat(const QVariant& left, const QVariant& right) {
    if (convert::IsNull(left) && convert::IsNull(right)) {
        return {};
    }
    return convert::ToTextOrEmpty(left) + convert::ToTextOrEmpty(right);
}

QVariant Add(const QVariant& left, const QVariant& right) {
    if (convert::IsNull(left) || convert::IsNull(right)) {
        return {};
    }
    if (IsText(left) && IsText(right)) {
        return left.toString() + right.toString();
    }
    return Calculate(left, right, AddWhole, std::plus<>());
}

QVariant Subtract(const QVariant& left, const QVariant& right) {
    return Calculate(left, right, SubtractWhole, std::minus<>());
}

QVariant Multiply(const QVariant& left, const QVariant& right) {
    return Calculate(left, right, MultiplyWhole, std::multiplies<>());
}

QVariant Divide(const QVariant& left, const QVariant& right) {
    if (convert::IsNull(left) || convert::IsNull(right)) {
        return {};
    }
    const double divisor = convert::ToDouble(right);
    const double dividend = convert::ToDouble(left);
    return divisor == 0 ? QVariant() : Finite(dividend / divisor);
}

QVariant IntDivide(const QVariant& left, const QVariant& right) {
    if (convert::IsNull(left) || convert::IsNull(right)) {
        return {};
    }
    const qint64 dividend = convert::ToInt32(left);
    const qint64 divisor = convert::ToInt32(right);
    return divisor == 0 ? QVariant() : QVariant(static_cast<qlonglong>(dividend / divisor));
}

QVariant Modulo(const QVariant& left, const QVariant& right) {
    if (convert::IsNull(left) || convert::IsNull(right)) {
        return {};
    }
    const qint64 dividend = convert::ToInt32(left);
    const qint64 divisor = convert::ToInt32(right);
    return divisor == 0 ? QVariant() : QVariant(static_cast<qlonglong>(dividend % divisor));
}

QVariant Power(const QVariant& left, const QVariant& right) {
    if (convert::IsNull(left) || convert::IsNull(right)) {
        return {};
    }
    return Number(std::pow(convert::ToDouble(left), convert::ToDouble(right)));
}

}  // namespace sql
