#include "tabelas/dates.h"

#include "platform/system/clock.h"
#include "platform/system/csv_writer.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tabelas {
namespace {

constexpr double FirstDate = -657434;  // 1 January 100
constexpr double LastDate = 2958466;   // the day after 31 December 9999
constexpr double HalfMillisecond = 0.5 / 86'400'000;

// The first of the formats that the whole text has.
template <typename Moment>
Moment Parse(const QString& text, std::initializer_list<QString> formats) {
    for (const QString& format : formats) {
        if (const Moment moment = Moment::fromString(text, format); moment.isValid()) {
            return moment;
        }
    }
    return {};
}

}  // namespace

bool IsDate(double serial) {
    return serial >= FirstDate && serial < LastDate;
}

QString FormatDate(double serial) {
    const QDateTime moment = sys::FromSerial(serial);
    if (!IsDate(serial) || std::abs(sys::ToSerial(moment) - serial) > HalfMillisecond) {
        return sys::CsvNumber(serial);
    }
    return moment.toString(moment.time() == QTime(0, 0) ? u"dd/MM/yyyy"_s
                                                        : u"dd/MM/yyyy HH:mm:ss"_s);
}

// Day and time are read apart: an hour that summer time skips is one all the same.
std::optional<double> ParseDate(const QString& text) {
    static const QRegularExpression between(u"[ T]+"_s);
    const QStringList pieces = text.trimmed().split(between);
    const auto date = Parse<QDate>(pieces.first(), {u"d/M/yyyy"_s, u"yyyy-M-d"_s});
    if (date.isValid()) {
        const QTime time = pieces.size() == 1
                               ? QTime(0, 0)
                               : Parse<QTime>(pieces.at(1), {u"h:mm"_s, u"h:mm:ss"_s});
        const double serial = sys::ToSerial(QDateTime(date, time, Qt::UTC));
        return pieces.size() <= 2 && time.isValid() && IsDate(serial) ? std::optional(serial)
                                                                      : std::nullopt;
    }
    bool number = false;
    const double serial = QLocale::c().toDouble(text.trimmed().replace(u',', u'.'), &number);
    return number && IsDate(serial) ? std::optional(serial) : std::nullopt;
}

}  // namespace tabelas
