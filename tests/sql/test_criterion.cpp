#include "platform/sql/dialect.h"
#include "support/cases.h"

using sql::Criterion;

namespace {

const QStringList Columns = {u"ItemComponente"_s, u"Descricao"_s, u"Quantidade"_s, u"Kit"_s};
const QVariantList Row = {u"  12"_s, u"Ônibus d´água"_s, 2.5, QVariant()};

bool Matches(const QString& text) {
    return Criterion(text, Columns).Matches([](int column) { return Row.at(column); });
}

}  // namespace

struct TestCriterion : Fixture {};

// Each line of criterios.data is a condition, behind + if the row meets it, - if it doesn't, or the
// number of the error with which it is refused.
TEST(TestCriterion, DecidesOrRefuses) {
    for (const auto& [cells] : Lines(TARVO_SQL_CASES "/criterios.data")) {
        const QString& line = cells.first();
        const int error = line.section(u' ', 0, 0).toInt();
        const QString text = error > 0 ? line.section(u' ', 1) : line.sliced(1);
        bool met = false;
        const int said = ErrorOf([&] { met = Matches(text); });
        QVERIFY2(said == error && met == line.startsWith(u'+'), qPrintable(line));
    }
}
