#pragma once

#include <QDateTime>

#include <functional>

// Dates are serial numbers: days since 30 December 1899, the fraction is the time of day. 1.0 can
// therefore mean "none".
namespace sys {

double Now();  // local time
double ToSerial(const QDateTime& moment);
QDateTime FromSerial(double serial);  // to the second

// Puts another clock in place (tests). An empty function restores the real one.
void SetClock(std::function<QDateTime()> clock);

}  // namespace sys
