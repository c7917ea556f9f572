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
             "Descricao = 'ÔNIBUS d´Água'", "[DESCRICAO] >= \"Onibus d´água\""},
            {"ItemComponente = '12'", "ItemComponente >= '  12a'", "Descricao >= 'P'",
             "Descricao = 'Onibus d´água'"});
        row("numbers", {"Quantidade = 2.5", "Quantidade >= 2", "Quantidade >= 2.5"},
            {"Quantidade = 2", "Quantidade >= 3"});
        row("null is not met", {}, {"Kit = 1", "Kit = ''", "Kit >= ''"});
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
        row("another operator", "Kit <> 1", static_cast<int>(Failure::NotSupported));
        row("two conditions", "Kit = 1 AND Kit = 2", static_cast<int>(Failure::NotSupported));
        row("no column", "1 = Kit", static_cast<int>(Failure::NotSupported));
        row("column alone", "Kit", static_cast<int>(Failure::NotSupported));
        row("text as a number", "Descricao >= 5", static_cast<int>(Failure::MixedComparison));
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
