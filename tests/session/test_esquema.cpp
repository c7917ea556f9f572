#include "platform/dao/schema.h"
#include "platform/dao/statement.h"
#include "session/esquema.h"
#include "support/catalogo.h"

struct TestEsquema : Fixture {
    CatalogoDeTeste catalogo_;
};

TEST(TestEsquema, ReplacesNothing) {
    QCOMPARE(ErrorOf([] { CriarCatalogo(gCaminho + u"Tarvo.mdb"_s, u"outra"_s); }), 3012);
}

// The searches run on every keystroke: no table may be read from end to end and nothing sorted
// that an index has in order.
TEST(TestEsquema, AnswersFromIndexes) {
    Each<QString> row;
    row("all kinds",
        "SELECT NumeroTarvoPeca AS N, DescricaoPeca, CodigoPeca FROM PECA UNION ALL "
        "SELECT NumeroTarvoComponente, DescricaoComponente, CodigoComponente FROM COMPONENTE "
        "ORDER BY 1");
    row("number", "SELECT NumeroTarvoPeca FROM PECA WHERE NumeroTarvoPeca LIKE '12*' ORDER BY 1");
    row("description",
        "SELECT NumeroTarvoJogoReparo, DescricaoJogoReparo FROM JOGOREPARO WHERE "
        "DescricaoJogoReparo LIKE 'VAL*' ORDER BY 2");
    const QString reference =
        u"SELECT NumeroTarvoPeca, R.NumeroClienteConcorrente FROM PECA LEFT JOIN "
        "REFERENCIACRUZADA1 AS R ON PECA.NumeroTarvoPeca = R.NumeroTarvo "_s;
    row("cross reference shown", reference + u"ORDER BY 1"_s);
    row("cross reference searched",
        reference + u"WHERE R.NumeroClienteConcorrente LIKE 'A7*' ORDER BY 2"_s);
    row("component list",
        "SELECT L.ItemComponente, Min(J.CodigoJogoReparo) AS N FROM (PECA_COMPONENTE AS L LEFT "
        "JOIN PECA_COMPONENTE_JOGOREPARO AS J ON L.CodigoPeca = J.CodigoPeca AND "
        "L.ItemComponente = J.ItemComponente) INNER JOIN COMPONENTE ON L.CodigoComponente = "
        "COMPONENTE.CodigoComponente WHERE L.CodigoPeca = 3 GROUP BY L.ItemComponente ORDER BY "
        "1");
    row("vehicles",
        "SELECT DescricaoVeiculo, DescricaoClienteConcorrente FROM VEICULO AS V INNER JOIN "
        "CLIENTECONCORRENTE AS C ON V.CodigoClienteConcorrente = C.CodigoClienteConcorrente "
        "WHERE V.CodigoClienteConcorrente = 3 ORDER BY 1");
    row("figure",
        "SELECT ArquivoFigura, ItemComponente FROM FIGURADETALHADA1 WHERE CodigoPeca = 4 ORDER "
        "BY CodigoFiguraDetalhada");
    row("gallery", "SELECT DescricaoFotoPecaPesquisa FROM FOTOPECAPESQUISA ORDER BY 1");
    const QString used = u"SELECT %2 FROM %1 WHERE %2 = 1"_s;
    row("component used", used.arg(u"PECA_COMPONENTE"_s, u"CodigoComponente"_s));
    row("kit used", used.arg(u"PECA_COMPONENTE_JOGOREPARO"_s, u"CodigoJogoReparo"_s));
    row("vehicle used", used.arg(u"VEICULO_PECA"_s, u"CodigoVeiculo"_s));
    row("vehicles of a part", used.arg(u"VEICULO_PECA"_s, u"CodigoPeca"_s));
    row("photo used", used.arg(u"PECA"_s, u"CodigoFotoPecaPesquisa"_s));
    for (const auto& [sql] : row) {
        dao::Connection& connection = *gDB->GetConnection();
        const auto translation = dao::Prepare(connection, sql);
        QCOMPARE(translation.statements.size(), 1);
        dao::Statement plan(connection, "EXPLAIN QUERY PLAN " + translation.statements.first());
        int steps = 0;
        while (plan.Step()) {
            const QString step = plan.Column(3).toString();
            ++steps;
            const bool whole = step.startsWith("SCAN "_L1) && !step.contains(" INDEX "_L1) &&
                               step != "SCAN CODIGOCLIENTECONCORRENTE"_L1;
            QVERIFY2(
                !whole && !step.contains("TEMP B-TREE"_L1) && !step.startsWith("MATERIALIZE"_L1),
                qPrintable(step));
        }
        QVERIFY(steps > 0);
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
