#include "update/comando.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

QString Preencher(QString modelo, const QString& linha) {
    const QStringList valores = linha.split("<<;>>"_L1);
    for (qsizetype i = valores.size(); i > 0; --i) {
        const QString lugar = QString::number(i) + u'?';
        if (const qsizetype onde = modelo.indexOf(lugar); onde >= 0) {
            modelo.replace(onde, lugar.size(), valores.at(i - 1));
        }
    }
    return modelo;
}

}  // namespace

ComandoAtualizacao LerComandoAtualizacao(QString& ComandoBase, const QString& Linha) {
    using Tipo = ComandoAtualizacao::Tipo;
    if (Linha.trimmed().isEmpty()) {
        return {};
    }
    const QStringView inicio = QStringView(Linha).left(2);
    const QStringView resto = QStringView(Linha).mid(2);
    if (inicio == u"B:") {
        ComandoBase = resto.toString();
        return {};
    }
    if (inicio == u"S:") {
        return {Tipo::Programa, resto.toString()};
    }
    if (inicio == u"R:") {
        return {Tipo::Reinicio, QString()};
    }
    QString comando = inicio == u"E:" ? resto.toString() : Preencher(ComandoBase, Linha);
    if (comando.isEmpty()) {
        return {};
    }
    comando.replace("<<vbCrLf>>"_L1, "\r\n"_L1);
    return {Tipo::Sql, comando};
}
