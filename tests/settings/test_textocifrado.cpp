#include "settings/textocifrado.h"
#include "support/test.h"

struct TestSegredo : Fixture {};

// Made once by another implementation of the cipher, written from its description alone.
// Whatever moved a byte here would cost every user the password that he has stored.
TEST(TestSegredo, RespostasConhecidas) {
    for (const auto& [texto, guardado] : Each<QString, QString>{
             {"empty", "", ""},
             {"plain", "s3nha", "5D613617413AB274CE702C498A2893375B7262A05FE7B68DA2BAB649E76B8F4F"},
             {"two blocks, accents", "maria.conceição",
              "4CBBEE86CA94BD658526FC1F337FD9A6A4F65DBF5FCE1646E9BDD3F3A15CA730"
              "1F4146B4C6CF5142DB369D377A44D346051BBE5497FF27E2CC7BA8E9C1120B6B"},
             {"domain", "oficina\\joão",
              "0BDA3CC644E725F858FE44E70AFE81FE0E561D1DF708FBFE05732E08D2758538"},
             {"other scripts", "Ω€",
              "EE74E899D5EC3AFFD067753E6EA7C744B79531362E523F3F3619DDFBC38C0365"},
         }) {
        QCOMPARE(CifrarTexto(texto, true), guardado);
        QCOMPARE(CifrarTexto(guardado, false), texto);
        QCOMPARE(CifrarTexto(guardado.toLower(), false), texto);
    }
}

TEST(TestSegredo, VaiEVolta) {
    // Whole blocks and one letter more, blanks, a pair and half of one.
    for (const auto& [texto] : Each<QString>{QString(14, u'a'), QString(15, u'a'), u"  |\u0001 "_s,
                                             u"\U0001F511"_s + QChar(0xD800)}) {
        const QString guardado = CifrarTexto(texto, true);
        QCOMPARE(guardado.size(), texto.size() > 14 ? 128 : 64);
        QCOMPARE(CifrarTexto(guardado, false), texto);
    }
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
