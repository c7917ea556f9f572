#include "parts/item.h"
#include "support/cases.h"

struct TestItem : Fixture {};

// Each line of items.data is what is typed and what is stored of it, or that alone which is
// refused: more than four digits.
TEST(TestItem, storedForm) {
    for (const auto& [cells] : Lines(TARVO_CASES "/items.data")) {
        QString item;
        const auto formatar = [&] { item = FormatarItem(cells.at(0)); };
        QCOMPARE(ErrorOf(formatar), cells.size() == 1 ? int(Erro::InvalidArgument) : 0);
        QCOMPARE(item, cells.value(1));
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
