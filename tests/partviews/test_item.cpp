#include "partviews/item.h"
#include "platform/erro.h"
#include "support/database.h"
#include "support/testmain.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestItem : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storedForm_data() {
        QTest::addColumn<QString>("digitado");
        QTest::addColumn<QString>("guardado");
        QTest::newRow("number") << u"12"_s << u"  12"_s;
        QTest::newRow("letter") << u"12A"_s << u"  12a"_s;
        QTest::newRow("zeros") << u"007"_s << u"   7"_s;
        QTest::newRow("blanks") << u"  9 "_s << u"   9"_s;
        QTest::newRow("empty") << u""_s << u"   0"_s;
        QTest::newRow("one letter") << u"a"_s << u"   0"_s;
        QTest::newRow("letters") << u"abc"_s << u"   0c"_s;
        QTest::newRow("sign behind") << u"12-"_s << u"  12-"_s;
        QTest::newRow("accented letter") << u"12Á"_s << u"  12á"_s;
        QTest::newRow("largest") << u"9999z"_s << u"9999z"_s;
    }

    void storedForm() {
        QFETCH(QString, digitado);
        QTEST(FormatarItem(digitado), "guardado");
    }

    void fiveDigitsAreRefused_data() {
        QTest::addColumn<QString>("digitado");
        QTest::newRow("number") << u"12345"_s;
        QTest::newRow("with letter") << u"12345b"_s;
        QTest::newRow("huge") << QString(400, u'9');
    }

    void fiveDigitsAreRefused() {
        QFETCH(QString, digitado);
        try {
            FormatarItem(digitado);
            QFAIL("no error");
        } catch (const Erro& erro) {
            QCOMPARE(erro.Number(), int(Erro::InvalidArgument));
        }
    }

    void selectionFieldKeepsItsBlanks() {
        const QString selecao = CampoDeSelecao(u'I', u"  12"_s) + CampoDeSelecao(u'J', u"45"_s);
        QCOMPARE(selecao, u"I:  12:IJ:45:J"_s);
        QCOMPARE(LerCampoDeSelecao(selecao, u'I'), u"  12"_s);
        QCOMPARE(LerCampoDeSelecao(selecao, u'J'), u"45"_s);
        QVERIFY(!LerCampoDeSelecao(selecao, u'C'));
    }

    void selectionFieldsThatCannotBeRead_data() {
        QTest::addColumn<QString>("selecao");
        QTest::addColumn<int>("erro");
        QTest::newRow("last place in eight bits") << u"C:"_s + QString(252, u'1') + u":C"_s << 0;
        QTest::newRow("closed beyond them") << u"C:"_s + QString(253, u'1') + u":C"_s << 6;
        QTest::newRow("opened beyond them") << QString(255, u'1') + u"C:1:C"_s << 6;
        QTest::newRow("not closed") << u"C:1"_s << 5;
        QTest::newRow("closed before it opens") << u":CC:1"_s << 5;
    }

    void selectionFieldsThatCannotBeRead() {
        QFETCH(QString, selecao);
        QTEST(testing_support::ErrorOf([&] { LerCampoDeSelecao(selecao, u'C'); }), "erro");
    }
};

TARVO_TEST(TestItem);

#include "test_item.moc"
