#include "parts/item.h"
#include "support/test.h"

class TestItem : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storedForm_data() {
        const Table<QString, QString> row("digitado", "guardado");
        row("number", "12", "  12");
        row("letter", "12A", "  12a");
        row("zeros", "007", "   7");
        row("blanks", "  9 ", "   9");
        row("empty", "", "   0");
        row("one letter", "a", "   0");
        row("letters", "abc", "   0c");
        row("sign behind", "12-", "  12-");
        row("accented letter", "12Á", "  12á");
        row("largest", "9999z", "9999z");
    }
    void storedForm() {
        QFETCH(QString, digitado);
        QTEST(FormatarItem(digitado), "guardado");
    }

    void fiveDigitsAreRefused_data() {
        const Table<QString> row("digitado");
        row("number", "12345");
        row("with letter", "12345b");
        row("huge", QString(400, u'9'));
    }
    void fiveDigitsAreRefused() {
        QFETCH(QString, digitado);
        QCOMPARE(ErrorOf([&] { FormatarItem(digitado); }), int(Erro::InvalidArgument));
    }

    void selectionFieldKeepsItsBlanks() {
        const QString selecao = CampoDeSelecao(u'I', u"  12"_s) + CampoDeSelecao(u'J', u"45"_s);
        QCOMPARE(selecao, u"I:  12:IJ:45:J"_s);
        QCOMPARE(LerCampoDeSelecao(selecao, u'I'), u"  12"_s);
        QCOMPARE(LerCampoDeSelecao(selecao, u'J'), u"45"_s);
        QVERIFY(!LerCampoDeSelecao(selecao, u'C'));
    }

    void selectionFieldsThatCannotBeRead_data() {
        const Table<QString, int> row("selecao", "erro");
        row("last place in eight bits", u"C:"_s + QString(252, u'1') + u":C"_s, 0);
        row("closed beyond them", u"C:"_s + QString(253, u'1') + u":C"_s, 6);
        row("opened beyond them", QString(255, u'1') + u"C:1:C"_s, 6);
        row("not closed", "C:1", 5);
        row("closed before it opens", ":CC:1", 5);
    }
    void selectionFieldsThatCannotBeRead() {
        QFETCH(QString, selecao);
        QTEST(ErrorOf([&] { LerCampoDeSelecao(selecao, u'C'); }), "erro");
    }
};

TARVO_TEST(TestItem);
#include "test_item.moc"
