#include "memorydatabase.h"
#include "platform/sql/dialect.h"
#include "platform/sql/errors.h"
#include "platform/system/paths.h"
#include "support/test.h"

using sql::Failure;

struct TestDialect : Fixture {
    void init() override {
        db_ = std::make_unique<MemoryDatabase>();
        db_->MakeCatalogue();
    }

    std::unique_ptr<MemoryDatabase> db_;
};

// The cases of casos.data, which tells how they are written.
TEST(TestDialect, Cases) {
    Each<QStringList, QString, QStringList> row;
    const QString path = QStringLiteral(TARVO_SQL_CASES) + u"/casos.data"_s;
    for (const QString& text : sys::ReadText(path).split(u"\n== "_s).mid(1)) {
        const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
        const qsizetype asks = lines.indexOf(QRegularExpression(u"^\\?\\? .*"_s));
        row(lines.at(0).toUtf8(), lines.mid(1, asks - 1), lines.at(asks).mid(3),
            lines.mid(asks + 1));
    }
    row("top of tops", {},
        u"SELECT TOP 1 x FROM "_s + u"(SELECT TOP 2 x FROM "_s.repeated(20) +
            u"(SELECT CodigoPeca AS x FROM PECA)"_s + u" AS t ORDER BY x DESC)"_s.repeated(20) +
            u" AS t ORDER BY x"_s,
        {"4"});
    for (const auto& [texts, query, rows] : row) {
        QCOMPARE(db_->RunAll(texts, query), rows);
    }
}

TEST(TestDialect, NamesColumnsAsTheTextDoes) {
    const QString text =
        u"SELECT PECA.CodigoPeca, 1+1, Count(*) AS Quantos FROM PECA GROUP BY PECA.CodigoPeca "
        "HAVING PECA.CodigoPeca = 5"_s;
    QCOMPARE(db_->Run(text, true).first(), u"CodigoPeca|Expr1001|Quantos"_s);
}

TEST(TestDialect, BeginningsUseTheIndex) {
    for (const auto& [where, plan] : Each<QString, QString>{
             {"prefix", "LIKE 'abc*'", "(NumeroTarvoPeca>? AND NumeroTarvoPeca<?)"},
             {"whole", "LIKE 'abc'", "(NumeroTarvoPeca>? AND NumeroTarvoPeca<?)"},
             {"equal", "= 'abc'", "(NumeroTarvoPeca=?)"},
             {"list", "IN ('abc', 'd')", "(NumeroTarvoPeca=?)"},
         }) {
        const auto translation =
            db_->Translate(u"SELECT CodigoPeca FROM PECA WHERE NumeroTarvoPeca "_s + where);
        const QStringList steps =
            db_->RunNative("EXPLAIN QUERY PLAN " + translation.statements.first());
        QVERIFY2(steps.join(u'\n').contains(u"PECA_NUMERO "_s + plan),
                 qPrintable(steps.join(u'\n')));
    }
}

