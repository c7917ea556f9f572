#include "platform/convert.h"
#include "platform/sql/functiontable.h"
#include "platform/sql/serialdate.h"

#include <QLocale>
#include <QStringList>

#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

// What Format() writes is for people to read, so separators and names are Brazilian, unlike those
// of CStr and &, whose texts go back into statements.
namespace sql {

namespace {

const QLocale& Brazil() {
    static const QLocale locale(QLocale::Portuguese, QLocale::Brazil);
    return locale;
}

struct Named {
    const char* name;
    const char16_t* pattern;
};

constexpr Named NumberNames[] = {
    {"currency", u"\"R$ \"#,##0.00"},
    {"fixed", u"0.00"},
    {"standard", u"#,##0.00"},
    {"percent", u"0.00%"},
    {"yes/no", u"\"Sim\";\"Sim\";\"Não\""},
    {"true/false", u"\"Verdadeiro\";\"Verdadeiro\";\"Falso\""},
    {"on/off", u"\"Ativado\";\"Ativado\";\"Desativado\""},
};

constexpr Named DateNames[] = {
    {"general date", u"dd/mm/yyyy hh:nn:ss"},
    {"long date", u"dddd, d\" de \"mmmm\" de \"yyyy"},
    {"medium date", u"dd-mmm-yy"},
    {"short date", u"dd/mm/yyyy"},
    {"long time", u"hh:nn:ss"},
    {"medium time", u"hh:nn"},
    {"short time", u"hh:nn"},
};

template <std::size_t N>
std::optional<QString> FindNamed(const Named (&names)[N], const QString& name) {
    for (const Named& entry : names) {
        if (name.compare(QLatin1String(entry.name), Qt::CaseInsensitive) == 0) {
            return QString::fromUtf16(entry.pattern);
        }
    }
    return {};
}

// Pieces of a pattern: literal texts (quoted or behind a backslash) and single characters.
struct Piece {
    bool literal;
    QString text;
};

QList<Piece> Cut(const QString& pattern) {
    QList<Piece> pieces;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern.at(i);
        if (c == u'\\' && i + 1 < pattern.size()) {
            pieces.append({true, pattern.mid(++i, 1)});
        } else if (c == u'"') {
            const qsizetype end = pattern.indexOf(u'"', i + 1);
            pieces.append({true, pattern.mid(i + 1, end < 0 ? -1 : end - i - 1)});
            i = end < 0 ? pattern.size() : end;
        } else {
            pieces.append({false, QString(c)});
        }
    }
    return pieces;
}

bool HasAnyOf(const QString& pattern, QStringView characters) {
    for (const Piece& piece : Cut(pattern)) {
        if (!piece.literal && characters.contains(piece.text.front().toLower())) {
            return true;
        }
    }
    return false;
}

// The sections of a number's pattern: above zero, below zero, zero.
QStringList Sections(const QString& pattern) {
    QStringList sections(QString{});
    bool quoted = false;
    for (const QChar c : pattern) {
        quoted = quoted != (c == u'"');
        if (c == u';' && !quoted) {
            sections.append(QString());
        } else {
            sections.last() += c;
        }
    }
    return sections;
}

QString Grouped(const QString& digits) {
    QString grouped;
    for (qsizetype i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) {
            grouped += u'.';
        }
        grouped += digits.at(i);
    }
    return grouped;
}

