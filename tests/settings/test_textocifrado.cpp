#include "settings/textocifrado.h"
#include "support/test.h"

struct TestSegredo : Fixture {};

// Made once by another implementation of the cipher, written from its description alone.
// Whatever moved a byte here would cost every user the password that he has stored.
TEST(TestSegredo, RespostasConhecidas) {
    for (const auto& [texto, guardado] : Each<QString, QString>{
             {"empty", "", ""},
             {"two blocks, accents", "maria.conceição",
              "4CBBEE86CA94BD658526FC1F337FD9A6A4F65DBF5FCE1646E9BDD3F3A15CA730"
              "1F4146B4C6CF5142DB369D377A44D346051BBE5497FF27E2CC7BA8E9C1120B6B"},
             {"other scripts", "Ω€",
              "EE74E899D5EC3AFFD067753E6EA7C744B79531362E523F3F3619DDFBC38C0365"},
         }) {
        QCOMPARE(CifrarTexto(texto, true), guardado);
        QCOMPARE(CifrarTexto(guardado, false), texto);
        QCOMPARE(CifrarTexto(guardado.toLower(), false), texto);
    }
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
