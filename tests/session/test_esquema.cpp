#include "platform/dao/dao.h"
#include "platform/dao/schema.h"
#include "platform/dao/statement.h"
#include "session/esquema.h"
#include "session/global.h"
#include "support/catalogo.h"
#include "support/database.h"
#include "support/test.h"

class TestEsquema : public QObject {
    Q_OBJECT

    CatalogoDeTeste catalogo_;

    static QStringList Rows(const AnyText& sql) {
        QStringList rows;
        ReadRows(*gDB, sql, rows);
        return rows;
    }

private Q_SLOTS:
    void ReplacesNothing() {
        QCOMPARE(ErrorOf([] { CriarCatalogo(gCaminho + u"Tarvo.mdb"_s, u"outra"_s); }), 3012);
    }

    // The searches run on every keystroke: no table may be read from end to end and nothing sorted
    // that an index has in order.
    void AnswersFromIndexes_data() {
        const Table<QString> row("sql");
        row("all kinds",
            "SELECT PECA.NumeroTarvoPECA AS N, PECA.DescricaoPECA AS D, '' AS C, CodigoPECA AS K "
            "FROM PECA UNION ALL SELECT COMPONENTE.NumeroTarvoCOMPONENTE AS N, "
            "COMPONENTE.DescricaoCOMPONENTE AS D, '' AS C, CodigoCOMPONENTE AS K FROM COMPONENTE "
            "ORDER BY 1");
        row("number",
            "SELECT NumeroTarvoPeca, DescricaoPeca, CodigoPeca FROM PECA WHERE NumeroTarvoPeca "
            "LIKE '12*' ORDER BY 1");
        row("description",
            "SELECT NumeroTarvoJogoReparo, DescricaoJogoReparo FROM JOGOREPARO WHERE "
            "DescricaoJogoReparo LIKE 'VAL*' ORDER BY 2");
        row("cross reference shown",
            "SELECT NumeroTarvoPeca, REFERENCIACRUZADA1.NumeroClienteConcorrente FROM PECA LEFT "
            "JOIN REFERENCIACRUZADA1 ON PECA.NumeroTarvoPeca = REFERENCIACRUZADA1.NumeroTarvo "
            "ORDER BY 1");
        row("cross reference searched",
            "SELECT NumeroTarvoComponente, REFERENCIACRUZADA1.NumeroClienteConcorrente FROM "
            "COMPONENTE LEFT JOIN REFERENCIACRUZADA1 ON COMPONENTE.NumeroTarvoComponente = "
            "REFERENCIACRUZADA1.NumeroTarvo WHERE REFERENCIACRUZADA1.NumeroClienteConcorrente LIKE "
            "'A7*' ORDER BY 2");
        row("component list",
            "SELECT PECA_COMPONENTE.ItemComponente, "
            "Min(REFERENCIACRUZADA1.NumeroClienteConcorrente) AS N FROM ((PECA_COMPONENTE LEFT "
            "JOIN PECA_COMPONENTE_JOGOREPARO ON PECA_COMPONENTE.CodigoPeca = "
            "PECA_COMPONENTE_JOGOREPARO.CodigoPeca AND PECA_COMPONENTE.ItemComponente = "
            "PECA_COMPONENTE_JOGOREPARO.ItemComponente) INNER JOIN COMPONENTE ON "
            "PECA_COMPONENTE.CodigoComponente = COMPONENTE.CodigoComponente) LEFT JOIN "
            "REFERENCIACRUZADA1 ON COMPONENTE.NumeroTarvoComponente = "
            "REFERENCIACRUZADA1.NumeroTarvo WHERE PECA_COMPONENTE.CodigoPeca = 3 GROUP BY "
            "PECA_COMPONENTE.ItemComponente ORDER BY 1");
        row("vehicles",
            "SELECT VEICULO.DescricaoVeiculo, CLIENTECONCORRENTE.DescricaoClienteConcorrente FROM "
            "VEICULO INNER JOIN CLIENTECONCORRENTE ON VEICULO.CodigoClienteConcorrente = "
            "CLIENTECONCORRENTE.CodigoClienteConcorrente WHERE VEICULO.CodigoClienteConcorrente = "
            "3 ORDER BY 1");
        row("figure",
            "SELECT ArquivoFigura, ItemComponente FROM FIGURADETALHADA1 WHERE CodigoPeca = 4 ORDER "
            "BY CodigoFiguraDetalhada");
        row("gallery", "SELECT DescricaoFotoPecaPesquisa FROM FOTOPECAPESQUISA ORDER BY 1");
        row("component in use",
            "SELECT CodigoComponente FROM PECA_COMPONENTE WHERE CodigoComponente = 1");
        row("kit in use",
            "SELECT CodigoJogoReparo FROM PECA_COMPONENTE_JOGOREPARO WHERE CodigoJogoReparo = 1");
        row("vehicle in use", "SELECT CodigoVeiculo FROM VEICULO_PECA WHERE CodigoVeiculo = 1");
        row("vehicles of a part", "SELECT CodigoVeiculo FROM VEICULO_PECA WHERE CodigoPeca = 1");
        row("picture in use",
            "SELECT CodigoFotoPecaPesquisa FROM PECA WHERE CodigoFotoPecaPesquisa = 1");
    }
    void AnswersFromIndexes() {
        QFETCH(QString, sql);
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

    void ShowsTheChosenCustomersNumbers() {
        catalogo_.Executar(Inserir("REFERENCIACRUZADA", {"1, 'A1', 'X1'", "2, 'A1', 'Y1'"}));
        for (const auto& [customer, numbers] :
             {std::pair(u"-5"_s, List()), std::pair(u"2"_s, List("Y1")),
              std::pair(u"-5"_s, List())}) {
            gDB->Execute(u"UPDATE CODIGOCLIENTECONCORRENTE SET CodigoClienteConcorrente = "_s +
                         customer);
            QCOMPARE(Rows("SELECT NumeroClienteConcorrente FROM REFERENCIACRUZADA1"), numbers);
        }
    }

    void SharesAFigureAmongParts() {
        catalogo_.Executar(
            Inserir("PECA", {"1, 'A', 'A', NULL, NULL, 7", "2, 'B', 'B', NULL, NULL, 7",
                             "3, 'C', 'C', NULL, NULL, NULL"}) +
            Inserir("FIGURA", {"7, 'f7.bmp'", "8, 'f8.bmp'"}) +
            Inserir("FIGURADETALHADA",
                    {"7, 2, '   2', 30, 40", "7, 1, '   1', 10, 20", "8, 1, '   9', 0, 0"}));
        const QStringList markers = List("1|   1|f7.bmp|10|20", "2|   2|f7.bmp|30|40");
        for (const auto& [part, rows] :
             {std::pair(1, markers), std::pair(2, markers), std::pair(3, List())}) {
            QCOMPARE(
                Rows(u"SELECT CodigoFiguraDetalhada, ItemComponente, ArquivoFigura, LLeft, TTop "
                     "FROM FIGURADETALHADA1 WHERE CodigoPeca = %1 "
                     "ORDER BY CodigoFiguraDetalhada"_s.arg(part)),
                rows);
        }
    }

    void KeepsSingleRows_data() {
        const Table<QString, QString, QString, QString> row("table", "values", "column",
                                                            "afterDelete");
        row("selection", "CODIGOCLIENTECONCORRENTE", "9", "CodigoClienteConcorrente", "-5");
        row("settings", "UMREGISTRO", "1, Null, Null, 0, 'u', 5, 4", "Versao", "5");
        row("lock", "CONTROLETRAN", "3", "a", "0");
    }
    void KeepsSingleRows() {
        QFETCH(QString, table);
        QFETCH(QString, values);
        QFETCH(QString, column);
        QFETCH(QString, afterDelete);
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
};

TARVO_TEST(TestEsquema);
#include "test_esquema.moc"