// A number by one section, without its sign.
QString FormatMagnitude(double magnitude, const QString& section) {
    const QList<Piece> pieces = Cut(section);
    int wholeZeros = 0;
    int places = 0;
    int placeZeros = 0;
    bool point = false;
    bool group = false;
    for (const Piece& piece : pieces) {
        if (piece.literal) {
            continue;
        }
        const QChar c = piece.text.front();
        if (c == u'%') {
            magnitude *= 100;
        }
        group = group || (c == u',' && !point);
        if (c == u'0' || c == u'#') {
            places += point ? 1 : 0;
            placeZeros = point && c == u'0' ? places : placeZeros;
            wholeZeros += !point && c == u'0' ? 1 : 0;
        }
        point = point || c == u'.';
    }
    QString whole = QString::number(magnitude, 'f', places);
    QString fraction;
    if (places > 0) {
        fraction = whole.section(u'.', 1);
        whole = whole.section(u'.', 0, 0);
        while (fraction.size() > placeZeros && fraction.endsWith(u'0')) {
            fraction.chop(1);
        }
    }
    whole = whole == "0"_L1 && wholeZeros == 0 ? QString() : whole.rightJustified(wholeZeros, u'0');
    QString result;
    bool written = false;
    for (const Piece& piece : pieces) {
        const bool digit = !piece.literal && QStringView(u"0#.,").contains(piece.text.front());
        if (!digit) {
            result += piece.text;
        } else if (!written) {
            result += group ? Grouped(whole) : whole;
            result += fraction.isEmpty() ? QString() : u',' + fraction;
            written = true;
        }
    }
    return result;
}

QString FormatNumber(double number, const QString& pattern) {
    const QStringList sections = Sections(pattern);
    const auto given = [&](qsizetype i) {
        return sections.size() > i && !sections.at(i).isEmpty();
    };
    if (number == 0 && given(2)) {
        return FormatMagnitude(0, sections.at(2));
    }
    if (number < 0 && given(1)) {
        return FormatMagnitude(-number, sections.at(1));
    }
    const QString magnitude = FormatMagnitude(std::abs(number), sections.at(0));
    return (number < 0 ? u"-"_s : QString()) + magnitude;
}

// `minutes`: an m means them; `twelve`: the hours count to twelve.
QString DatePart(const serialdate::Moment& moment, QChar code, qsizetype length, bool minutes,
                 bool twelve) {
    const auto digits = [length](int number) {
        return QString::number(number).rightJustified(length > 1 ? 2 : 1, u'0');
    };
    const QDate& date = moment.date;
    switch (code.unicode()) {
        case u'd':
            return length <= 2   ? digits(date.day())
                   : length == 3 ? Brazil().dayName(date.dayOfWeek(), QLocale::ShortFormat).left(3)
                                 : Brazil().dayName(date.dayOfWeek());
        case u'm':
            if (minutes) {
                return digits(moment.minute);
            }
            return length <= 2   ? digits(date.month())
                   : length == 3 ? Brazil().monthName(date.month(), QLocale::ShortFormat).left(3)
                                 : Brazil().monthName(date.month());
        case u'y':
            return length == 1   ? QString::number(date.dayOfYear())
                   : length == 2 ? QString::number(date.year()).right(2)
                                 : QString::number(date.year());
        case u'h':
            return digits(twelve ? (moment.hour + 11) % 12 + 1 : moment.hour);
        case u'n':
            return digits(moment.minute);
        case u's':
            return digits(moment.second);
        case u'q':
            return QString::number(serialdate::QuarterOf(date));
        default:
            return QString::number(length == 1 ? serialdate::WeekdayOf(date)
                                               : serialdate::WeekOf(date));
    }
}

constexpr QStringView DateLetters = u"dmyhnsqw";
constexpr qsizetype MostOfEach[] = {4, 4, 4, 2, 2, 2, 1, 2};

// The marks for before and after noon, the longest first.
struct NoonMark {
    const char16_t* code;
    const char16_t* before;
    const char16_t* after;
};
constexpr NoonMark NoonMarks[] = {
    {u"AM/PM", u"AM", u"PM"},
    {u"AMPM", u"AM", u"PM"},
    {u"A/P", u"A", u"P"},
};

