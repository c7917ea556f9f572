#include "platform/system/clock.h"

#include <cmath>
#include <utility>

namespace {

constexpr double MillisecondsPerDay = 86'400'000.0;
constexpr qint64 SecondsPerDay = 86'400;

QDate DayZero() {
    return {1899, 12, 30};
}

std::function<QDateTime()>& Clock() {
    static std::function<QDateTime()> clock;
    return clock;
}

}  // namespace

double sys::Now() {
    return ToSerial(Clock() ? Clock()() : QDateTime::currentDateTime());
}

// Before day zero the fraction counts forward from the day all the same: -1.25 is six in the
// morning of 29 December 1899.
double sys::ToSerial(const QDateTime& moment) {
    const auto days = static_cast<double>(DayZero().daysTo(moment.date()));
    const double time = moment.time().msecsSinceStartOfDay() / MillisecondsPerDay;
    return days < 0 ? days - time : days + time;
}

// A serial number is what a wall clock shows. The result carries those fields as UTC, because in
// local time the hour that summer time skips would come out as another one.
QDateTime sys::FromSerial(double serial) {
    const double days = std::trunc(serial);
    const qint64 seconds = std::llround(std::abs(serial - days) * SecondsPerDay);
    return QDateTime(DayZero().addDays(static_cast<qint64>(days)), QTime(0, 0), Qt::UTC)
        .addSecs(seconds);
}

void sys::SetClock(std::function<QDateTime()> clock) {
    Clock() = std::move(clock);
}
