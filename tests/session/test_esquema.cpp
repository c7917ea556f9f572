#include "platform/dao/schema.h"
#include "platform/dao/statement.h"
#include "session/esquema.h"
#include "support/cases.h"
#include "support/catalogo.h"

#include <QRegularExpression>

struct TestEsquema : Fixture {
    CatalogoDeTeste catalogo_;
};

TEST(TestEsquema, ReplacesNothing) {
    QCOMPARE(ErrorOf([] { CriarCatalogo(gCaminho + u"Tarvo.mdb"_s, u"outra"_s); }), 3012);
}

// The searches run on every keystroke: no table may be read from end to end and nothing sorted
// that an index has in order.
TEST(TestEsquema, AnswersFromIndexes) {
    const QRegularExpression slow(
        u"^SCAN (?!.* INDEX |CODIGOCLIENTECONCORRENTE$)|TEMP B-TREE|^MATERIALIZE"_s);
    for (const auto& [query] : Cases(TARVO_CASES "/indices.data")) {
        dao::Connection& connection = *gDB->GetConnection();
        const auto translation = dao::Prepare(connection, query.lines.join(u' '));
        QCOMPARE(translation.statements.size(), 1);
        dao::Statement plan(connection, "EXPLAIN QUERY PLAN " + translation.statements.first());
        QStringList steps;
        while (plan.Step()) {
            steps += plan.Column(3).toString();
        }
        QVERIFY(!steps.isEmpty());
        QCOMPARE(steps.filter(slow), QStringList());
    }
}

TEST(TestEsquema, KeepsSingleRows) {
    for (const auto& [table, values, column, afterDelete] :
         Each<QString, QString, QString, QString>{
             {"selection", "CODIGOCLIENTECONCORRENTE", "9", "CodigoClienteConcorrente", "-5"},
             {"settings", "UMREGISTRO", "1, Null, Null, 0, 'u', 5, 4", "Versao", "5"},
             {"lock", "CONTROLETRAN", "3", "a", "0"},
         }) {
        const QString insert = Inserir(table, {values}).first();
        const OutroComputador script;
        QCOMPARE(ErrorOf([&] { script.banco->Execute(insert); }), 3022);
        // As a script would replace the row; what fails there is passed over.
        script.banco->Execute(u"DELETE FROM "_s + table);
        ErrorOf([&] { script.banco->Execute(insert); });
        const auto rows = script.banco->OpenRecordset(u"SELECT %1 FROM %2"_s.arg(column, table));
        QCOMPARE(rows->Fields(0).Value().toString(), afterDelete);
        rows->MoveNext();
        QVERIFY(rows->Eof());
    }
}
