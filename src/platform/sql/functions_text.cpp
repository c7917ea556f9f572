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

// How texts are compared, as the last argument of some functions says it.
enum class Way { Binary, AsEverywhere };

Way WayAt(const Arguments& a, qsizetype i) {
    const qint64 way = a.size() > i ? convert::ToInt64(a.at(i)) : 1;
    if (way < 0 || way > 2) {
        throw Erro(Erro::InvalidArgument);
    }
    return way == 0 ? Way::Binary : Way::AsEverywhere;
}

// A text made ready for looking up parts in it: what counts of each character.
class Searched {
public:
    Searched(const QString& text, Way way) : way_(way), in_(Units(text)) {}

    // Places of `part` from `start` on, in order and not overlapping; at most `most` of them. Time
    // goes with the length of both (Knuth, Morris and Pratt), however they repeat themselves.
    QList<qsizetype> Places(const QString& part, qsizetype start, qsizetype most) const {
        const std::vector<letters::Weight> what = Units(part);
        std::vector<std::size_t> border(what.size() + 1, 0);
        for (std::size_t i = 1, length = 0; i < what.size(); border[++i] = length) {
            while (length > 0 && what[i] != what[length]) {
                length = border[length];
            }
            length += what[i] == what[length] ? 1 : 0;
        }
        QList<qsizetype> places;
        std::size_t met = 0;
        for (auto at = static_cast<std::size_t>(start); at < in_.size(); ++at) {
            if (places.size() == most) {
                break;
            }
            while (met > 0 && in_[at] != what[met]) {
                met = border[met];
            }
            met += in_[at] == what[met] ? 1 : 0;
            if (met == what.size()) {
                places.append(static_cast<qsizetype>(at + 1 - met));
                met = 0;
            }
        }
        return places;
    }

private:
    std::vector<letters::Weight> Units(const QString& text) const {
        std::vector<letters::Weight> units(static_cast<std::size_t>(text.size()));
        std::transform(text.begin(), text.end(), units.begin(), [this](QChar c) {
            return way_ == Way::Binary ? c.unicode() : letters::WeightOf(c.unicode());
        });
        return units;
    }

    Way way_;
    std::vector<letters::Weight> in_;
};

// ([start,] text, part [, way of comparing])
QVariant InStr(const Arguments& a) {
    const bool withStart = a.size() > 2;
    const qsizetype start = withStart ? CountAt(a, 0, 1) - 1 : 0;
    const QString text = TextAt(a, withStart ? 1 : 0);
    const QString part = TextAt(a, withStart ? 2 : 1);
    const Way way = WayAt(a, 3);
    if (start >= text.size()) {
        return 0;
    }
    if (part.isEmpty()) {
        return start + 1;
    }
    const QList<qsizetype> places = Searched(text, way).Places(part, start, 1);
    return places.isEmpty() ? 0 : places.first() + 1;
}

