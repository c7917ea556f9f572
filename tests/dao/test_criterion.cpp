#include "platform/dao/dialect.h"
#include "platform/dao/errors.h"
#include "support/testmain.h"

#include <QTest>

using namespace Qt::StringLiterals;
using dao::Failure;
using dao::dialect::Criterion;

namespace {

const QStringList Columns = {u"ItemComponente"_s, u"Descricao"_s, u"Quantidade"_s, u"Kit"_s};
const QVariantList Row = {u"  12"_s, u"Ônibus d´água"_s, 2.5, QVariant()};

bool Matches(const QString& text) {
    return Criterion(text, Columns).Matches([](int column) { return Row.at(column); });
}

}  // namespace

class TestCriterion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void Decides_data() {
        QTest::addColumn<QStringList>("met");
        QTest::addColumn<QStringList>("notMet");
        const auto row = [](const char* name, const QStringList& met, const QStringList& notMet) {
            QTest::newRow(name) << met << notMet;
        };
        row("texts",
            {u"ItemComponente = '  12'"_s, u"itemcomponente >= '  12'"_s,
             u"ItemComponente >= '   7'"_s, u"ItemComponente < '  12a'"_s,
             u"Descricao = 'ÔNIBUS d´Água'"_s, u"Descricao <> \"Onibus d´água\""_s,
             u"[ItemComponente] <= ' 100'"_s},
            {u"ItemComponente = '12'"_s, u"ItemComponente > '  12'"_s, u"Descricao >= 'P'"_s,
             u"Descricao = 'Onibus d´água'"_s});
        row("numbers",
            {u"Quantidade = 2.5"_s, u"Quantidade * 2 = 5"_s, u"Quantidade > -1"_s,
             u"Quantidade = '2.5'"_s, u"Quantidade + 1 = 7 / 2"_s, u"Quantidade Mod 2 = 0"_s},
            {u"Quantidade = 2"_s, u"Quantidade <> 2.5"_s, u"Quantidade = 1 / 0"_s});
        row("null is not met",
            {u"Kit Is Null"_s, u"IsNull(Kit)"_s, u"Not (Kit Is Not Null)"_s,
             u"Kit = 1 Or Quantidade > 2"_s, u"Nz(Kit, 'x') = 'X'"_s, u"Kit & 'a' = 'A'"_s},
            {u"Kit = 1"_s, u"Kit <> 1"_s, u"Not (Kit = 1)"_s, u"Kit In (1, 2)"_s,
             u"Kit Not In (1)"_s, u"Kit Like '*'"_s, u"Kit = Null"_s, u"Kit Between 1 And 2"_s,
             u"Kit = 1 And Quantidade > 2"_s});
        row("predicates",
            {u"Descricao Like 'ôni*'"_s, u"Descricao Not Like '*x*'"_s,
             u"ItemComponente In ('a', '  12')"_s, u"Quantidade Between 2 And 3"_s,
             u"Quantidade Not Between 3 And 4"_s, u"Left(Descricao, 3) = 'ÔNI'"_s,
             u"IIF(Quantidade > 2, 'a', 'b') = 'A'"_s, u"True Xor False"_s,
             u"#1/1/2024# = DateSerial(2024, 1, 1)"_s},
            {u"Descricao Like 'oni*'"_s, u"ItemComponente Not In ('  12')"_s, u"False"_s,
             u"Quantidade > 3 Eqv Quantidade > 2"_s});
    }
    void Decides() {
        QFETCH(QStringList, met);
        QFETCH(QStringList, notMet);
        for (const QString& text : met + notMet) {
            QVERIFY2(Matches(text) == met.contains(text), qPrintable(text));
        }
    }

    void Refuses_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        QTest::newRow("unknown column") << u"Foo = 1"_s << static_cast<int>(Failure::UnknownColumn);
        QTest::newRow("nothing") << u""_s << static_cast<int>(Failure::SyntaxError);
        QTest::newRow("rest") << u"Kit = 1 1"_s << static_cast<int>(Failure::SyntaxError);
        QTest::newRow("open text") << u"Kit = 'a"_s << static_cast<int>(Failure::SyntaxError);
        QTest::newRow("pattern") << u"Descricao Like '[a'"_s
                                 << static_cast<int>(Failure::BadPattern);
        QTest::newRow("function") << u"Foo(1) = 1"_s << static_cast<int>(Failure::UnknownFunction);
        QTest::newRow("subquery") << u"Kit In (SELECT 1)"_s
                                  << static_cast<int>(Failure::NotSupported);
        QTest::newRow("aggregate") << u"Max(Kit) = 1"_s << static_cast<int>(Failure::NotSupported);
        QTest::newRow("text as a number")
            << u"Descricao > 5"_s << static_cast<int>(Erro::TypeMismatch);
    }
    void Refuses() {
        QFETCH(QString, text);
        QFETCH(int, number);
        try {
            Matches(text);
            QFAIL("accepted");
        } catch (const Erro& erro) {
            QCOMPARE(erro.Number(), number);
        }
    }
};

TARVO_TEST(TestCriterion);
#include "test_criterion.moc"
