#include "settings/textocifrado.h"
#include "support/cases.h"

struct TestSegredo : Fixture {};

TEST(TestSegredo, RespostasConhecidas) {
    for (const auto& [one] : Cases(TARVO_CASES "/cifrados.data")) {
        const QString& texto = one.lines.at(0);
        const QString& guardado = one.lines.at(1);
        QCOMPARE(CifrarTexto(texto, true), guardado);
        QCOMPARE(CifrarTexto(guardado, false), texto);
        QCOMPARE(CifrarTexto(guardado.toLower(), false), texto);
    }
    QCOMPARE(CifrarTexto({}, true) + CifrarTexto({}, false), QString());
    const QString metade = u"  |\u0001"_s + QChar(0xD800) + u' ';  // of a pair
    QCOMPARE(CifrarTexto(CifrarTexto(metade, true), false), metade);
}

TEST(TestSegredo, Recusas) {
    const QString guardado = CifrarTexto(u"segredo"_s, true);
    QCOMPARE(CifrarTexto(guardado.first(62), false), QString());
    QCOMPARE(ErrorOf([&] { CifrarTexto(guardado.first(63), false); }), 9);
    QCOMPARE(ErrorOf([&] { CifrarTexto(guardado + u'0', false); }), 9);
    for (const QString& outro : {u"+1"_s, u" 1"_s, u"0g"_s, u"à0"_s}) {
        QCOMPARE(ErrorOf([&] { CifrarTexto(outro + guardado.mid(2), false); }), 13);
    }
}
