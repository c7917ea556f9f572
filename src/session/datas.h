#pragma once

#include <QString>

// Dates are serial numbers: days since 30 December 1899, the fraction is the time of day.

QString MesAbreviado(quint8 mes);       // "JAN" to "DEZ"; empty outside 1 to 12
QString FormatarData(double data);      // "05-MAR-2026"
QString FormatarDataHora(double data);  // "05-MAR-2026 14:07:09"
// The moment as an SQL expression; of 1.0 the present one.
QString DataHoraSql(double data);
