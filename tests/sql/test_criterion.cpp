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
    for (const auto& [text, failure] : Each<QString, Failure>{
             {"unknown column", "Foo = 1", Failure::UnknownColumn},
             {"nothing", "", Failure::SyntaxError},
             {"rest", "Kit = 1 1", Failure::SyntaxError},
             {"open text", "Kit = 'a", Failure::SyntaxError},
             {"another operator", "Kit <> 1", Failure::NotSupported},
             {"two conditions", "Kit = 1 AND Kit = 2", Failure::NotSupported},
             {"no column", "1 = Kit", Failure::NotSupported},
             {"column alone", "Kit", Failure::NotSupported},
             {"text as a number", "Descricao >= 5", Failure::MixedComparison},
         }) {
        QCOMPARE(ErrorOf([&, given = text] { Matches(given); }), int(failure));
    }
}
