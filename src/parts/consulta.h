#pragma once

#include "session/numeros.h"

#include <QString>
#include <QStringList>

// Pieces from which the searches build their SQL texts.
namespace consulta {

// Typed text for a quoted literal: trimmed, and "´" in place of each apostrophe, which the engine
// would take for the end of the text. The data hold "´" in its place too.
inline QString Texto(const QString& digitado) {
    return digitado.trimmed().replace(u'\'', u'´');
}

// A customer's or competitor's number as stored. Unlike the maker's own number it keeps a digit
// that stands in front of a letter.
inline QString NumeroDeCliente(const QString& digitado) {
    return RemoverZerosEsquerda(SomenteAlfanumericos(digitado));
}

// What an empty grid says of the inputs that led to it; without any, that there is nothing at all.
inline QString NadaEncontrado(const QString& oQue, const QStringList& entradas) {
    return oQue +
           (entradas.isEmpty() ? QString()
                               : QStringLiteral(" com ") + entradas.join(QStringLiteral(", "))) +
           u'.';
}

// Adds a condition, which ends in a blank, to a WHERE clause that may still be empty.
inline void Acrescentar(QString& onde, const QString& condicao) {
    onde += (onde.isEmpty() ? QStringLiteral("WHERE ") : QStringLiteral("AND ")) + condicao;
}

}  // namespace consulta
