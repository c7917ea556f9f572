#include "platform/convert.h"
#include "platform/sql/functiontable.h"
#include "platform/sql/serialdate.h"
#include "platform/system/clock.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace sql {

namespace {

using Arguments = QList<QVariant>;
using serialdate::Moment;

Moment MomentAt(const Arguments& a, qsizetype i) {
    return serialdate::Split(ToSerial(a.at(i)));
}

// Erro 6 for what lies beyond the calendar.
double Checked(double serial) {
    serialdate::Split(serial);
    return serial;
}

QVariant Now(const Arguments&) {
    return sys::Now();
}

QVariant Date(const Arguments&) {
    return std::floor(sys::Now());
}

QVariant Time(const Arguments&) {
    const double now = sys::Now();
    return now - std::floor(now);
}

QVariant DateSerial(const Arguments& a) {
    return serialdate::FromDate(convert::ToInt64(a.at(0)), convert::ToInt64(a.at(1)),
                                convert::ToInt64(a.at(2)));
}

QVariant TimeSerial(const Arguments& a) {
    constexpr qint64 Limit = 1000000;
    const auto part = [&a](qsizetype i) {
        const qint64 number = convert::ToInt64(a.at(i));
        if (std::abs(number) > Limit) {
            throw Erro(Erro::Overflow);
        }
        return number;
    };
    return serialdate::FromTime(part(0), part(1), part(2));
}

QVariant CDate(const Arguments& a) {
    return Checked(ToSerial(a.at(0)));
}

QVariant DateValue(const Arguments& a) {
    return std::trunc(ToSerial(a.at(0)));
}

QVariant TimeValue(const Arguments& a) {
    const double serial = ToSerial(a.at(0));
    return std::abs(serial - std::trunc(serial));
}

QVariant IsDate(const Arguments& a) {
    return IsText(a.at(0)) && serialdate::Parse(a.at(0).toString(), serialdate::Order::DayFirst)
               ? -1
               : 0;
}

qint64 FirstDayAt(const Arguments& a, qsizetype i) {
    const qint64 first = a.size() > i ? convert::ToInt64(a.at(i)) : 1;
    if (first < 0 || first > 7) {
        throw Erro(Erro::InvalidArgument);
    }
    return first == 0 ? 1 : first;
}

QVariant Weekday(const Arguments& a) {
    return serialdate::WeekdayOf(MomentAt(a, 0).date, FirstDayAt(a, 1));
}

enum class Part { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

Part PartAt(const Arguments& a, qsizetype i) {
    struct Entry {
        const char* code;
        Part part;
    };
    constexpr Entry Codes[] = {
        {"yyyy", Part::Year}, {"q", Part::Quarter}, {"m", Part::Month}, {"y", Part::DayOfYear},
        {"d", Part::Day},     {"w", Part::Weekday}, {"ww", Part::Week}, {"h", Part::Hour},
        {"n", Part::Minute},  {"s", Part::Second},
    };
    const QString code = convert::ToText(a.at(i)).toLower();
    for (const Entry& entry : Codes) {
        if (code == QLatin1String(entry.code)) {
            return entry.part;
        }
    }
    throw Erro(Erro::InvalidArgument);
}

int Get(const Moment& moment, Part part, qint64 first = 1) {
    const QDate& date = moment.date;
    switch (part) {
        case Part::Year:
            return date.year();
        case Part::Quarter:
            return serialdate::QuarterOf(date);
        case Part::Month:
            return date.month();
        case Part::DayOfYear:
            return date.dayOfYear();
        case Part::Day:
            return date.day();
        case Part::Weekday:
            return serialdate::WeekdayOf(date, first);
        case Part::Week:
            return serialdate::WeekOf(date, first);
        case Part::Hour:
            return moment.hour;
        case Part::Minute:
            return moment.minute;
        case Part::Second:
            return moment.second;
    }
    return 0;
}

template <Part Which>
QVariant PartOf(const Arguments& a) {
    return Get(MomentAt(a, 0), Which);
}

QVariant DatePart(const Arguments& a) {
    return Get(MomentAt(a, 1), PartAt(a, 0), FirstDayAt(a, 2));
}

double AddMonths(double serial, qint64 months) {
    if (std::abs(months) > 200000) {
        throw Erro(Erro::InvalidArgument);
    }
    Moment moment = serialdate::Split(serial);
    moment.date = moment.date.addMonths(static_cast<int>(months));  // the last day at most
    return serialdate::FromDate(moment.date.year(), moment.date.month(), moment.date.day()) +
           (serial - std::trunc(serial));
}

QVariant DateAdd(const Arguments& a) {
    const qint64 count = convert::ToInt64(a.at(1));
    const double serial = ToSerial(a.at(2));
    const auto number = static_cast<double>(count);
    switch (PartAt(a, 0)) {
        case Part::Year:
            return AddMonths(serial, count * 12);
        case Part::Quarter:
            return AddMonths(serial, count * 3);
        case Part::Month:
            return AddMonths(serial, count);
        case Part::DayOfYear:
        case Part::Day:
        case Part::Weekday:
            return Checked(serial + number);
        case Part::Week:
            return Checked(serial + number * 7);
        case Part::Hour:
            return Checked(serial + number / 24);
        case Part::Minute:
            return Checked(serial + number / 1440);
        case Part::Second:
            return Checked(serial + number / 86400);
    }
    return {};
}

// Boundaries crossed, not time gone by: from 31 December to 1 January is one year.
QVariant DateDiff(const Arguments& a) {
    const Moment from = MomentAt(a, 1);
    const Moment to = MomentAt(a, 2);
    const qint64 days = from.date.daysTo(to.date);
    const qint64 months =
        (to.date.year() - from.date.year()) * 12 + to.date.month() - from.date.month();
    const auto quarterOf = [](const Moment& moment) {
        return moment.date.year() * 4 + serialdate::QuarterOf(moment.date);
    };
    const qint64 hours = days * 24 + to.hour - from.hour;
    const qint64 minutes = hours * 60 + to.minute - from.minute;
    switch (PartAt(a, 0)) {
        case Part::Year:
            return to.date.year() - from.date.year();
        case Part::Quarter:
            return quarterOf(to) - quarterOf(from);
        case Part::Month:
            return static_cast<qlonglong>(months);
        case Part::DayOfYear:
        case Part::Day:
            return static_cast<qlonglong>(days);
        case Part::Weekday:  // whole weeks
            return static_cast<qlonglong>(days / 7);
        case Part::Week: {  // first days of a week
            const qint64 first = FirstDayAt(a, 3);
            return static_cast<qlonglong>((days + serialdate::WeekdayOf(from.date, first) -
                                           serialdate::WeekdayOf(to.date, first)) /
                                          7);
        }
        case Part::Hour:
            return static_cast<qlonglong>(hours);
        case Part::Minute:
            return static_cast<qlonglong>(minutes);
        case Part::Second:
            return static_cast<qlonglong>(minutes * 60 + to.second - from.second);
    }
    return {};
}

constexpr auto Evaluated = Function::Form::Evaluated;
constexpr auto Serial = Function::Dates::Serial;
constexpr auto AsText = Function::Dates::AsText;

const Function Table[] = {
    {"NOW", 0, 0, Type::Date, Evaluated, Now, Serial, false},
    {"DATE", 0, 0, Type::Date, Evaluated, Date, Serial, false},
    {"TIME", 0, 0, Type::Date, Evaluated, Time, Serial, false},
    {"DATESERIAL", 3, 3, Type::Date, Evaluated, DateSerial},
    {"TIMESERIAL", 3, 3, Type::Date, Evaluated, TimeSerial},
    {"DATEVALUE", 1, 1, Type::Date, Evaluated, DateValue},
    {"TIMEVALUE", 1, 1, Type::Date, Evaluated, TimeValue},
    {"CDATE", 1, 1, Type::Date, Evaluated, CDate},
    {"CVDATE", 1, 1, Type::Date, Evaluated, CDate},
    {"ISDATE", 1, 1, Type::Number, Evaluated, IsDate, AsText, true, true},
    {"YEAR", 1, 1, Type::Number, Evaluated, PartOf<Part::Year>},
    {"MONTH", 1, 1, Type::Number, Evaluated, PartOf<Part::Month>},
    {"DAY", 1, 1, Type::Number, Evaluated, PartOf<Part::Day>},
    {"HOUR", 1, 1, Type::Number, Evaluated, PartOf<Part::Hour>},
    {"MINUTE", 1, 1, Type::Number, Evaluated, PartOf<Part::Minute>},
    {"SECOND", 1, 1, Type::Number, Evaluated, PartOf<Part::Second>},
    {"WEEKDAY", 1, 2, Type::Number, Evaluated, Weekday},
    {"DATEADD", 3, 3, Type::Date, Evaluated, DateAdd},
    {"DATEDIFF", 3, 4, Type::Number, Evaluated, DateDiff},
    {"DATEPART", 2, 3, Type::Number, Evaluated, DatePart},
};

}  // namespace

std::span<const Function> DateFunctions() {
    return Table;
}

QString DateText(const QVariant& value) {
    const double serial = convert::ToDouble(value);
    const QString day = u"dd/mm/yyyy"_s;
    const QString time = u"hh:nn:ss"_s;
    const bool hasDay = std::trunc(serial) != 0;
    const bool hasTime = std::trunc(serial) != serial;
    return Format(serial, !hasTime ? day : (hasDay ? day + u' ' + time : time));
}

double ToSerial(const QVariant& value) {
    if (value.typeId() != QMetaType::QString) {
        return convert::ToDouble(value);
    }
    const std::optional<double> serial =
        serialdate::Parse(value.toString(), serialdate::Order::DayFirst);
    if (!serial) {
        throw Erro(Erro::TypeMismatch);
    }
    return *serial;
}

}  // namespace sql
