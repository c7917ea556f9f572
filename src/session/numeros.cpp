#include "session/numeros.h"

namespace {

bool EhLetra(QChar caractere) {
    return caractere >= u'A' && caractere <= u'Z';
}

bool EhAlgarismo(QChar caractere) {
    return caractere >= u'0' && caractere <= u'9';
}

}  // namespace

// By character code, in every locale: a letter with an accent is none of the twenty-six and goes.
QString SomenteAlfanumericos(const QString& texto) {
    QString resultado;
    for (QChar caractere : texto) {
        if (caractere >= u'a' && caractere <= u'z') {
            caractere = QChar(caractere.unicode() - u'a' + u'A');
        }
        if (EhLetra(caractere) || EhAlgarismo(caractere)) {
            resultado += caractere;
        }
    }
    return resultado;
}

QString RemoverZerosEsquerda(const QString& texto) {
    qsizetype inicio = 0;
    while (inicio < texto.size() && texto.at(inicio) == u'0') {
        ++inicio;
    }
    return texto.mid(inicio);
}

// Users write some numbers with a digit before the letter that the catalogue's number begins with.
QString NormalizarNumero(const QString& texto) {
    const QString numero = RemoverZerosEsquerda(SomenteAlfanumericos(texto));
    const QString semPrimeiro = numero.mid(1);
    const bool algarismoDeMais =
        !semPrimeiro.isEmpty() && EhLetra(semPrimeiro.front()) && EhAlgarismo(numero.front());
    return algarismoDeMais ? semPrimeiro : numero;
}
