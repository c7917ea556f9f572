#include "platform/sql/dialect.h"
#include "support/test.h"

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
    const QString all = sys::ReadText(QStringLiteral(TARVO_SQL_CASES "/criterios.data"));
    for (const QString& line : all.split(u'\n', Qt::SkipEmptyParts)) {
        const int error = line.section(u' ', 0, 0).toInt();
        const QString text = error > 0 ? line.section(u' ', 1) : line.sliced(1);
        bool met = false;
        const int said = ErrorOf([&] { met = Matches(text); });
        QVERIFY2(said == error && met == line.startsWith(u'+'), qPrintable(line));
    }
}
