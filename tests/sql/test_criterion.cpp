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

struct TestCriterion : Fixture {};

TEST(TestCriterion, Decides) {
    for (const auto& [met, notMet] : Each<QStringList, QStringList>{
             {"texts",
              List("ItemComponente = '  12'", "itemcomponente >= '  12'",
                   "ItemComponente >= '   7'", "Descricao = 'ÔNIBUS d´Água'",
                   "[DESCRICAO] >= \"Onibus d´água\""),
              List("ItemComponente = '12'", "ItemComponente >= '  12a'", "Descricao >= 'P'",
                   "Descricao = 'Onibus d´água'")},
             {"numbers", List("Quantidade = 2.5", "Quantidade >= 2", "Quantidade >= 2.5"),
              List("Quantidade = 2", "Quantidade >= 3")},
             {"null is not met", List(), List("Kit = 1", "Kit = ''", "Kit >= ''")},
         }) {
        for (const QString& text : met + notMet) {
            QVERIFY2(Matches(text) == met.contains(text), qPrintable(text));
        }
    }
}

TEST(TestCriterion, Refuses) {
    for (const auto& [text, number] : Each<QString, int>{
             {"unknown column", "Foo = 1", static_cast<int>(Failure::UnknownColumn)},
             {"nothing", "", static_cast<int>(Failure::SyntaxError)},
             {"rest", "Kit = 1 1", static_cast<int>(Failure::SyntaxError)},
             {"open text", "Kit = 'a", static_cast<int>(Failure::SyntaxError)},
             {"another operator", "Kit <> 1", static_cast<int>(Failure::NotSupported)},
             {"two conditions", "Kit = 1 AND Kit = 2", static_cast<int>(Failure::NotSupported)},
             {"no column", "1 = Kit", static_cast<int>(Failure::NotSupported)},
             {"column alone", "Kit", static_cast<int>(Failure::NotSupported)},
             {"text as a number", "Descricao >= 5", static_cast<int>(Failure::MixedComparison)},
         }) {
        try {
            Matches(text);
            QFAIL("accepted");
        } catch (const Erro& erro) {
            QCOMPARE(erro.Number(), number);
        }
    }
}