TEST(TestDialect, Refuses) {
    Each<QString, Failure> row;
    row("nothing", "", Failure::MissingExpression);
    row("blanks", " \r\n", Failure::MissingExpression);
    row("no statement", "FOO BAR", Failure::MissingExpression);
    row("open bracket in a pattern", "SELECT 1 FROM PECA WHERE DescricaoPeca LIKE 'a[b*'",
        Failure::BadPattern);
    row("open text", "SELECT 'abc", Failure::SyntaxError);
    row("open name", "SELECT [abc FROM PECA", Failure::SyntaxError);
    row("placeholder left over", "UPDATE PECA SET CodigoFigura = 2?", Failure::SyntaxError);
    row("bad date", "SELECT #13/32/2024#", Failure::SyntaxError);
    row("rest", "SELECT 1 FROM PECA garbage here", Failure::SyntaxError);
    row("two statements", "SELECT 1; DROP TABLE PECA", Failure::SyntaxError);
    row("missing operand", "SELECT * FROM PECA WHERE CodigoPeca = ", Failure::SyntaxError);
    row("nul", u"SELECT '\0' FROM PECA"_s, Failure::SyntaxError);
    row("number of arguments", "SELECT Left('a')", Failure::SyntaxError);
    row("delete from a join",
        "DELETE FROM PECA INNER JOIN VEICULO_PECA ON PECA.CodigoPeca = VEICULO_PECA.CodigoPeca",
        Failure::SyntaxError);
    row("many brackets", u"SELECT "_s + QString(100000, u'('), Failure::SyntaxError);
    row("many negations", u"SELECT "_s + u"NOT "_s.repeated(100000) + u"1"_s, Failure::SyntaxError);
    row("many operators", u"SELECT 1"_s + u"+1"_s.repeated(100000), Failure::SyntaxError);
    row("many subqueries", u"SELECT * FROM "_s + u"(SELECT * FROM "_s.repeated(50000),
        Failure::SyntaxError);
    row("many unions", u"SELECT 1"_s + u" UNION SELECT 1"_s.repeated(1000), Failure::SyntaxError);
    row("unknown function", "SELECT DLookup('a','b')", Failure::UnknownFunction);
    row("half a pair", "SELECT Switch(1=1, 2, 3)", Failure::SyntaxError);
    row("star", "SELECT Max(*) FROM PECA", Failure::SyntaxError);
    row("very long", u"SELECT '"_s + QString(12'000'000, u'x') + u'\'', Failure::Resources);
    row("very long pattern", u"SELECT 'a' LIKE '"_s + u"*a"_s.repeated(20001) + u'\'',
        Failure::BadPattern);
    row("very many pieces", u"SELECT 1 IN (1"_s + u",1"_s.repeated(200000) + u')',
        Failure::SyntaxError);
    row("text compared with a number", "SELECT 1 FROM PECA WHERE NumeroTarvoPeca > 100",
        Failure::MixedComparison);
    row("number compared with a text", "SELECT 1 FROM PECA WHERE CodigoPeca = 'abc'",
        Failure::MixedComparison);
    row("text between numbers", "SELECT 1 FROM PECA WHERE Left('100', 3) BETWEEN 1 AND 2",
        Failure::MixedComparison);
    row("outside the groups", "SELECT CodigoPeca, DescricaoPeca FROM PECA GROUP BY CodigoPeca",
        Failure::NotGrouped);
    row("beside an aggregate", "SELECT Count(*), CodigoPeca + 1 FROM PECA", Failure::NotGrouped);
    row("star beside an aggregate", "SELECT *, Count(*) FROM PECA", Failure::NotGrouped);
    row("condition on the groups",
        "SELECT Count(*) FROM PECA GROUP BY CodigoPeca HAVING DescricaoPeca = 'x'",
        Failure::NotGrouped);
    row("order of the groups", "SELECT Max(CodigoPeca) FROM PECA ORDER BY DescricaoPeca",
        Failure::NotGrouped);
    const QString correlated =
        u"SELECT Max(CodigoPeca) FROM PECA GROUP BY CodigoFigura HAVING %1"_s;
    row("query about one row of a group",
        correlated.arg(u"EXISTS (SELECT 1 FROM VEICULO_PECA AS v, (SELECT 1) AS o WHERE "
                       "v.CodigoPeca = PECA.CodigoPeca)"_s),
        Failure::NotGrouped);
    row("in a join of it",
        correlated.arg(u"EXISTS (SELECT 1 FROM VEICULO AS v LEFT JOIN (VEICULO_PECA AS w INNER "
                       "JOIN VEICULO_PECA AS x ON x.CodigoPeca = PECA.CodigoPeca) ON "
                       "v.CodigoVeiculo = w.CodigoVeiculo)"_s),
        Failure::NotGrouped);
    row("in a query of it",
        correlated.arg(u"EXISTS (SELECT 1 FROM (SELECT PECA.CodigoPeca AS c) AS o)"_s),
        Failure::NotGrouped);
    row("unqualified", correlated.arg(u"1 IN (SELECT 1 FROM VEICULO WHERE DescricaoPeca = 'x')"_s),
        Failure::NotGrouped);
    row("order of a query within",
        "SELECT CodigoFigura, (SELECT TOP 1 CodigoVeiculo FROM VEICULO ORDER BY CodigoVeiculo "
        "- "
        "PECA.CodigoPeca) FROM PECA GROUP BY CodigoFigura",
        Failure::NotGrouped);
    row("two queries deep",
        "SELECT (SELECT Max(CodigoVeiculo) FROM VEICULO WHERE CodigoVeiculo IN (SELECT "
        "PECA.CodigoPeca FROM VEICULO_PECA)) FROM PECA GROUP BY CodigoFigura",
        Failure::NotGrouped);
    row("too few values", "INSERT INTO VEICULO_PECA VALUES (1)", Failure::ValueCount);
    row("too many columns", "INSERT INTO VEICULO_PECA (CodigoVeiculo) SELECT 1, 2",
        Failure::ValueCount);
    row("rows of two tables", "DELETE a.*, b.* FROM PECA AS a, VEICULO AS b",
        Failure::NotSupported);
    row("quantifier", "SELECT 1 FROM PECA WHERE CodigoPeca > ALL (SELECT 1)",
        Failure::NotSupported);
    row("crosstab", "TRANSFORM Count(*) SELECT 1", Failure::NotSupported);
    row("other file", "SELECT * FROM PECA IN 'outro.mdb'", Failure::NotSupported);
    row("two targets",
        "UPDATE PECA INNER JOIN VEICULO_PECA ON PECA.CodigoPeca = VEICULO_PECA.CodigoPeca SET "
        "PECA.CodigoFigura = 1, VEICULO_PECA.CodigoVeiculo = 1",
        Failure::NotSupported);
    row("target that may be missing",
        "UPDATE PECA LEFT JOIN VEICULO_PECA ON PECA.CodigoPeca = VEICULO_PECA.CodigoPeca SET "
        "VEICULO_PECA.CodigoVeiculo = 1",
        Failure::NotSupported);
    for (const auto& [text, failure] : row) {
        try {
            db_->Run(text);
            QFAIL("accepted");
        } catch (const Erro& erro) {
            QCOMPARE(erro.Number(), static_cast<int>(failure));
        }
    }
}

TEST(TestDialect, FailingFunctionsFailTheStatement) {
    QVERIFY_THROWS_EXCEPTION(Erro, db_->Run("SELECT CInt(40000)"));
    QVERIFY_THROWS_EXCEPTION(Erro, db_->Run("INSERT INTO PECA (CodigoPeca) SELECT Null & Null"));
    QVERIFY_THROWS_EXCEPTION(Erro, db_->Run("SELECT CLng('abc')"));
    QVERIFY_THROWS_EXCEPTION(Erro, db_->Run("SELECT 1 WHERE 'a' LIKE ('[' & '')"));
}
