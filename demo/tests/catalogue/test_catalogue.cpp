#include "orders.h"
#include "support/test.h"
#include "verificar/check.h"

#include <QCryptographicHash>
#include <QFontMetricsF>

namespace {

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
    demo::Order order = OrderOf(folder.path(), {120, 400, 60, 80, 900});
    order.seed = seed;
    demo::MakeDataFolder(order);
    return HashOf(*Open(folder.path()));
}

}  // namespace

struct DemoCatalogue : Fixture {
    static void initTestCase() {
        demo::MakeDataFolder(OrderOf(folder_.path(), {}));
        connection_ = Open(folder_.path());
    }

    int Count(const QByteArray& rows) { return ::Count(*connection_, rows); }

    static inline const QTemporaryDir folder_;
    static inline std::shared_ptr<dao::Connection> connection_;
};

TEST(DemoCatalogue, CountsAreAsOrdered) {
    Each<QByteArray, quint32> table;
    const auto row = [&](const char* rows, quint32 count) { table(rows, rows, count); };
    const demo::Sizes sizes;
    row("PECA", sizes.parts);
    row("COMPONENTE", sizes.components);
    row("JOGOREPARO", sizes.kits);
    row("VEICULO", sizes.vehicles);
    row("REFERENCIACRUZADA", sizes.crossReferences);
    row("CLIENTECONCORRENTE WHERE TipoClienteConcorrente = 'I'", 12);
    row("CLIENTECONCORRENTE WHERE TipoClienteConcorrente <> 'I'", 15);
    row("UMREGISTRO WHERE DataEmissao = 46086 AND DataUltimaVerificacao IS NULL AND "
        "FlagErroUltimaVerificacao = 0 AND Versao = 1 AND VersaoAnterior = 0",
        1);
    row("CODIGOCLIENTECONCORRENTE WHERE CodigoClienteConcorrente = -5", 1);
    for (const auto& [rows, count] : table) {
        QCOMPARE(quint32(Count("SELECT * FROM " + rows)), count);
    }
}

// A text that is wider than its column on paper runs under the number to order by.
TEST(DemoCatalogue, DescriptionsFitTheirPrintedColumns) {
    for (const auto& [texts, units] : Each<QByteArray, int>{
             // 1/360 inch
             {"kits", "SELECT DescricaoJogoReparo FROM JOGOREPARO", 1600 - 500},
             {"components", "SELECT DescricaoComponente FROM COMPONENTE", 1600 - 600},
         }) {
        constexpr int Fine = 1000;                         // pixels, so that nothing is rounded
        constexpr double UnitsPerPixel = 10 * 5.0 / Fine;  // at 10 points of 5 units
        QFont font(u"Liberation Sans"_s);
        font.setPixelSize(Fine);
        const QFontMetricsF metrics(font);
        for (const QString& text : Texts(*connection_, texts)) {
            const double width = metrics.horizontalAdvance(text + u' ') * UnitsPerPixel;
            QVERIFY2(width <= units, qPrintable(u"%1: %2"_s.arg(text).arg(width)));
        }
    }
}

// As any catalogue has to pass; pictures are not made here.
TEST(DemoCatalogue, PassesTheChecks) {
    for (const verificar::Finding& finding : verificar::Check({folder_.path(), 3, true})) {
        QVERIFY2(finding.weight == verificar::Weight::Hint ||
                     finding.what.endsWith(u": o arquivo não existe"_s),
                 qPrintable(finding.what + u": "_s + finding.examples.join(u", "_s)));
    }
}

TEST(DemoCatalogue, NoRowBreaksARule) {
    for (const auto& [offenders] : Each<QByteArray>{
             {"own number given twice",
              "SELECT n FROM (SELECT NumeroTarvoPeca AS n FROM PECA UNION ALL SELECT "
              "NumeroTarvoComponente FROM COMPONENTE UNION ALL SELECT NumeroTarvoJogoReparo FROM "
              "JOGOREPARO) GROUP BY n HAVING count(*) > 1"},
             {"maker of its vehicle that does not know a part",
              "SELECT DISTINCT VEICULO_PECA.CodigoPeca, VEICULO.CodigoClienteConcorrente FROM "
              "VEICULO_PECA JOIN VEICULO ON VEICULO.CodigoVeiculo = VEICULO_PECA.CodigoVeiculo "
              "JOIN "
              "PECA ON PECA.CodigoPeca = VEICULO_PECA.CodigoPeca WHERE "
              "(VEICULO.CodigoClienteConcorrente, NumeroTarvoPeca) NOT IN (SELECT "
              "CodigoClienteConcorrente, NumeroTarvo FROM REFERENCIACRUZADA)"},
         }) {
        QCOMPARE(Count(offenders), 0);
    }
}

