#pragma once

#include <QDate>
#include <QStringView>

#include <optional>

// Dates as serial numbers: days since 30 December 1899; the fraction, taken without its sign, is
// the time of day.
namespace sql::serialdate {

struct Moment {
    QDate date;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// To the second. Throws Erro 6 outside the years 100 to 9999.
Moment Split(double serial);

// Months and days outside their range count on into the neighbouring years and months; years 0 to
// 29 are 2000 to 2029, 30 to 99 are 1930 to 1999. Throws Erro 5 outside the years 100 to 9999.
double FromDate(qint64 year, qint64 month, qint64 day);
double FromTime(qint64 hour, qint64 minute, qint64 second);

// From 1 on. The week of 1 January is the first; Sunday begins a week, and is its day 1, unless
// another day of 1 to 7 is given.
int QuarterOf(const QDate& date);
int WeekdayOf(const QDate& date, qint64 first = 1);
int WeekOf(const QDate& date, qint64 first = 1);

enum class Order { MonthFirst, DayFirst };

// Year-month-day whatever the order, or the order's form with / or - or a point; then, or alone,
// hour:minute[:second] [AM|PM]. Where only the other order makes a date, that one is taken.
std::optional<double> Parse(QStringView text, Order order);

}  // namespace sql::serialdate
