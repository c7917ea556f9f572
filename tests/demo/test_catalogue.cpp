#include "demo/folder.h"
#include "platform/dao/sqlite.h"
#include "session/banco.h"
#include "session/modulo.h"
#include "support/testmain.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

using ConnectionPointer = std::shared_ptr<dao::Connection>;

ConnectionPointer Open(const QString& folder) {
    return std::make_shared<dao::Connection>(folder + u"/Tarvo.mdb"_s, SenhaBancoDados().toUtf8(),
                                             dao::Connection::Mode::ReadOnly);
}

QStringList Texts(dao::Connection& connection, const QByteArray& sql) {
    QStringList texts;
    dao::Statement statement(connection, sql);
    while (statement.Step()) {
        texts.append(statement.Column(0).toString());
    }
    return texts;
}

// Every cell of every table, in the order of its rows.
QByteArray HashOf(dao::Connection& connection) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const QStringList tables =
        Texts(connection, "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name");
    for (const QString& table : tables) {
        dao::Statement rows(connection, "SELECT * FROM " + table.toUtf8() + " ORDER BY rowid");
        while (rows.Step()) {
            for (int column = 0; column < rows.ColumnCount(); ++column) {
                hash.addData(QByteArray::number(static_cast<int>(rows.Read(column).type)));
                hash.addData(rows.Column(column).toString().toUtf8() + '|');
            }
        }
    }
    return hash.result();
}

QByteArray HashOfSmall(quint64 seed) {
    const QTemporaryDir folder;
    demo::Order order;
    order.pictures = demo::Pictures::None;
    order.folder = folder.path();
    order.seed = seed;
    order.sizes = {120, 400, 60, 80, 900};
    demo::MakeDataFolder(order);
    return HashOf(*Open(folder.path()));
}

}  // namespace

