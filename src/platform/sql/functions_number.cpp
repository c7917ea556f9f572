#include "platform/convert.h"
#include "platform/sql/functiontable.h"

#include <cmath>

namespace sql {

namespace {

using Arguments = QList<QVariant>;

double NumberAt(const Arguments& a, qsizetype i) {
    return convert::ToDouble(a.at(i));
}

// Whole results are handed on as whole numbers, as long as they fit.
QVariant Number(double value) {
    if (std::isnan(value)) {
        throw Erro(Erro::InvalidArgument);
    }
    if (std::isinf(value)) {
        throw Erro(Erro::Overflow);
    }
    if (std::trunc(value) == value && std::abs(value) < 0x1p53) {
        return static_cast<qlonglong>(value);
    }
    return value;
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

template <double (*Function)(double)>
QVariant Apply(const Arguments& a) {
    return Number(Function(NumberAt(a, 0)));
}

QVariant Sqr(const Arguments& a) {
    return Number(std::sqrt(NumberAt(a, 0)));
}

QVariant Log(const Arguments& a) {
    const double number = NumberAt(a, 0);
    if (number <= 0) {
        throw Erro(Erro::InvalidArgument);
    }
    return Number(std::log(number));
}

template <typename To>
QVariant ToWhole(const Arguments& a) {
    return static_cast<qlonglong>(convert::Narrow<To>(convert::ToInt64(a.at(0))));
}

QVariant CDbl(const Arguments& a) {
    return NumberAt(a, 0);
}

QVariant CSng(const Arguments& a) {
    const double number = NumberAt(a, 0);
    if (std::abs(number) > 3.402823e38) {
        throw Erro(Erro::Overflow);
    }
    return static_cast<double>(static_cast<float>(number));
}

// Four decimal places.
QVariant CCur(const Arguments& a) {
    return Number(RoundTo(NumberAt(a, 0), 4));
}

QVariant CBool(const Arguments& a) {
    return NumberAt(a, 0) != 0 ? -1 : 0;
}

QVariant IsNumeric(const Arguments& a) {
    bool ok = true;
    if (IsText(a.at(0))) {
        a.at(0).toString().trimmed().toDouble(&ok);
    }
    return ok ? -1 : 0;
}

constexpr auto Evaluated = Function::Form::Evaluated;
constexpr auto Aggregate = Function::Form::Aggregate;
constexpr auto Written = Function::Form::Written;

const Function Table[] = {
    {"IIF", 2, 3, Type::Unknown, Written},
    {"ISNULL", 1, 1, Type::Logical, Written},
    {"NZ", 1, 2, Type::Unknown, Written},
    {"SWITCH", 2, AnyNumber, Type::Unknown, Written},
    {"CHOOSE", 2, AnyNumber, Type::Unknown, Written},
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
    {"EXP", 1, 1, Type::Number, Evaluated, Apply<std::exp>},
    {"LOG", 1, 1, Type::Number, Evaluated, Log},
    {"SIN", 1, 1, Type::Number, Evaluated, Apply<std::sin>},
    {"COS", 1, 1, Type::Number, Evaluated, Apply<std::cos>},
    {"TAN", 1, 1, Type::Number, Evaluated, Apply<std::tan>},
    {"ATN", 1, 1, Type::Number, Evaluated, Apply<std::atan>},
    {"CBYTE", 1, 1, Type::Number, Evaluated, ToWhole<quint8>},
    {"CINT", 1, 1, Type::Number, Evaluated, ToWhole<qint16>},
    {"CLNG", 1, 1, Type::Number, Evaluated, ToWhole<qint32>},
    {"CDBL", 1, 1, Type::Number, Evaluated, CDbl},
    {"CSNG", 1, 1, Type::Number, Evaluated, CSng},
    {"CCUR", 1, 1, Type::Number, Evaluated, CCur},
    {"CBOOL", 1, 1, Type::Number, Evaluated, CBool},
    {"ISNUMERIC", 1, 1, Type::Number, Evaluated, IsNumeric},
};

}  // namespace

std::span<const Function> NumberFunctions() {
    return Table;
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
    qlonglong sum = 0;
    if (IsWhole(left) && IsWhole(right) &&
        !__builtin_add_overflow(left.toLongLong(), right.toLongLong(), &sum)) {
        return sum;
    }
    return convert::ToDouble(left) + convert::ToDouble(right);
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
