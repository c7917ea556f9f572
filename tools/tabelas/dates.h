#pragma once

#include <QString>

#include <optional>

// Dates in CSV files. A date is a serial number (platform/system/clock.h).
namespace tabelas {

// "05/03/2026" or "05/03/2026 14:07:09". A moment that is no whole second is written as its serial
// number, so that nothing of it is lost.
QString FormatDate(double serial);

// Those, "2026-03-05" with or without a time, and a serial number with comma or point. Nothing for
// any other text, and for a date outside the years 100 to 9999.
std::optional<double> ParseDate(const QString& text);

bool IsDate(double serial);

}  // namespace tabelas
