#include "session/datas.h"

#include "platform/system/clock.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr double SemData = 1.0;

constexpr std::array<QLatin1StringView, 12> Meses = {"JAN"_L1, "FEV"_L1, "MAR"_L1, "ABR"_L1,
                                                     "MAI"_L1, "JUN"_L1, "JUL"_L1, "AGO"_L1,
                                                     "SET"_L1, "OUT"_L1, "NOV"_L1, "DEZ"_L1};

}  // namespace

QString MesAbreviado(quint8 mes) {
    return mes >= 1 && mes <= Meses.size() ? QString(Meses.at(mes - 1)) : QString();
}

// Whatever the machine's locale says about dates.
QString FormatarData(double data) {
    const QDate dia = sys::FromSerial(data).date();
    return u"%1-%2-%3"_s.arg(dia.day(), 2, 10, QLatin1Char('0'))
        .arg(MesAbreviado(static_cast<quint8>(dia.month())))
        .arg(dia.year(), 4, 10, QLatin1Char('0'));
}

QString FormatarDataHora(double data) {
    return FormatarData(data) + sys::FromSerial(data).time().toString(u" hh:mm:ss"_s);
}

QString DataHoraSql(double data) {
    const QDateTime momento = sys::FromSerial(data == SemData ? sys::Now() : data);
    return u"DateSerial(%1,%2,%3)+TimeSerial(%4,%5,%6)"_s.arg(momento.date().year())
        .arg(momento.date().month())
        .arg(momento.date().day())
        .arg(momento.time().hour())
        .arg(momento.time().minute())
        .arg(momento.time().second());
}
