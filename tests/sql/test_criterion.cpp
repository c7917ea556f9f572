#include "platform/sql/dialect.h"
#include "platform/sql/errors.h"
#include "support/test.h"

using sql::Criterion;
using sql::Failure;

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
        const Table<QStringList, QStringList> row("met", "notMet");
        row("texts",
            {"ItemComponente = '  12'", "itemcomponente >= '  12'", "ItemComponente >= '   7'",
             "ItemComponente < '  12a'", "Descricao = 'ÔNIBUS d´Água'",
             "Descricao <> \"Onibus d´água\"", "[ItemComponente] <= ' 100'"},
            {"ItemComponente = '12'", "ItemComponente > '  12'", "Descricao >= 'P'",
             "Descricao = 'Onibus d´água'"});
        row("numbers",
            {"Quantidade = 2.5", "Quantidade * 2 = 5", "Quantidade > -1", "Quantidade = '2.5'",
             "Quantidade + 1 = 7 / 2", "Quantidade Mod 2 = 0"},
            {"Quantidade = 2", "Quantidade <> 2.5", "Quantidade = 1 / 0"});
        row("null is not met",
            {"Kit Is Null", "IsNull(Kit)", "Not (Kit Is Not Null)", "Kit = 1 Or Quantidade > 2",
             "Nz(Kit, 'x') = 'X'", "Kit & 'a' = 'A'"},
            {"Kit = 1", "Kit <> 1", "Not (Kit = 1)", "Kit In (1, 2)", "Kit Not In (1)",
             "Kit Like '*'", "Kit = Null", "Kit Between 1 And 2", "Kit = 1 And Quantidade > 2"});
        row("predicates",
            {"Descricao Like 'ôni*'", "Descricao Not Like '*x*'", "ItemComponente In ('a', '  12')",
             "Quantidade Between 2 And 3", "Quantidade Not Between 3 And 4",
             "Left(Descricao, 3) = 'ÔNI'", "IIF(Quantidade > 2, 'a', 'b') = 'A'", "True Xor False",
             "#1/1/2024# = DateSerial(2024, 1, 1)"},
            {"Descricao Like 'oni*'", "ItemComponente Not In ('  12')", "False",
             "Quantidade > 3 Eqv Quantidade > 2"});
    }
    void Decides() {
        QFETCH(QStringList, met);
        QFETCH(QStringList, notMet);
        for (const QString& text : met + notMet) {
            QVERIFY2(Matches(text) == met.contains(text), qPrintable(text));
        }
    }

    void Refuses_data() {
        const Table<QString, int> row("text", "number");
        row("unknown column", "Foo = 1", static_cast<int>(Failure::UnknownColumn));
        row("nothing", "", static_cast<int>(Failure::SyntaxError));
        row("rest", "Kit = 1 1", static_cast<int>(Failure::SyntaxError));
        row("open text", "Kit = 'a", static_cast<int>(Failure::SyntaxError));
        row("pattern", "Descricao Like '[a'", static_cast<int>(Failure::BadPattern));
        row("function", "Foo(1) = 1", static_cast<int>(Failure::UnknownFunction));
        row("subquery", "Kit In (SELECT 1)", static_cast<int>(Failure::NotSupported));
        row("aggregate", "Max(Kit) = 1", static_cast<int>(Failure::NotSupported));
        row("text as a number", "Descricao > 5", static_cast<int>(Erro::TypeMismatch));
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
