#include "support/test.h"

#include <QRegularExpression>

struct DesenhosTest : Fixture {};

// A misspelt class would paint in black; a colour written into a drawing would stay behind when
// the palette changes.
TEST(DesenhosTest, Classes) {
    const auto ler = [](const QString& nome) {
        QFile arquivo(u":/artwork/"_s + nome);
        return arquivo.open(QIODevice::ReadOnly) ? QString::fromUtf8(arquivo.readAll()) : QString();
    };
    const QString folhas = ler(u"estilo.css"_s) + ler(u"repouso.css"_s) + ler(u"aceso.css"_s);
    static const QRegularExpression classes(u"class=\"([^\"]*)\""_s);
    static const QRegularExpression pintado(u"\\s(fill|stroke|style)="_s);
    for (const QString& desenho : QDir(u":/artwork"_s).entryList({u"*.svg"_s})) {
        const QString texto = ler(desenho);
        QVERIFY2(texto.contains(classes) && !texto.contains(pintado), qPrintable(desenho));
        for (const auto& achado : classes.globalMatch(texto)) {
            for (const QString& classe : achado.captured(1).split(u' ', Qt::SkipEmptyParts)) {
                const QRegularExpression regra(u"\\.%1\\s*\\{"_s.arg(classe));
                QVERIFY2(folhas.contains(regra), qPrintable(desenho + u": "_s + classe));
            }
        }
    }
}
