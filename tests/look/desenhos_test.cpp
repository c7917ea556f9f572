#include "support/test.h"

#include <QRegularExpression>
#include <QSet>

namespace {

QString Ler(const QString& nome) {
    QFile arquivo(u":/artwork/"_s + nome);
    return arquivo.open(QIODevice::ReadOnly) ? QString::fromUtf8(arquivo.readAll()) : QString();
}

// The words of every first capture.
QSet<QString> Palavras(const QString& texto, const QString& padrao) {
    QSet<QString> palavras;
    for (auto achados = QRegularExpression(padrao).globalMatch(texto); achados.hasNext();) {
        for (const QString& palavra : achados.next().captured(1).split(u' ', Qt::SkipEmptyParts)) {
            palavras.insert(palavra);
        }
    }
    return palavras;
}

}  // namespace

struct DesenhosTest : Fixture {};

// A misspelt class would paint in black; a colour written into a drawing would stay behind when
// the palette changes.
TEST(DesenhosTest, Classes) {
    QSet<QString> regras;
    for (const QString& folha : {u"estilo"_s, u"repouso"_s, u"aceso"_s}) {
        regras |= Palavras(Ler(folha + u".css"_s), u"\\.([a-z][\\w-]*)\\s*\\{"_s);
    }
    for (const QString& desenho : QDir(u":/artwork"_s).entryList({u"*.svg"_s})) {
        const QString texto = Ler(desenho);
        const QSet<QString> usadas = Palavras(texto, u"class=\"([^\"]*)\""_s);
        QVERIFY2(!usadas.isEmpty(), qPrintable(desenho));
        const QSet<QString> faltam = usadas - regras;
        QVERIFY2(faltam.isEmpty(), qPrintable(desenho + u": "_s + faltam.values().join(u' ')));
        static const QRegularExpression pintado(u"\\s(fill|stroke|style)="_s);
        QVERIFY2(!texto.contains(pintado), qPrintable(desenho));
    }
}
