#include "platform/dao/dao.h"
#include "platform/dao/schema.h"
#include "session/esquema.h"
#include "support/database.h"
#include "support/testmain.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using testing_support::ErrorOf;

class TestEsquema : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;
    const QString path_ = folder_.path() + QLatin1String("\\Tarvo.mdb");
    std::unique_ptr<dao::Workspace> workspace_;
    std::unique_ptr<dao::Database> database_;

    void Execute(const char* sql) { database_->Execute(QString::fromUtf8(sql)); }

    QString Rows(const char* sql) {
        QStringList rows;
        const auto result = database_->OpenRecordset(QString::fromUtf8(sql));
        for (; !result->Eof(); result->MoveNext()) {
            QStringList cells;
            for (int i = 0; i < result->FieldCount(); ++i) {
                cells.append(result->Fields(i).Value().toString());
            }
            rows.append(cells.join(u','));
        }
        return rows.join(u';');
    }

private Q_SLOTS:
    void initTestCase() {
        CriarCatalogo(path_, QStringLiteral("segredo"));
        QCOMPARE(ErrorOf([&] { CriarCatalogo(path_, QStringLiteral("outra")); }), 3012);
        workspace_ = dao::DBEngine::Instance().CreateWorkspace(
            QStringLiteral("teste"), QStringLiteral("admin"), QString(), dao::dbUseJet);
        database_ = workspace_->OpenDatabase(path_, false, false, QStringLiteral(";pwd=segredo"));
    }

    // The searches run on every keystroke: no table may be read from end to end and nothing sorted
    // that an index has in order.
    void AnswersFromIndexes_data() {
        QTest::addColumn<QString>("sql");
        const auto row = [](const char* name, const char* sql) {
            QTest::newRow(name) << QString::fromUtf8(sql);
        };
        row("all kinds",
            "SELECT PECA.NumeroTarvoPECA AS N, PECA.DescricaoPECA AS D, '' AS C, CodigoPECA AS K "
            "FROM PECA UNION ALL SELECT COMPONENTE.NumeroTarvoCOMPONENTE AS N, "
            "COMPONENTE.DescricaoCOMPONENTE AS D, '' AS C, CodigoCOMPONENTE AS K FROM COMPONENTE "
            "ORDER BY 1");
        row("number",
            "SELECT NumeroTarvoPeca, DescricaoPeca, CodigoPeca FROM PECA "
            "WHERE NumeroTarvoPeca LIKE '12*' ORDER BY 1");
        row("description",
            "SELECT NumeroTarvoJogoReparo, DescricaoJogoReparo FROM JOGOREPARO "
            "WHERE DescricaoJogoReparo LIKE 'VAL*' ORDER BY 2");
        row("cross reference shown",
            "SELECT NumeroTarvoPeca, REFERENCIACRUZADA1.NumeroClienteConcorrente FROM PECA LEFT "
            "JOIN REFERENCIACRUZADA1 ON PECA.NumeroTarvoPeca = REFERENCIACRUZADA1.NumeroTarvo "
            "ORDER BY 1");
        row("cross reference searched",
            "SELECT NumeroTarvoComponente, REFERENCIACRUZADA1.NumeroClienteConcorrente FROM "
            "COMPONENTE LEFT JOIN REFERENCIACRUZADA1 ON COMPONENTE.NumeroTarvoComponente = "
            "REFERENCIACRUZADA1.NumeroTarvo WHERE REFERENCIACRUZADA1.NumeroClienteConcorrente "
            "LIKE 'A7*' ORDER BY 2");
        row("component list",
            "SELECT PECA_COMPONENTE.ItemComponente, Min(REFERENCIACRUZADA1."
            "NumeroClienteConcorrente) AS N FROM ((PECA_COMPONENTE LEFT JOIN "
            "PECA_COMPONENTE_JOGOREPARO ON PECA_COMPONENTE.CodigoPeca = "
            "PECA_COMPONENTE_JOGOREPARO.CodigoPeca AND PECA_COMPONENTE.ItemComponente = "
            "PECA_COMPONENTE_JOGOREPARO.ItemComponente) INNER JOIN COMPONENTE ON "
            "PECA_COMPONENTE.CodigoComponente = COMPONENTE.CodigoComponente) LEFT JOIN "
            "REFERENCIACRUZADA1 ON COMPONENTE.NumeroTarvoComponente = "
            "REFERENCIACRUZADA1.NumeroTarvo WHERE PECA_COMPONENTE.CodigoPeca = 3 GROUP BY "
            "PECA_COMPONENTE.ItemComponente ORDER BY 1");
        row("vehicles",
            "SELECT VEICULO.DescricaoVeiculo, CLIENTECONCORRENTE.DescricaoClienteConcorrente FROM "
            "VEICULO INNER JOIN CLIENTECONCORRENTE ON VEICULO.CodigoClienteConcorrente = "
            "CLIENTECONCORRENTE.CodigoClienteConcorrente WHERE VEICULO.CodigoClienteConcorrente "
            "= 3 ORDER BY 1");
        row("figure",
            "SELECT ArquivoFigura, ItemComponente FROM FIGURADETALHADA1 WHERE "
            "CodigoPeca = 4 ORDER BY CodigoFiguraDetalhada");
        row("gallery", "SELECT DescricaoFotoPecaPesquisa FROM FOTOPECAPESQUISA ORDER BY 1");
        row("component in use",
            "SELECT CodigoComponente FROM PECA_COMPONENTE WHERE CodigoComponente = 1");
        row("kit in use",
            "SELECT CodigoJogoReparo FROM PECA_COMPONENTE_JOGOREPARO WHERE "
            "CodigoJogoReparo = 1");
        row("vehicle in use", "SELECT CodigoVeiculo FROM VEICULO_PECA WHERE CodigoVeiculo = 1");
        row("vehicles of a part", "SELECT CodigoVeiculo FROM VEICULO_PECA WHERE CodigoPeca = 1");
        row("picture in use",
            "SELECT CodigoFotoPecaPesquisa FROM PECA WHERE "
            "CodigoFotoPecaPesquisa = 1");
    }

    void AnswersFromIndexes() {
        QFETCH(QString, sql);
        dao::Connection& connection = *database_->GetConnection();
        const auto translation = dao::Prepare(connection, sql);
        QCOMPARE(translation.statements.size(), 1);
        dao::Statement plan(connection, "EXPLAIN QUERY PLAN " + translation.statements.first());
        int steps = 0;
        while (plan.Step()) {
            const QString step = plan.Column(3).toString();
            ++steps;
            const bool whole = step.startsWith(QLatin1String("SCAN ")) &&
                               !step.contains(QLatin1String(" INDEX ")) &&
                               step != QLatin1String("SCAN CODIGOCLIENTECONCORRENTE");
            QVERIFY2(!whole && !step.contains(QLatin1String("TEMP B-TREE")) &&
                         !step.startsWith(QLatin1String("MATERIALIZE")),
                     qPrintable(step));
        }
        QVERIFY(steps > 0);
    }

    void ShowsTheChosenCustomersNumbers() {
        Execute("INSERT INTO REFERENCIACRUZADA VALUES (1, 'A1', 'X1')");
        Execute("INSERT INTO REFERENCIACRUZADA VALUES (2, 'A1', 'Y1')");
        const char* numbers = "SELECT NumeroClienteConcorrente FROM REFERENCIACRUZADA1";
        QCOMPARE(Rows(numbers), QString());
        Execute("UPDATE CODIGOCLIENTECONCORRENTE SET CodigoClienteConcorrente = 2");
        QCOMPARE(Rows(numbers), QStringLiteral("Y1"));
        Execute("UPDATE CODIGOCLIENTECONCORRENTE SET CodigoClienteConcorrente = -5");
        QCOMPARE(Rows(numbers), QString());
    }

    void SharesAFigureAmongParts() {
        for (const char* sql :
             {"INSERT INTO PECA (CodigoPeca, CodigoFigura) VALUES (1, 7)",
              "INSERT INTO PECA (CodigoPeca, CodigoFigura) VALUES (2, 7)",
              "INSERT INTO PECA (CodigoPeca) VALUES (3)", "INSERT INTO FIGURA VALUES (7, 'f7.bmp')",
              "INSERT INTO FIGURA VALUES (8, 'f8.bmp')",
              "INSERT INTO FIGURADETALHADA VALUES (7, 2, '   2', 30, 40)",
              "INSERT INTO FIGURADETALHADA VALUES (7, 1, '   1', 10, 20)",
              "INSERT INTO FIGURADETALHADA VALUES (8, 1, '   9', 0, 0)"}) {
            Execute(sql);
        }
        const QString sql = QStringLiteral(
            "SELECT CodigoFiguraDetalhada, ItemComponente, ArquivoFigura, LLeft, TTop FROM "
            "FIGURADETALHADA1 WHERE CodigoPeca = %1 ORDER BY CodigoFiguraDetalhada");
        const QString markers = QStringLiteral("1,   1,f7.bmp,10,20;2,   2,f7.bmp,30,40");
        QCOMPARE(Rows(qPrintable(sql.arg(1))), markers);
        QCOMPARE(Rows(qPrintable(sql.arg(2))), markers);
        QCOMPARE(Rows(qPrintable(sql.arg(3))), QString());
    }

    void KeepsSingleRows_data() {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("values");
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("afterDelete");
        const auto row = [](const char* table, const char* values, const char* column,
                            const char* afterDelete) {
            QTest::newRow(table) << QString::fromUtf8(table) << QString::fromUtf8(values)
                                 << QString::fromUtf8(column) << QString::fromUtf8(afterDelete);
        };
        row("CODIGOCLIENTECONCORRENTE", "9", "CodigoClienteConcorrente", "-5");
        row("UMREGISTRO", "1, Null, Null, 0, 'u', 5, 4", "Versao", "5");
        row("CONTROLETRAN", "3", "a", "0");
    }

    void KeepsSingleRows() {
        QFETCH(QString, table);
        QFETCH(QString, values);
        QFETCH(QString, column);
        QFETCH(QString, afterDelete);
        const QString insert = QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(table, values);
        QCOMPARE(ErrorOf([&] { database_->Execute(insert); }), 3022);
        // As a script would replace the row; what fails there is passed over.
        database_->Execute(QLatin1String("DELETE FROM ") + table);
        ErrorOf([&] { database_->Execute(insert); });
        QCOMPARE(Rows(qPrintable(QStringLiteral("SELECT %1 FROM %2").arg(column, table))),
                 afterDelete);
    }
};

TARVO_TEST(TestEsquema);

#include "test_esquema.moc"
