#pragma once

#include <QList>
#include <QVariant>

#include <span>
#include <string_view>

// The functions of the dialect, by name: what the writer checks and emits, what the engine calls
// and what a criterion evaluates.
namespace sql {

// What a value is known to be before it is computed. Logical values are -1 and 0 to the dialect,
// and 1 and 0 where the engine computes them.
enum class Type { Unknown, Null, Number, Text, Logical };

struct Function {
    enum class Form {
        Evaluated,  // `evaluate`, known to the engine as dao_ and the name
        Aggregate,  // the engine has it under the same name
        First,      // aggregates that the engine lacks
        Last,
        Written,  // turned into other SQL by the writer
    };
    std::string_view name;  // upper case
    int least;              // number of arguments
    int most;
    Type type;  // Unknown where it depends on the arguments
    Form form = Form::Evaluated;
    QVariant (*evaluate)(const QList<QVariant>& arguments) = nullptr;
    bool constant = true;  // the same result for the same arguments
};

inline constexpr int AnyNumber = 100;

// Null when there is none of that name.
const Function* FindFunction(std::string_view upperName);

std::span<const Function> TextFunctions();
std::span<const Function> NumberFunctions();
std::span<const Function> DateFunctions();

// Runs an Evaluated function. Null when any argument is Null, as for all of them. Throws Erro 13,
// 6 or 5 for arguments that it cannot take.
QVariant Evaluate(const Function& function, const QList<QVariant>& arguments);

// Kinds of a value that is not Null; the third is a number with a fraction.
inline bool IsText(const QVariant& value) {
    return value.typeId() == QMetaType::QString;
}
inline bool IsWhole(const QVariant& value) {
    return value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int;
}

// Text that joins: Null is empty, unless both are.
QVariant Concat(const QVariant& left, const QVariant& right);

// Joins two texts and adds anything else.
QVariant Add(const QVariant& left, const QVariant& right);

// \ and MOD, both operands first rounded to whole numbers; Null for division by zero. ^.
QVariant IntDivide(const QVariant& left, const QVariant& right);
QVariant Modulo(const QVariant& left, const QVariant& right);
QVariant Power(const QVariant& left, const QVariant& right);

// Serial number of a value: a number as it is, a text day first. Throws Erro 13.
double ToSerial(const QVariant& value);

// Format() of a number, a date or a text; Brazilian separators and month names.
QString Format(const QVariant& value, const QString& pattern);

}  // namespace sql
