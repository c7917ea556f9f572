#include "platform/sql/serialdate.h"

#include "platform/erro.h"
#include "platform/system/clock.h"

#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace sql::serialdate {

namespace {

constexpr qint64 SecondsPerDay = 86400;

bool InRange(const QDate& date) {
    return date.isValid() && date.year() >= 100 && date.year() <= 9999;
}

double SerialOf(const QDate& date) {
    return sys::ToSerial(QDateTime(date, QTime(0, 0), Qt::UTC));
}

int FullYear(int year, qsizetype digits) {
    return digits > 2 ? year : year + (year < 30 ? 2000 : 1900);
}

// 1 to 12 for a month's number, or for its name or the first three letters of it, in English or
// Portuguese; -1 for another text. `named` tells which it was.
int MonthOf(const QString& text, bool& named) {
    static const QStringList names = {
        u"january"_s, u"february"_s,  u"march"_s,     u"april"_s,   u"may"_s,      u"june"_s,
        u"july"_s,    u"august"_s,    u"september"_s, u"october"_s, u"november"_s, u"december"_s,
        u"janeiro"_s, u"fevereiro"_s, u"março"_s,     u"abril"_s,   u"maio"_s,     u"junho"_s,
        u"julho"_s,   u"agosto"_s,    u"setembro"_s,  u"outubro"_s, u"novembro"_s, u"dezembro"_s};
    bool ok = false;
    const int number = text.toInt(&ok);
    if (ok) {
        return number < 0 ? -1 : number;
    }
    const QString small = text.toLower();
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (small == names.at(i) || small == names.at(i).left(3)) {
            named = true;
            return static_cast<int>(i % 12) + 1;
        }
    }
    return -1;
}

std::optional<QDate> ParseDay(QStringView text, Order order) {
    QString plain = text.toString();
    plain.replace(u'-', u'/').replace(u'.', u'/');
    const QStringList parts = plain.split(u'/');
    if (parts.size() != 3) {
        return {};
    }
    int number[3];
    bool named[3] = {};
    for (int i = 0; i < 3; ++i) {
        number[i] = MonthOf(parts.at(i), named[i]);
        if (number[i] < 0) {
            return {};
        }
    }
    if (named[0] || named[1]) {
        order = named[0] ? Order::MonthFirst : Order::DayFirst;
    }
    if (named[2] || (named[0] && named[1])) {
        return {};
    }
    QDate date;
    if (parts.at(0).size() == 4) {
        date = QDate(number[0], number[1], number[2]);
    } else {
        const int year = FullYear(number[2], parts.at(2).size());
        const QDate monthFirst(year, number[0], number[1]);
        const QDate dayFirst(year, number[1], number[0]);
        const bool wantsMonth = order == Order::MonthFirst;
        date = wantsMonth ? monthFirst : dayFirst;
        if (!date.isValid() && !named[0] && !named[1]) {
            date = wantsMonth ? dayFirst : monthFirst;
        }
    }
    return InRange(date) ? std::optional(date) : std::nullopt;
}

std::optional<double> ParseTime(QStringView text) {
    QString plain = text.trimmed().toString().toUpper();
    const bool afternoon = plain.endsWith("PM"_L1);
    const bool morning = plain.endsWith("AM"_L1);
    if (afternoon || morning) {
        plain.chop(2);
    }
    const QStringList parts = plain.trimmed().split(u':');
    if (parts.size() < 2 || parts.size() > 3) {
        return {};
    }
    int number[3] = {};
    constexpr int Limit[] = {23, 59, 59};
    for (qsizetype i = 0; i < parts.size(); ++i) {
        bool ok = false;
        number[i] = parts.at(i).toInt(&ok);
        if (!ok || number[i] < 0 || number[i] > Limit[i]) {
            return {};
        }
    }
    if (afternoon || morning) {
        if (number[0] < 1 || number[0] > 12) {
            return {};
        }
        number[0] = number[0] % 12 + (afternoon ? 12 : 0);
    }
    return FromTime(number[0], number[1], number[2]);
}

}  // namespace

Moment Split(double serial) {
    // Wide of the years that count, but within what the toolkit's calendar holds.
    if (!(std::abs(serial) < 3000000)) {
        throw Erro(Erro::Overflow);
    }
    const QDateTime moment = sys::FromSerial(serial);
    if (!InRange(moment.date())) {
        throw Erro(Erro::Overflow);
    }
    const QTime time = moment.time();
    return {moment.date(), time.hour(), time.minute(), time.second()};
}

double FromDate(qint64 year, qint64 month, qint64 day) {
    constexpr qint64 Limit = 10'000'000;  // what the toolkit's calendar takes easily
    if (std::abs(year) > Limit || std::abs(month) > Limit || std::abs(day) > Limit) {
        throw Erro(Erro::InvalidArgument);
    }
    if (year >= 0 && year < 100) {
        year = FullYear(static_cast<int>(year), 2);
    }
    const QDate date =
        QDate(static_cast<int>(year), 1, 1).addMonths(static_cast<int>(month - 1)).addDays(day - 1);
    if (!InRange(date)) {
        throw Erro(Erro::InvalidArgument);
    }
    return SerialOf(date);
}

double FromTime(qint64 hour, qint64 minute, qint64 second) {
    return static_cast<double>(hour * 3600 + minute * 60 + second) /
           static_cast<double>(SecondsPerDay);
}

int QuarterOf(const QDate& date) {
    return (date.month() + 2) / 3;
}

int WeekdayOf(const QDate& date, qint64 first) {
    return static_cast<int>((date.dayOfWeek() - first + 8) % 7) + 1;
}

int WeekOf(const QDate& date, qint64 first) {
    return (date.dayOfYear() + WeekdayOf(QDate(date.year(), 1, 1), first) - 2) / 7 + 1;
}

std::optional<double> Parse(QStringView text, Order order) {
    text = text.trimmed();
    // A T behind a digit is no letter of a month's name.
    const auto endsDay = [&text](qsizetype at) {
        return text.at(at) == u' ' || (text.at(at) == u'T' && at > 0 && text.at(at - 1).isDigit());
    };
    qsizetype blank = 0;
    while (blank < text.size() && !endsDay(blank)) {
        ++blank;
    }
    const std::optional<QDate> date = ParseDay(text.first(blank), order);
    if (!date) {
        return ParseTime(text);
    }
    const std::optional<double> time =
        blank == text.size() ? 0.0 : ParseTime(text.sliced(blank + 1));
    if (!time) {
        return {};
    }
    const double days = SerialOf(*date);
    return days < 0 ? days - *time : days + *time;
}

}  // namespace sql::serialdate
