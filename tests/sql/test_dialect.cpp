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
    Each<QString, QString> row;
    const QString syntax = u"Erro de sintaxe no comando"_s;
    const QString groups = u"O campo não está em GROUP BY nem em uma função de totais"_s;
    const auto rows = [&row](Failure failure, const AnyText& words, const QStringList& texts) {
        for (const QString& text : texts) {
            row(text.left(80).toUtf8(), text, QString::number(int(failure)) + u' ' + words);
        }
    };
    rows(Failure::MissingExpression, "O texto do comando está vazio ou não é um comando",
         List("", " \r\n", "FOO BAR"));
    rows(Failure::BadPattern, "O padrão de pesquisa é inválido",
         List("SELECT 1 FROM PECA WHERE DescricaoPeca LIKE 'a[b*'",
              u"SELECT 'a' LIKE '"_s + u"*a"_s.repeated(20001) + u'\''));
    rows(Failure::SyntaxError, syntax,
         List("SELECT 'abc", "SELECT [abc FROM PECA", "UPDATE PECA SET CodigoFigura = 2?",
              "SELECT #13/32/2024#", "SELECT 1 FROM PECA garbage here", "SELECT 1; DROP TABLE PECA",
              "SELECT * FROM PECA WHERE CodigoPeca = ", u"SELECT '\0' FROM PECA"_s,
              "SELECT Left('a')", "SELECT Switch(1=1, 2, 3)", "SELECT Max(*) FROM PECA",
              "DELETE FROM PECA INNER JOIN VEICULO_PECA ON PECA.CodigoPeca = "
              "VEICULO_PECA.CodigoPeca"));
    // However much of it.
    rows(Failure::SyntaxError, syntax,
         List(u"SELECT "_s + QString(100000, u'('),
              u"SELECT "_s + u"NOT "_s.repeated(100000) + u"1"_s,
              u"SELECT 1"_s + u"+1"_s.repeated(100000),
              u"SELECT * FROM "_s + u"(SELECT * FROM "_s.repeated(50000),
              u"SELECT 1"_s + u" UNION SELECT 1"_s.repeated(1000),
              u"SELECT 1 IN (1"_s + u",1"_s.repeated(200000) + u')'));
    rows(Failure::Resources, "O comando precisa de memória demais",
         List(u"SELECT '"_s + QString(12'000'000, u'x') + u'\''));
    rows(Failure::UnknownFunction, "Função desconhecida no comando",
         List("SELECT DLookup('a','b')"));
    rows(Failure::MixedComparison, "O comando compara um texto com um número",
         List("SELECT 1 FROM PECA WHERE NumeroTarvoPeca > 100",
              "SELECT 1 FROM PECA WHERE CodigoPeca = 'abc'",
              "SELECT 1 FROM PECA WHERE Left('100', 3) BETWEEN 1 AND 2"));
    rows(
        Failure::NotGrouped, groups,
        List("SELECT CodigoPeca, DescricaoPeca FROM PECA GROUP BY CodigoPeca",
             "SELECT CodigoPeca Mod 2 FROM PECA GROUP BY CodigoPeca Mod 3",
             "SELECT CodigoPeca + 1 FROM PECA GROUP BY CodigoPeca - 1",
             "SELECT Count(*), CodigoPeca + 1 FROM PECA", "SELECT *, Count(*) FROM PECA",
             "SELECT Count(*) FROM PECA GROUP BY CodigoPeca HAVING DescricaoPeca = 'x'",
             "SELECT Max(CodigoPeca) FROM PECA ORDER BY DescricaoPeca",
             "SELECT CodigoFigura, (SELECT TOP 1 CodigoVeiculo FROM VEICULO ORDER BY CodigoVeiculo "
             "- PECA.CodigoPeca) FROM PECA GROUP BY CodigoFigura",
             "SELECT (SELECT Max(CodigoVeiculo) FROM VEICULO WHERE CodigoVeiculo IN (SELECT "
             "PECA.CodigoPeca FROM VEICULO_PECA)) FROM PECA GROUP BY CodigoFigura"));
    // A query about one row of a group, wherever it names it.
    for (const char* condition :
         {"EXISTS (SELECT 1 FROM VEICULO_PECA AS v, (SELECT 1) AS o WHERE v.CodigoPeca = "
          "PECA.CodigoPeca)",
          "EXISTS (SELECT 1 FROM VEICULO AS v LEFT JOIN (VEICULO_PECA AS w INNER JOIN VEICULO_PECA "
          "AS x ON x.CodigoPeca = PECA.CodigoPeca) ON v.CodigoVeiculo = w.CodigoVeiculo)",
          "EXISTS (SELECT 1 FROM (SELECT PECA.CodigoPeca AS c) AS o)",
          "1 IN (SELECT 1 FROM VEICULO WHERE DescricaoPeca = 'x')"}) {
        rows(Failure::NotGrouped, groups,
             List(u"SELECT Max(CodigoPeca) FROM PECA GROUP BY CodigoFigura HAVING "_s +
                  QLatin1String(condition)));
    }
    rows(Failure::ValueCount, "O número de valores não é igual ao número de campos",
         List("INSERT INTO VEICULO_PECA VALUES (1)",
              "INSERT INTO VEICULO_PECA (CodigoVeiculo) SELECT 1, 2"));
    const QString joined =
        u"UPDATE PECA %1 JOIN VEICULO_PECA ON PECA.CodigoPeca = VEICULO_PECA.CodigoPeca SET "
        "VEICULO_PECA.CodigoVeiculo = 1"_s;
    rows(Failure::NotSupported, "O comando usa um recurso que este catálogo não oferece",
         List("DELETE a.*, b.* FROM PECA AS a, VEICULO AS b",
              "SELECT 1 FROM PECA WHERE CodigoPeca > ALL (SELECT 1)", "TRANSFORM Count(*) SELECT 1",
              "SELECT * FROM PECA IN 'outro.mdb'", joined.arg(u"LEFT"_s),
              joined.arg(u"INNER"_s) + u", PECA.CodigoFigura = 1"_s));
    for (const auto& [text, words] : row) {
        const QString refusal = db_->RefusalOf(text).left(200);
        QVERIFY2(refusal.startsWith(words), qPrintable(refusal));
    }
}
