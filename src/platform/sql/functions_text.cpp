#include "platform/convert.h"
#include "platform/sql/collation.h"
#include "platform/sql/functiontable.h"
#include "platform/sql/letters.h"

#include <algorithm>
#include <iterator>
#include <vector>

using namespace Qt::StringLiterals;

namespace sql {

namespace {

using Arguments = QList<QVariant>;

constexpr qsizetype MaxLength = 1 << 20;

QString TextAt(const Arguments& a, qsizetype i) {
    return convert::ToText(a.at(i));
}

// A length or a place; throws Erro 5 below `least`.
qsizetype CountAt(const Arguments& a, qsizetype i, qint64 least) {
    const qint64 count = convert::ToInt64(a.at(i));
    if (count < least) {
        throw Erro(Erro::InvalidArgument);
    }
    return static_cast<qsizetype>(count);
}

QVariant Len(const Arguments& a) {
    return TextAt(a, 0).size();
}

QVariant Left(const Arguments& a) {
    return TextAt(a, 0).left(CountAt(a, 1, 0));
}

QVariant Right(const Arguments& a) {
    return TextAt(a, 0).right(CountAt(a, 1, 0));
}

QVariant Mid(const Arguments& a) {
    const qsizetype start = CountAt(a, 1, 1) - 1;
    return TextAt(a, 0).mid(start, a.size() > 2 ? CountAt(a, 2, 0) : -1);
}

std::vector<letters::Weight> Weights(const QString& text) {
    std::vector<letters::Weight> weights;
    weights.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar c : text) {
        weights.push_back(letters::WeightOf(c.unicode()));
    }
    return weights;
}

// First place of `part` from `start` on, or -1; as texts are compared everywhere.
qsizetype Find(const QString& text, const QString& part, qsizetype start) {
    const std::vector<letters::Weight> in = Weights(text);
    const std::vector<letters::Weight> what = Weights(part);
    if (start > text.size()) {
        return -1;
    }
    const auto found = std::search(in.begin() + start, in.end(), what.begin(), what.end());
    return found == in.end() && !what.empty() ? -1 : found - in.begin();
}

// ([start,] text, part [, way of comparing])
QVariant InStr(const Arguments& a) {
    const bool withStart = a.size() > 2;
    const qsizetype start = withStart ? CountAt(a, 0, 1) - 1 : 0;
    const QString text = TextAt(a, withStart ? 1 : 0);
    if (text.isEmpty() || start >= text.size()) {
        return 0;
    }
    return Find(text, TextAt(a, withStart ? 2 : 1), start) + 1;
}

QVariant UCase(const Arguments& a) {
    return TextAt(a, 0).toUpper();
}

QVariant LCase(const Arguments& a) {
    return TextAt(a, 0).toLower();
}

// Only blanks are trimmed, not tabs and line ends.
QString WithoutBlanks(QString text, bool left, bool right) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (left && begin < end && text.at(begin) == u' ') {
        ++begin;
    }
    while (right && end > begin && text.at(end - 1) == u' ') {
        --end;
    }
    return text.mid(begin, end - begin);
}

QVariant Trim(const Arguments& a) {
    return WithoutBlanks(TextAt(a, 0), true, true);
}

QVariant LTrim(const Arguments& a) {
    return WithoutBlanks(TextAt(a, 0), true, false);
}

QVariant RTrim(const Arguments& a) {
    return WithoutBlanks(TextAt(a, 0), false, true);
}

QVariant Replace(const Arguments& a) {
    const QString text = TextAt(a, 0);
    const QString what = TextAt(a, 1);
    const QString with = TextAt(a, 2);
    if (what.isEmpty()) {
        return text;
    }
    QString result;
    qsizetype at = 0;
    for (;;) {
        const qsizetype found = Find(text, what, at);
        if (found < 0 || result.size() > MaxLength) {
            return result + text.mid(at);
        }
        result += text.mid(at, found - at) + with;
        at = found + what.size();
    }
}

QVariant Space(const Arguments& a) {
    return QString(std::min(CountAt(a, 0, 0), MaxLength), u' ');
}

QVariant Repeated(const Arguments& a) {
    const QString what = TextAt(a, 1);
    if (what.isEmpty()) {
        throw Erro(Erro::InvalidArgument);
    }
    return QString(std::min(CountAt(a, 0, 0), MaxLength), what.front());
}

QVariant StrComp(const Arguments& a) {
    const int order = collation::Compare(TextAt(a, 0), TextAt(a, 1));
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

QVariant StrReverse(const Arguments& a) {
    QString text = TextAt(a, 0);
    std::reverse(text.begin(), text.end());
    return text;
}

QVariant Chr(const Arguments& a) {
    const qint64 code = convert::ToInt64(a.at(0));
    if (code < 1 || code > 0xFFFF) {
        throw Erro(Erro::InvalidArgument);
    }
    return QString(QChar(static_cast<char16_t>(code)));
}

QVariant Asc(const Arguments& a) {
    const QString text = TextAt(a, 0);
    if (text.isEmpty()) {
        throw Erro(Erro::InvalidArgument);
    }
    return static_cast<int>(text.front().unicode());
}

QVariant FormatOf(const Arguments& a) {
    return Format(a.at(0), a.size() > 1 ? TextAt(a, 1) : QString());
}

QVariant CStr(const Arguments& a) {
    return TextAt(a, 0);
}

// A number's text with a blank where a minus sign would stand.
QVariant Str(const Arguments& a) {
    const double number = convert::ToDouble(a.at(0));
    return (number < 0 ? u""_s : u" "_s) + convert::ToText(number);
}

QVariant ValOf(const Arguments& a) {
    return convert::Val(TextAt(a, 0));
}

constexpr auto Evaluated = Function::Form::Evaluated;

const Function Table[] = {
    {"LEN", 1, 1, Type::Number, Evaluated, Len},
    {"LEFT", 2, 2, Type::Text, Evaluated, Left},
    {"RIGHT", 2, 2, Type::Text, Evaluated, Right},
    {"MID", 2, 3, Type::Text, Evaluated, Mid},
    {"INSTR", 2, 4, Type::Number, Evaluated, InStr},
    {"UCASE", 1, 1, Type::Text, Evaluated, UCase},
    {"LCASE", 1, 1, Type::Text, Evaluated, LCase},
    {"TRIM", 1, 1, Type::Text, Evaluated, Trim},
    {"LTRIM", 1, 1, Type::Text, Evaluated, LTrim},
    {"RTRIM", 1, 1, Type::Text, Evaluated, RTrim},
    {"REPLACE", 3, 3, Type::Text, Evaluated, Replace},
    {"SPACE", 1, 1, Type::Text, Evaluated, Space},
    {"STRING", 2, 2, Type::Text, Evaluated, Repeated},
    {"STRCOMP", 2, 3, Type::Number, Evaluated, StrComp},
    {"STRREVERSE", 1, 1, Type::Text, Evaluated, StrReverse},
    {"CHR", 1, 1, Type::Text, Evaluated, Chr},
    {"CHRW", 1, 1, Type::Text, Evaluated, Chr},
    {"ASC", 1, 1, Type::Number, Evaluated, Asc},
    {"ASCW", 1, 1, Type::Number, Evaluated, Asc},
    {"FORMAT", 1, 2, Type::Text, Evaluated, FormatOf},
    {"CSTR", 1, 1, Type::Text, Evaluated, CStr},
    {"STR", 1, 1, Type::Text, Evaluated, Str},
    {"VAL", 1, 1, Type::Number, Evaluated, ValOf},
};

}  // namespace

std::span<const Function> TextFunctions() {
    return Table;
}

}  // namespace sql
