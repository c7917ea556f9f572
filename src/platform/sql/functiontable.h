#pragma once

#include "platform/sql/columntypes.h"

#include <QList>
#include <QVariant>

#include <span>
#include <string_view>

// The functions of the dialect, by name: what the parser finds, the writer emits and the engine
// calls.
namespace sql {

struct Function {
    enum class Form {
        Evaluated,  // `evaluate`, known to the engine as dao_ and the name
        Aggregate,  // the engine has it under the same name
        First,      // aggregates that the engine lacks
        Last,
        Iif,  // turned into other SQL by the writer
        IsNull,
        Nz,
        Switch,
        Choose,
    };
    // What a date is to the function: its serial number, or its text as people read it.
    enum class Dates { Serial, AsText };

    std::string_view name;  // upper case
    int least;              // number of arguments
    int most;
    Type type;  // Unknown where it depends on the arguments
    Form form = Form::Evaluated;
    QVariant (*evaluate)(const QList<QVariant>& arguments) = nullptr;
    Dates dates = Dates::Serial;
    bool constant = true;    // the same result for the same arguments
    bool takesNull = false;  // otherwise Null makes Null

    bool IsAggregate() const {
        return form == Form::Aggregate || form == Form::First || form == Form::Last;
    }
};

inline constexpr int AnyNumber = 100;

// Null when there is none of that name.
const Function* FindFunction(std::string_view upperName);

std::span<const Function> TextFunctions();
std::span<const Function> NumberFunctions();
std::span<const Function> DateFunctions();

// Runs an Evaluated function. Throws Erro 13, 6 or 5 for arguments that it cannot take.
QVariant Evaluate(const Function& function, const QList<QVariant>& arguments);

// No text that a function makes is longer, in characters; Erro 6 for one that would be.
inline constexpr qsizetype LongestText = 2'000'000;

// Kinds of a value that is not Null; the third is a number with a fraction.
inline bool IsText(const QVariant& value) {
    return value.typeId() == QMetaType::QString;
}
inline bool IsWhole(const QVariant& value) {
    return value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int;
}

// A number's value for a result: whole where it fits; Erro 6 where it is none or infinite.
QVariant Number(double value);

// The operators. Null on either side makes Null; a text is taken as a number, Erro 13 where it is
// none; Erro 6 for a result without bounds.
QVariant Concat(const QVariant& left, const QVariant& right);  // Null is empty, unless both are
QVariant Add(const QVariant& left, const QVariant& right);     // joins two texts
QVariant Subtract(const QVariant& left, const QVariant& right);
QVariant Multiply(const QVariant& left, const QVariant& right);
QVariant Divide(const QVariant& left, const QVariant& right);     // by zero: Null
QVariant IntDivide(const QVariant& left, const QVariant& right);  // of rounded operands, as MOD
QVariant Modulo(const QVariant& left, const QVariant& right);
QVariant Power(const QVariant& left, const QVariant& right);

// Serial number of a value: a number as it is, a text day first. Throws Erro 13.
double ToSerial(const QVariant& value);
// How a date reads when it becomes a text: day, time or both, whichever it has.
QString DateText(const QVariant& serial);

double ToSingle(double number);  // to the seven digits that a single-precision number shows
double ToDecimal(double number, int precision, int scale);  // Erro 6 for more digits than that
int ToFlag(const QVariant& value);  // -1 or 0, of a number or of a word for yes and no

// Format() of a number, a date or a text; Brazilian separators and month names. Throws Erro 5 for a
// pattern that it does not know.
QString Format(const QVariant& value, const QString& pattern);

}  // namespace sql
