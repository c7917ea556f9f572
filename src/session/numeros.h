#pragma once

#include <QString>

// Its letters A to Z, made upper-case, and its digits; everything else goes.
QString SomenteAlfanumericos(const QString& texto);
QString RemoverZerosEsquerda(const QString& texto);
// The stored form of one of the maker's numbers: both of the above, and without a first digit that
// a letter follows.
QString NormalizarNumero(const QString& texto);
