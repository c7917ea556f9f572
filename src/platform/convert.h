#pragma once

#include "platform/erro.h"

#include <QString>
#include <QVariant>

#include <limits>
#include <type_traits>
#include <utility>

// Checked conversions between the values of the database, texts and whole numbers of fixed width.
// A null QVariant is the database's Null. Nothing here wraps around or guesses.
namespace convert {

// Narrows a whole number; throws Erro 6 (overflow) when `value` does not fit.
template <typename To, typename From>
To Narrow(From value) {
    static_assert(std::is_integral_v<To> && std::is_integral_v<From>);
    if (!std::in_range<To>(value)) {
        throw Erro(Erro::Overflow);
    }
    return static_cast<To>(value);
}

inline bool IsNull(const QVariant& value) {
    return !value.isValid() || value.isNull();
}

// Text of a value; throws Erro 94 for Null.
QString ToText(const QVariant& value);

// Text of a value, Null as the empty text: what appending a Null to a text gives.
QString ToTextOrEmpty(const QVariant& value);

// The same for people to read: a number's decimals stand behind a comma.
QString ToShownText(const QVariant& value);

// Number of a value. A text must be a number as a whole (blanks around it allowed), otherwise
// Erro 13; Null is Erro 94.
double ToDouble(const QVariant& value);

// Whole number of a value, halves rounded to the even neighbour. Erro 13, 94, or 6 when the result
// does not fit.
qint64 ToInt64(const QVariant& value);
inline qint32 ToInt32(const QVariant& value) {
    return Narrow<qint32>(ToInt64(value));
}
inline qint16 ToInt16(const QVariant& value) {
    return Narrow<qint16>(ToInt64(value));
}
inline quint8 ToByte(const QVariant& value) {
    return Narrow<quint8>(ToInt64(value));
}

// The leading number of a text, blanks skipped, with its exponent; 0 when there is none, infinite
// when it is beyond all numbers. Never fails.
double Val(QStringView text);

}  // namespace convert
