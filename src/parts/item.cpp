#include "parts/item.h"

#include "platform/convert.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int LarguraNumero = 4;

QString AlinharADireita(const QString& texto, int largura) {
    if (texto.size() > largura) {
        throw Erro(Erro::InvalidArgument);
    }
    return texto.rightJustified(largura);
}

QString NumeroDe(QStringView texto) {
    const double numero = convert::Val(texto);
    if (!std::isfinite(numero)) {
        throw Erro(Erro::InvalidArgument);
    }
    return convert::ToTextOrEmpty(numero);
}

// Counted from 1; 0 when the text does not have it.
quint8 PosicaoEm(const QString& texto, const QString& marca) {
    return convert::Narrow<quint8>(texto.indexOf(marca) + 1);
}

}  // namespace

QString FormatarItem(const QString& texto) {
    const QString item = texto.trimmed();
    const bool comLetra = item.size() >= 2 && !(item.back() >= u'0' && item.back() <= u'9');
    if (!comLetra) {
        return AlinharADireita(NumeroDe(item), LarguraNumero);
    }
    return AlinharADireita(NumeroDe(QStringView(item).chopped(1)) + item.back().toLower(),
                           LarguraNumero + 1);
}

QString CriterioDoItem(QString item) {
    return u"ItemComponente = '"_s + item.replace(u'\'', "''"_L1) + u'\'';
}

QString CampoDeSelecao(QChar letra, const QString& valor) {
    return letra + u":"_s + valor + u':' + letra;
}

std::optional<QString> LerCampoDeSelecao(const QString& selecao, QChar letra) {
    const QString abre = letra + u":"_s;
    const quint8 abertura = PosicaoEm(selecao, abre);
    if (abertura == 0) {
        return std::nullopt;
    }
    const qsizetype inicio = abertura - 1 + abre.size();
    const qsizetype fim = PosicaoEm(selecao, u":"_s + letra) - 1;
    if (fim < inicio) {
        throw Erro(Erro::InvalidArgument);
    }
    return selecao.mid(inicio, fim - inicio);
}
