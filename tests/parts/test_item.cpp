#include "parts/item.h"
#include "support/test.h"

struct TestItem : Fixture {};

// An item with more than four digits is refused.
TEST(TestItem, storedForm) {
    for (const auto& [digitado, guardado] : Each<QString, QString>{
             {"letter", "12A", "  12a"},
             {"zeros", "007", "   7"},
             {"blanks", "  9 ", "   9"},
             {"empty", "", "   0"},
             {"one letter", "a", "   0"},
             {"letters", "ab", "   0b"},
             {"sign behind", "12-", "  12-"},
             {"largest", "9999z", "9999z"},
             {"five digits", "12345", {}},
             {"five digits and a letter", "12345b", {}},
             {"beyond a number", QString(400, u'9'), {}},
         }) {
        QString item;
        const auto formatar = [&] { item = FormatarItem(digitado); };
        QCOMPARE(ErrorOf(formatar), guardado.isEmpty() ? int(Erro::InvalidArgument) : 0);
        QCOMPARE(item, guardado);
    }
}

TEST(TestItem, selectionFieldKeepsItsBlanks) {
    const QString selecao = CampoDeSelecao(u'I', u"  12"_s) + CampoDeSelecao(u'J', u"45"_s);
    QCOMPARE(selecao, u"I:  12:IJ:45:J"_s);
    QCOMPARE(LerCampoDeSelecao(selecao, u'I'), u"  12"_s);
    QCOMPARE(LerCampoDeSelecao(selecao, u'J'), u"45"_s);
    QVERIFY(!LerCampoDeSelecao(selecao, u'C'));
}

TEST(TestItem, selectionFieldsThatCannotBeRead) {
    for (const auto& [selecao, erro] : Each<QString, int>{
             {"last place in eight bits", u"C:"_s + QString(252, u'1') + u":C"_s, 0},
             {"closed beyond them", u"C:"_s + QString(253, u'1') + u":C"_s, 6},
             {"opened beyond them", QString(255, u'1') + u"C:1:C"_s, 6},
             {"of no length", "C::C", 0},
             {"not closed", "C:1", 5},
             {"closed before it opens", ":CC:1", 5},
         }) {
        QCOMPARE(ErrorOf([&] { LerCampoDeSelecao(selecao, u'C'); }), erro);
    }
}