class DemoCatalogue : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        demo::Order order;
        order.pictures = demo::Pictures::None;
        order.folder = folder_.path();
        demo::MakeDataFolder(order);
        connection_ = Open(folder_.path());
    }

    void CountsAreAsOrdered_data() {
        QTest::addColumn<QByteArray>("rows");
        QTest::addColumn<int>("count");
        const demo::Sizes sizes;
        const auto row = [](const char* rows, quint32 count) {
            QTest::newRow(rows) << QByteArray(rows) << static_cast<int>(count);
        };
        row("PECA", sizes.parts);
        row("COMPONENTE", sizes.components);
        row("JOGOREPARO", sizes.kits);
        row("VEICULO", sizes.vehicles);
        row("REFERENCIACRUZADA", sizes.crossReferences);
        row("CLIENTECONCORRENTE WHERE TipoClienteConcorrente = 'I'", 12);
        row("CLIENTECONCORRENTE WHERE TipoClienteConcorrente <> 'I'", 15);
        row("UMREGISTRO WHERE DataEmissao = 46086 AND DataUltimaVerificacao IS NULL"
            " AND FlagErroUltimaVerificacao = 0 AND Versao = 1 AND VersaoAnterior = 0",
            1);
        row("CODIGOCLIENTECONCORRENTE WHERE CodigoClienteConcorrente = -5", 1);
    }
    void CountsAreAsOrdered() {
        QFETCH(QByteArray, rows);
        QFETCH(int, count);
        QCOMPARE(Count("SELECT * FROM " + rows), count);
    }

    void NoRowBreaksARule_data() {
        QTest::addColumn<QByteArray>("offenders");
        const auto rule = [](const char* name, const char* sql) {
            QTest::newRow(name) << QByteArray(sql);
        };
        rule("list of no part",
             "SELECT * FROM PECA_COMPONENTE WHERE CodigoPeca NOT IN (SELECT CodigoPeca FROM PECA)");
        rule("list with no component",
             "SELECT * FROM PECA_COMPONENTE WHERE CodigoComponente NOT IN"
             " (SELECT CodigoComponente FROM COMPONENTE)");
        rule("kit on an item that is not there",
             "SELECT * FROM PECA_COMPONENTE_JOGOREPARO WHERE (CodigoPeca, ItemComponente) NOT IN"
             " (SELECT CodigoPeca, ItemComponente FROM PECA_COMPONENTE)");
        rule("item of no kit",
             "SELECT * FROM PECA_COMPONENTE_JOGOREPARO WHERE CodigoJogoReparo NOT IN"
             " (SELECT CodigoJogoReparo FROM JOGOREPARO)");
        rule("no such vehicle",
             "SELECT * FROM VEICULO_PECA WHERE CodigoVeiculo NOT IN"
             " (SELECT CodigoVeiculo FROM VEICULO)");
        rule("vehicle's part not there",
             "SELECT * FROM VEICULO_PECA WHERE CodigoPeca NOT IN (SELECT CodigoPeca FROM PECA)");
        rule("vehicle of no maker",
             "SELECT * FROM VEICULO WHERE CodigoClienteConcorrente NOT IN"
             " (SELECT CodigoClienteConcorrente FROM CLIENTECONCORRENTE"
             " WHERE TipoClienteConcorrente = 'I')");
        rule("part of no family",
             "SELECT * FROM PECA WHERE CodigoFotoPecaPesquisa NOT IN"
             " (SELECT CodigoFotoPecaPesquisa FROM FOTOPECAPESQUISA)");
        rule("figure that is not drawn",
             "SELECT * FROM PECA WHERE CodigoFigura IS NOT NULL AND CodigoFigura NOT IN"
             " (SELECT CodigoFigura FROM FIGURA)");
        rule("cross reference to nothing",
             "SELECT * FROM REFERENCIACRUZADA WHERE NumeroTarvo NOT IN"
             " (SELECT NumeroTarvoPeca FROM PECA UNION ALL"
             " SELECT NumeroTarvoComponente FROM COMPONENTE UNION ALL"
             " SELECT NumeroTarvoJogoReparo FROM JOGOREPARO)");
        rule("cross reference of nobody",
             "SELECT * FROM REFERENCIACRUZADA WHERE CodigoClienteConcorrente NOT IN"
             " (SELECT CodigoClienteConcorrente FROM CLIENTECONCORRENTE)");
        rule("own number given twice",
             "SELECT n FROM (SELECT NumeroTarvoPeca AS n FROM PECA UNION ALL"
             " SELECT NumeroTarvoComponente FROM COMPONENTE UNION ALL"
             " SELECT NumeroTarvoJogoReparo FROM JOGOREPARO) GROUP BY n HAVING count(*) > 1");
        rule("code that the screens cannot carry",
             "SELECT * FROM (SELECT CodigoPeca AS c FROM PECA UNION ALL"
             " SELECT CodigoComponente FROM COMPONENTE UNION ALL"
             " SELECT CodigoJogoReparo FROM JOGOREPARO UNION ALL"
             " SELECT CodigoVeiculo FROM VEICULO UNION ALL"
             " SELECT CodigoFotoPecaPesquisa FROM FOTOPECAPESQUISA) WHERE c NOT BETWEEN 1 AND "
             "999999");
        rule("maker's code beyond 16 bits",
             "SELECT * FROM CLIENTECONCORRENTE WHERE CodigoClienteConcorrente NOT BETWEEN 1 AND"
             " 32767");
        rule("number missing", "SELECT NumeroTarvoPeca AS n FROM PECA WHERE n IS NULL OR n = ''");
    }
    void NoRowBreaksARule() {
        QFETCH(QByteArray, offenders);
        QCOMPARE(Count(offenders), 0);
    }

    // What the screens have to cope with, a few of each and not many.
    void OdditiesAreThere_data() {
        QTest::addColumn<QByteArray>("rows");
        QTest::addColumn<int>("least");
        QTest::addColumn<int>("most");
        const auto oddity = [](const char* name, int least, int most, const char* sql) {
            QTest::newRow(name) << QByteArray(sql) << least << most;
        };
        constexpr int Any = 1000000;
        oddity("item with a letter", 100, Any,
               "SELECT * FROM PECA_COMPONENTE WHERE length(ItemComponente) = 5");
        oddity("part with several kits", 100, Any,
               "SELECT CodigoPeca FROM PECA_COMPONENTE_JOGOREPARO GROUP BY CodigoPeca"
               " HAVING count(DISTINCT CodigoJogoReparo) > 1");
        oddity("item in several kits", 100, Any,
               "SELECT * FROM PECA_COMPONENTE_JOGOREPARO GROUP BY CodigoPeca, ItemComponente"
               " HAVING count(*) > 1");
        oddity("item in no kit", 100, Any,
               "SELECT CodigoPeca, ItemComponente FROM PECA_COMPONENTE EXCEPT"
               " SELECT CodigoPeca, ItemComponente FROM PECA_COMPONENTE_JOGOREPARO");
        oddity("component at two items of a part", 100, Any,
               "SELECT * FROM PECA_COMPONENTE GROUP BY CodigoPeca, CodigoComponente"
               " HAVING count(*) > 1");
        oddity("component in parts of several constructions", 500, Any,
               "SELECT * FROM PECA_COMPONENTE GROUP BY CodigoComponente"
               " HAVING count(DISTINCT CodigoPeca) > 8");
        oddity("kit of several parts", 100, Any,
               "SELECT * FROM PECA_COMPONENTE_JOGOREPARO GROUP BY CodigoJogoReparo"
               " HAVING count(DISTINCT CodigoPeca) > 1");
        oddity("part with a list", 1500, 2500, "SELECT DISTINCT CodigoPeca FROM PECA_COMPONENTE");
        oddity("part without vehicles", 50, 500,
               "SELECT * FROM PECA WHERE CodigoPeca NOT IN (SELECT CodigoPeca FROM VEICULO_PECA)");
        oddity("part without photo", 10, 200, "SELECT * FROM PECA WHERE ArquivoFotoPeca IS NULL");
        oddity("part off the gallery", 5, 100,
               "SELECT * FROM PECA WHERE CodigoFotoPecaPesquisa IS NULL");
        oddity("item without quantity", 50, 1000,
               "SELECT * FROM PECA_COMPONENTE WHERE QuantidadeComponente IS NULL");
        oddity("unused component", 1, 60,
               "SELECT * FROM COMPONENTE WHERE CodigoComponente NOT IN"
               " (SELECT CodigoComponente FROM PECA_COMPONENTE)");
        oddity("unused kit", 1, 20,
               "SELECT * FROM JOGOREPARO WHERE CodigoJogoReparo NOT IN"
               " (SELECT CodigoJogoReparo FROM PECA_COMPONENTE_JOGOREPARO)");
        oddity("unused vehicle", 1, 20,
               "SELECT * FROM VEICULO WHERE CodigoVeiculo NOT IN"
               " (SELECT CodigoVeiculo FROM VEICULO_PECA)");
        oddity("unused picture", 1, 1,
               "SELECT * FROM FOTOPECAPESQUISA WHERE CodigoFotoPecaPesquisa NOT IN"
               " (SELECT CodigoFotoPecaPesquisa FROM PECA WHERE CodigoFotoPecaPesquisa IS NOT"
               " NULL)");
        oddity("two numbers for one customer", 100, 4000,
               "SELECT * FROM REFERENCIACRUZADA GROUP BY CodigoClienteConcorrente, NumeroTarvo"
               " HAVING count(*) > 1");
        oddity("number that begins with 1", 300, Any,
               "SELECT * FROM COMPONENTE WHERE NumeroTarvoComponente GLOB '1*'");
    }
    void OdditiesAreThere() {
        QFETCH(QByteArray, rows);
        QFETCH(int, least);
        QFETCH(int, most);
        const int count = Count(rows);
        QVERIFY2(count >= least && count <= most, QByteArray::number(count).constData());
    }

    void MakersOfItsVehiclesKnowAPart() {
        const int unknown = Count(
            "SELECT DISTINCT VEICULO_PECA.CodigoPeca, VEICULO.CodigoClienteConcorrente"
            " FROM VEICULO_PECA"
            " JOIN VEICULO ON VEICULO.CodigoVeiculo = VEICULO_PECA.CodigoVeiculo"
            " JOIN PECA ON PECA.CodigoPeca = VEICULO_PECA.CodigoPeca"
            " WHERE (VEICULO.CodigoClienteConcorrente, NumeroTarvoPeca) NOT IN"
            " (SELECT CodigoClienteConcorrente, NumeroTarvo FROM REFERENCIACRUZADA)");
        QCOMPARE(unknown, 0);
    }

    void NumbersAreStoredForm() {
        const QStringList own = Texts(*connection_,
                                      "SELECT NumeroTarvoPeca FROM PECA UNION ALL"
                                      " SELECT NumeroTarvoComponente FROM COMPONENTE UNION ALL"
                                      " SELECT NumeroTarvoJogoReparo FROM JOGOREPARO");
        for (const QString& number : own) {
            QCOMPARE(NormalizarNumero(number), number);
        }
    }

    void ItemsAreStoredForm() {
        static const QRegularExpression form(
            u"^(?: {3}[1-9]| {2}[1-9][0-9]| [1-9][0-9]{2}|[1-9][0-9]{3})[a-z]?$"_s);
        const QStringList items =
            Texts(*connection_, "SELECT DISTINCT ItemComponente FROM PECA_COMPONENTE");
        QVERIFY(items.size() > 50);
        for (const QString& item : items) {
            QVERIFY2(form.match(item).hasMatch(), qPrintable(item));
        }
    }

    void FiguresFitTheirScreen() {
        const int longest = connection_
                                ->Value(
                                    "SELECT max(n) FROM (SELECT count(*) AS n FROM PECA_COMPONENTE"
                                    " GROUP BY CodigoPeca)")
                                .toInt();
        QVERIFY2(longest >= 40 && longest <= 70, QByteArray::number(longest).constData());
    }

    void TheSameSeedGivesTheSameRows() {
        const QByteArray first = HashOfSmall(7);
        QCOMPARE(HashOfSmall(7), first);
        QVERIFY(HashOfSmall(8) != first);
    }

    void IndexesAreAllBack() {
        const QTemporaryDir folder;
        demo::Order order;
        order.pictures = demo::Pictures::None;
        order.folder = folder.path();
        order.sizes = {1, 1, 0, 0, 0};
        demo::MakeDataFolder(order);
        const QByteArray names =
            "SELECT name FROM sqlite_schema WHERE type = 'index'"
            " ORDER BY name";
        const QStringList here = Texts(*connection_, names);
        QCOMPARE(Texts(*Open(folder.path()), names), here);
        QVERIFY(here.contains(u"PECA_NUMERO"_s));
        QCOMPARE(connection_->Value("PRAGMA integrity_check").toString(), u"ok"_s);
    }

private:
    int Count(const QByteArray& rows) {
        return connection_->Value("SELECT count(*) FROM (" + rows + ")").toInt();
    }

    QTemporaryDir folder_;
    ConnectionPointer connection_;
};

TARVO_TEST(DemoCatalogue);
#include "test_catalogue.moc"