// (text, part [, last place of the match, -1 for the end [, way of comparing]])
QVariant InStrRev(const Arguments& a) {
    const QString text = TextAt(a, 0);
    const QString part = TextAt(a, 1);
    const qint64 end = a.size() > 2 ? convert::ToInt64(a.at(2)) : -1;
    const Way way = WayAt(a, 3);
    if (end == 0 || end < -1) {
        throw Erro(Erro::InvalidArgument);
    }
    if (text.isEmpty() || end > text.size()) {
        return 0;
    }
    const qsizetype length = end < 0 ? text.size() : static_cast<qsizetype>(end);
    if (part.isEmpty()) {
        return length;
    }
    QString turned = text.first(length);
    QString wanted = part;
    std::reverse(turned.begin(), turned.end());
    std::reverse(wanted.begin(), wanted.end());
    const QList<qsizetype> places = Searched(turned, way).Places(wanted, 0, 1);
    return places.isEmpty() ? 0 : length - places.first() - part.size() + 1;
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

// (text, what, with [, start [, how often, -1 for always [, way of comparing]]]). What stands
// before the start is no part of the result.
QVariant Replace(const Arguments& a) {
    const QString what = TextAt(a, 1);
    const QString with = TextAt(a, 2);
    const qsizetype start = a.size() > 3 ? CountAt(a, 3, 1) - 1 : 0;
    const qint64 most = a.size() > 4 ? convert::ToInt64(a.at(4)) : -1;
    const Way way = WayAt(a, 5);
    if (most < -1) {
        throw Erro(Erro::InvalidArgument);
    }
    const QString text = TextAt(a, 0).mid(start);
    if (what.isEmpty() || most == 0) {
        return text;
    }
    const QList<qsizetype> places = Searched(text, way).Places(what, 0, most);
    const qsizetype size = text.size() + places.size() * (with.size() - what.size());
    if (size > LongestText) {
        throw Erro(Erro::Overflow);
    }
    QString result;
    qsizetype at = 0;
    for (const qsizetype place : places) {
        result += QStringView(text).sliced(at, place - at);
        result += with;
        at = place + what.size();
    }
    return result + text.mid(at);
}

qsizetype LengthAt(const Arguments& a, qsizetype i) {
    const qsizetype length = CountAt(a, i, 0);
    if (length > LongestText) {
        throw Erro(Erro::Overflow);
    }
    return length;
}

QVariant Space(const Arguments& a) {
    return QString(LengthAt(a, 0), u' ');
}

QChar CharacterOf(const QVariant& code) {
    const qint64 number = convert::ToInt64(code);
    if (number < 1 || number > 0xFFFF) {
        throw Erro(Erro::InvalidArgument);
    }
    return QChar(static_cast<char16_t>(number));
}

// (how often, a text's first character or a character's code)
QVariant Repeated(const Arguments& a) {
    const bool text = IsText(a.at(1));
    const QString what = text ? TextAt(a, 1) : QString(CharacterOf(a.at(1)));
    if (what.isEmpty()) {
        throw Erro(Erro::InvalidArgument);
    }
    return QString(LengthAt(a, 0), what.front());
}

QVariant StrComp(const Arguments& a) {
    const QString left = TextAt(a, 0);
    const QString right = TextAt(a, 1);
    const int order = WayAt(a, 2) == Way::Binary ? left.compare(right, Qt::CaseSensitive)
                                                 : collation::Compare(left, right);
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

// 1 capitals, 2 small letters, 3 each word with a capital.
QVariant StrConv(const Arguments& a) {
    const QString text = TextAt(a, 0);
    switch (convert::ToInt64(a.at(1))) {
        case 1:
            return text.toUpper();
        case 2:
            return text.toLower();
        case 3:
            break;
        default:
            throw Erro(Erro::InvalidArgument);
    }
    QString result = text.toLower();
    bool begins = true;
    for (QChar& c : result) {
        c = begins ? c.toUpper() : c;
        begins = c.isSpace();
    }
    return result;
}

QVariant StrReverse(const Arguments& a) {
    QString text = TextAt(a, 0);
    std::reverse(text.begin(), text.end());
    return text;
}

QVariant Chr(const Arguments& a) {
    return QString(CharacterOf(a.at(0)));
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
    return Number(convert::Val(TextAt(a, 0)));
}

constexpr auto Evaluated = Function::Form::Evaluated;

constexpr auto AsText = Function::Dates::AsText;

const Function Table[] = {
    {"LEN", 1, 1, Type::Number, Evaluated, Len, AsText},
    {"LEFT", 2, 2, Type::Text, Evaluated, Left, AsText},
    {"RIGHT", 2, 2, Type::Text, Evaluated, Right, AsText},
    {"MID", 2, 3, Type::Text, Evaluated, Mid, AsText},
    {"INSTR", 2, 4, Type::Number, Evaluated, InStr, AsText},
    {"INSTRREV", 2, 4, Type::Number, Evaluated, InStrRev, AsText},
    {"UCASE", 1, 1, Type::Text, Evaluated, UCase, AsText},
    {"LCASE", 1, 1, Type::Text, Evaluated, LCase, AsText},
    {"TRIM", 1, 1, Type::Text, Evaluated, Trim, AsText},
    {"LTRIM", 1, 1, Type::Text, Evaluated, LTrim, AsText},
    {"RTRIM", 1, 1, Type::Text, Evaluated, RTrim, AsText},
    {"REPLACE", 3, 6, Type::Text, Evaluated, Replace, AsText},
    {"SPACE", 1, 1, Type::Text, Evaluated, Space},
    {"STRING", 2, 2, Type::Text, Evaluated, Repeated, AsText},
    {"STRCOMP", 2, 3, Type::Number, Evaluated, StrComp, AsText},
    {"STRCONV", 2, 2, Type::Text, Evaluated, StrConv, AsText},
    {"STRREVERSE", 1, 1, Type::Text, Evaluated, StrReverse, AsText},
    {"CHR", 1, 1, Type::Text, Evaluated, Chr},
    {"CHRW", 1, 1, Type::Text, Evaluated, Chr},
    {"ASC", 1, 1, Type::Number, Evaluated, Asc, AsText},
    {"ASCW", 1, 1, Type::Number, Evaluated, Asc, AsText},
    {"FORMAT", 1, 2, Type::Text, Evaluated, FormatOf},
    {"CSTR", 1, 1, Type::Text, Evaluated, CStr, AsText},
    {"STR", 1, 1, Type::Text, Evaluated, Str},
    {"VAL", 1, 1, Type::Number, Evaluated, ValOf, AsText},
};

}  // namespace

std::span<const Function> TextFunctions() {
    return Table;
}

}  // namespace sql