// The mark that begins at a piece, or null.
const NoonMark* FindNoonMark(const QList<Piece>& pieces, qsizetype at) {
    for (const NoonMark& mark : NoonMarks) {
        const QStringView code(mark.code);
        qsizetype same = 0;
        while (same < code.size() && at + same < pieces.size() && !pieces.at(at + same).literal &&
               pieces.at(at + same).text.front().toUpper() == code.at(same)) {
            ++same;
        }
        if (same == code.size()) {
            return &mark;
        }
    }
    return nullptr;
}

QString FormatDate(double serial, const QString& pattern) {
    const serialdate::Moment moment = serialdate::Split(serial);
    const QList<Piece> pieces = Cut(pattern);
    bool twelve = false;
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        twelve = twelve || FindNoonMark(pieces, i);
    }
    QString result;
    QChar previous;  // an m behind hours is minutes
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        const Piece& piece = pieces.at(i);
        if (const NoonMark* mark = FindNoonMark(pieces, i)) {
            const QString text = QString::fromUtf16(moment.hour < 12 ? mark->before : mark->after);
            const bool small = piece.text.front().isLower();
            result += small ? text.toLower() : text;
            i += QStringView(mark->code).size() - 1;
            continue;
        }
        const QChar code = piece.text.isEmpty() ? QChar() : piece.text.front().toLower();
        if (piece.literal || !DateLetters.contains(code)) {
            result += piece.text;
            continue;
        }
        qsizetype length = 1;
        while (i + 1 < pieces.size() && !pieces.at(i + 1).literal &&
               pieces.at(i + 1).text.front().toLower() == code) {
            ++length;
            ++i;
        }
        if (length > MostOfEach[DateLetters.indexOf(code)] || (code == u'y' && length == 3)) {
            throw Erro(Erro::InvalidArgument);
        }
        result += DatePart(moment, code, length, code == u'm' && previous == u'h', twelve);
        previous = code;
    }
    return result;
}

QString FormatText(const QString& text, const QString& pattern) {
    if (HasAnyOf(pattern, u"<")) {
        return text.toLower();
    }
    if (HasAnyOf(pattern, u">")) {
        return text.toUpper();
    }
    const qsizetype width = pattern.count(u'@');
    if (width != pattern.size()) {
        throw Erro(Erro::InvalidArgument);
    }
    return text.rightJustified(width);
}

}  // namespace

QString Format(const QVariant& value, const QString& pattern) {
    const bool text = IsText(value);
    if (pattern.isEmpty() || pattern.compare("General Number"_L1, Qt::CaseInsensitive) == 0) {
        return convert::ToText(value);
    }
    if (const auto named = FindNamed(DateNames, pattern)) {
        return FormatDate(ToSerial(value), *named);
    }
    if (pattern.compare("Scientific"_L1, Qt::CaseInsensitive) == 0) {
        return QString::number(convert::ToDouble(value), 'E', 2).replace(u'.', u',');
    }
    if (const auto named = FindNamed(NumberNames, pattern)) {
        return FormatNumber(convert::ToDouble(value), *named);
    }
    const bool numeric = HasAnyOf(pattern, u"0#");
    if (numeric && (pattern.contains("E+"_L1, Qt::CaseInsensitive) ||
                    pattern.contains("E-"_L1, Qt::CaseInsensitive))) {
        throw Erro(Erro::InvalidArgument);  // an exponent of its own shape
    }
    if (!numeric && HasAnyOf(pattern, DateLetters)) {
        const auto serial = text ? serialdate::Parse(value.toString(), serialdate::Order::DayFirst)
                                 : std::optional(convert::ToDouble(value));
        return serial ? FormatDate(*serial, pattern) : value.toString();
    }
    if (text) {
        bool ok = false;
        const double number = value.toString().trimmed().toDouble(&ok);
        return ok && numeric ? FormatNumber(number, pattern)
                             : FormatText(value.toString(), pattern);
    }
    return numeric ? FormatNumber(convert::ToDouble(value), pattern)
                   : FormatText(convert::ToText(value), pattern);
}

}  // namespace sql