// What the screens have to cope with, a few of each and not many.
TEST(DemoCatalogue, OdditiesAreThere) {
    Each<int, int, QByteArray> row;
    constexpr int Any = 1000000;
    row("item with a letter", 100, Any,
        "SELECT * FROM PECA_COMPONENTE WHERE length(ItemComponente) = 5");
    row("part with several kits", 100, Any,
        "SELECT CodigoPeca FROM PECA_COMPONENTE_JOGOREPARO GROUP BY CodigoPeca HAVING "
        "count(DISTINCT CodigoJogoReparo) > 1");
    row("item in several kits", 100, Any,
        "SELECT * FROM PECA_COMPONENTE_JOGOREPARO GROUP BY CodigoPeca, ItemComponente HAVING "
        "count(*) > 1");
    row("item in no kit", 100, Any,
        "SELECT CodigoPeca, ItemComponente FROM PECA_COMPONENTE EXCEPT SELECT CodigoPeca, "
        "ItemComponente FROM PECA_COMPONENTE_JOGOREPARO");
    row("component at two items of a part", 100, Any,
        "SELECT * FROM PECA_COMPONENTE GROUP BY CodigoPeca, CodigoComponente HAVING count(*) > "
        "1");
    row("component in parts of several constructions", 500, Any,
        "SELECT * FROM PECA_COMPONENTE GROUP BY CodigoComponente HAVING count(DISTINCT "
        "CodigoPeca) > 8");
    row("kit of several parts", 100, Any,
        "SELECT * FROM PECA_COMPONENTE_JOGOREPARO GROUP BY CodigoJogoReparo HAVING "
        "count(DISTINCT CodigoPeca) > 1");
    row("part with a list", 1500, 2500, "SELECT DISTINCT CodigoPeca FROM PECA_COMPONENTE");
    row("part without vehicles", 50, 500,
        "SELECT * FROM PECA WHERE CodigoPeca NOT IN (SELECT CodigoPeca FROM VEICULO_PECA)");
    row("part without photo", 10, 200, "SELECT * FROM PECA WHERE ArquivoFotoPeca IS NULL");
    row("part off the gallery", 5, 100, "SELECT * FROM PECA WHERE CodigoFotoPecaPesquisa IS NULL");
    row("item without quantity", 50, 1000,
        "SELECT * FROM PECA_COMPONENTE WHERE QuantidadeComponente IS NULL");
    row("unused component", 1, 60,
        "SELECT * FROM COMPONENTE WHERE CodigoComponente NOT IN (SELECT CodigoComponente FROM "
        "PECA_COMPONENTE)");
    row("unused kit", 1, 20,
        "SELECT * FROM JOGOREPARO WHERE CodigoJogoReparo NOT IN (SELECT CodigoJogoReparo FROM "
        "PECA_COMPONENTE_JOGOREPARO)");
    row("unused vehicle", 1, 20,
        "SELECT * FROM VEICULO WHERE CodigoVeiculo NOT IN (SELECT CodigoVeiculo FROM "
        "VEICULO_PECA)");
    row("unused picture", 1, 1,
        "SELECT * FROM FOTOPECAPESQUISA WHERE CodigoFotoPecaPesquisa NOT IN (SELECT "
        "CodigoFotoPecaPesquisa FROM PECA WHERE CodigoFotoPecaPesquisa IS NOT NULL)");
    row("two numbers for one customer", 100, 4000,
        "SELECT * FROM REFERENCIACRUZADA GROUP BY CodigoClienteConcorrente, NumeroTarvo HAVING "
        "count(*) > 1");
    row("number that begins with 1", 300, Any,
        "SELECT * FROM COMPONENTE WHERE NumeroTarvoComponente GLOB '1*'");
    for (const auto& [least, most, rows] : row) {
        const int count = Count(rows);
        QVERIFY2(count >= least && count <= most, QByteArray::number(count).constData());
    }
}

TEST(DemoCatalogue, ListsFitTheirFigures) {
    const int longest = connection_
                            ->Value(
                                "SELECT max(n) FROM (SELECT count(*) AS n FROM PECA_COMPONENTE "
                                "GROUP BY CodigoPeca)")
                            .toInt();
    QVERIFY2(longest >= 40 && longest <= 70, QByteArray::number(longest).constData());
}

TEST(DemoCatalogue, TheSameSeedGivesTheSameRows) {
    const QByteArray first = HashOfSmall(7);
    QCOMPARE(HashOfSmall(7), first);
    QVERIFY(HashOfSmall(8) != first);
}

TEST(DemoCatalogue, IndexesAreAllBack) {
    const QTemporaryDir folder;
    demo::MakeDataFolder(OrderOf(folder.path(), {1, 1, 0, 0, 0}));
    const QByteArray names = "SELECT name FROM sqlite_schema WHERE type = 'index' ORDER BY name";
    const QStringList here = Texts(*connection_, names);
    QCOMPARE(Texts(*Open(folder.path()), names), here);
    QVERIFY(here.contains(u"PECA_NUMERO"_s));
    QCOMPARE(connection_->Value("PRAGMA integrity_check").toString(), u"ok"_s);
}
