#include "memorydatabase.h"
#include "platform/sql/dialect.h"
#include "platform/sql/errors.h"
#include "support/test.h"

using sql::Failure;

class TestDialect : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        db_ = std::make_unique<MemoryDatabase>();
        db_->MakeCatalogue();
    }

    void Queries_data() {
        const Table<QString, QStringList> row("text", "rows");
        const QString item = u" FROM PECA_COMPONENTE "_s;
        row("halves of a union, in the order of an accent and of Null",
            "SELECT NumeroTarvoComponente AS n, '' AS c, 'Componente' AS Tipo FROM COMPONENTE "
            "WHERE DescricaoComponente LIKE 'z*' UNION ALL SELECT PECA.NumeroTarvoPECA As "
            "NumeroTarvo,REFERENCIACRUZADA1.NumeroClienteConcorrente,'Peça' AS Tipo FROM PECA LEFT "
            "JOIN REFERENCIACRUZADA1 ON PECA.NumeroTarvoPECA = REFERENCIACRUZADA1.NumeroTarvo "
            "WHERE PECA.NumeroTarvoPECA LIKE '1*' ORDER BY 3,2",
            {"1003||Componente", "1002|-|Peça", "12A|-|Peça", "1001|A70|Peça", "1001|B1|Peça"});
        row("accented description",
            "SELECT NumeroTarvoPeca FROM PECA WHERE DescricaoPeca LIKE 'ÁRV*' ORDER BY 1",
            {"1001"});
        row("lone wildcard",
            "SELECT NumeroTarvoPeca FROM PECA WHERE NumeroTarvoPeca LIKE '*' AND DescricaoPeca "
            "LIKE 'e*' ORDER BY 1",
            {"12A"});
        row("aggregates over a join of four",
            "SELECT PECA_COMPONENTE.ItemComponente,Min(PECA_COMPONENTE.QuantidadeComponente) AS "
            "QuantidadeComponente,Min(COMPONENTE.NumeroTarvoComponente) AS "
            "NumeroTarvoComponente,Min(REFERENCIACRUZADA1.NumeroClienteConcorrente) AS "
            "NumeroClienteConcorrente,IIF(IsNull(Min(PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo)),"
            "'N','S') "
            "AS FazParteJogoReparo FROM ((PECA_COMPONENTE LEFT JOIN PECA_COMPONENTE_JOGOREPARO ON "
            "PECA_COMPONENTE.CodigoPeca = PECA_COMPONENTE_JOGOREPARO.CodigoPeca AND "
            "PECA_COMPONENTE.ItemComponente = PECA_COMPONENTE_JOGOREPARO.ItemComponente) INNER "
            "JOIN COMPONENTE ON PECA_COMPONENTE.CodigoComponente = COMPONENTE.CodigoComponente) "
            "LEFT JOIN REFERENCIACRUZADA1 ON COMPONENTE.NumeroTarvoComponente = "
            "REFERENCIACRUZADA1.NumeroTarvo WHERE PECA_COMPONENTE.CodigoPeca = 1 GROUP BY "
            "PECA_COMPONENTE.ItemComponente ORDER BY 3,1",
            {"  12|2|2001|A71|S", " 100|4|2001|A71|N", "   7|1|2002|-|S", "  12a|1.5|2003|-|N"});
        row("query in the select list",
            "SELECT ItemComponente,(SELECT DescricaoJogoReparo FROM JOGOREPARO WHERE "
            "CodigoJogoReparo = PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo) AS d FROM "
            "PECA_COMPONENTE_JOGOREPARO ORDER BY ItemComponente, 2",
            {"   7|Jogo completo", "  12|Jogo completo", "  12|Jogo de anéis"});
        row("quotes", "SELECT \"d'água \"\"x\"\"\", 'd''água \"x\"', \"SELECT [a] -- *\"",
            {"d'água \"x\"|d'água \"x\"|SELECT [a] -- *"});
        row("double quotes are text",
            "SELECT CodigoPeca FROM PECA WHERE \"CodigoPeca\" = 'codigopeca' AND CodigoPeca < 2",
            {"1"});
        row("precedence", "SELECT 2+3*4, -2^2, 7\\2*2, 10 MOD 4+1, 1 & 2+3, 2^3^2, 8-3-2",
            {"14|-4|1|3|15|64|3"});
        row("arithmetic", u"SELECT 7/2, 7.5\\2, -7\\2, 7 MOD 2.5, 1/0, 5\\0, 2^0.5 > 1.41"_s,
            {"3.5|4|-3|1|-|-|-1"});
        row("two minus signs", "SELECT 5--3, 5 - -CodigoPeca FROM PECA WHERE CodigoPeca=1",
            {"8|6"});
        row("plus and ampersand",
            "SELECT 'a'+'b', Null & 'a', Null & Null, 'a'+Null, 1 & 2.50, NumeroTarvoPeca+'x', "
            "CodigoPeca+1 FROM PECA WHERE CodigoPeca = 1",
            {"ab|a|-|-|12.5|1001x|2"});
        row("conditions as values",
            "SELECT 1=1, True, False, Not True, 1>2, 'a' Like 'A*', 1 In (2,3), Null = 1, (1=1) = "
            "True, True Xor True, True Eqv False, False Imp False",
            {"-1|-1|0|0|0|-1|0|-|-1|0|0|-1"});
        row("comparing texts without a column",
            "SELECT 'Á' = 'á', 'a' < 'B', 'e' = 'é', UCase('a') = 'a', 'b' Between 'A' And 'C', "
            "'X' In ('x'), IIF(1=1,'á','') < 'B'",
            {"-1|-1|0|-1|-1|-1|-1"});
        row("order of computed texts",
            "SELECT DescricaoPeca & '' AS d FROM PECA WHERE CodigoPeca <> 5 ORDER BY 1",
            {"Árvore de comando", "ARVORE LISA", "Êmbolo", "embolo 1/2\""});
        row("order by a computed text",
            "SELECT CodigoPeca FROM PECA WHERE CodigoPeca <> 5 ORDER BY DescricaoPeca & '' DESC",
            {"4", "3", "2", "1"});
        row("distinct of computed texts",
            "SELECT DISTINCT TipoClienteConcorrente & '' FROM CLIENTECONCORRENTE ORDER BY 1",
            {"C", "I"});
        row("halves of two kinds",
            "SELECT n FROM (SELECT 1 AS n UNION ALL SELECT 'a') AS u WHERE n = 'a'", {"a"});
        row("dates",
            "SELECT #12/31/1999#, #1999-12-31 18:00:00#, #6:00 PM#, #31/12/1999#, "
            "DateSerial(2024,2,29)+TimeSerial(12,0,0), DateSerial(2024,14,0)",
            {"36525|36525.75|0.75|36525|45351.5|45688.0"});
        row("names",
            "SELECT [p].[CodigoPeca] AS [código da peça], p!NumeroTarvoPeca AS [Group] FROM [PECA] "
            "AS [p] WHERE [p].CODIGOPECA = 1;",
            {"1|1001"});
        row("words of the engine as names",
            "SELECT t.[Index], Glob, Limit FROM (SELECT 1 AS [Index], 2 AS Glob, 3 AS Limit) AS t "
            "ORDER BY t.[Index]",
            {"1|2|3"});
        row("like",
            "SELECT CodigoPeca FROM PECA WHERE NumeroTarvoPeca LIKE '##?*' AND NOT "
            "(NumeroTarvoPeca LIKE '*[!0-9]*')",
            {"1", "2"});
        row("not like",
            "SELECT CodigoPeca FROM PECA WHERE ArquivoFotoPeca NOT LIKE 'a*' ORDER BY 1",
            {"2", "3", "4"});
        row("like on numbers",
            u"SELECT QuantidadeComponente"_s + item +
                u"WHERE QuantidadeComponente LIKE '1*' ORDER BY 1"_s,
            {"1", "1", "1.5"});
        row("lone wildcard and Null",
            "SELECT Count(*) FROM PECA WHERE ArquivoFotoPeca LIKE '*' OR NOT (ArquivoFotoPeca LIKE "
            "'*')",
            {"4"});
        row("null tests",
            "SELECT CodigoPeca FROM PECA WHERE IsNull(CodigoFigura) AND ArquivoFotoPeca IS NOT "
            "NULL ORDER BY CodigoPeca DESC",
            {"4", "2"});
        row("top keeps ties",
            "SELECT TOP 1 DescricaoVeiculo, CodigoVeiculo FROM VEICULO ORDER BY DescricaoVeiculo "
            "DESC",
            {"Trator T1|31", "Trator T1|32"});
        row("top without order", "SELECT TOP 2 CodigoPeca FROM PECA", {"1", "2"});
        row("top percent", "SELECT TOP 30 PERCENT CodigoPeca AS c FROM PECA ORDER BY c",
            {"1", "2"});
        row("top distinct", "SELECT DISTINCT TOP 2 DescricaoVeiculo FROM VEICULO ORDER BY 1",
            {"Caminhão", "Trator T1"});
        row("correlated top",
            "SELECT CodigoPeca, (SELECT TOP 1 ItemComponente FROM PECA_COMPONENTE AS c WHERE "
            "c.CodigoPeca = PECA.CodigoPeca ORDER BY QuantidadeComponente DESC) AS i FROM PECA "
            "WHERE "
            "CodigoPeca IN (SELECT TOP 50 PERCENT v.CodigoPeca FROM VEICULO_PECA AS v ORDER BY "
            "v.CodigoVeiculo) OR CodigoPeca = 5",
            {"1| 100", "5|-"});
        row("top of a star", "SELECT TOP 1 * FROM VEICULO_PECA AS v ORDER BY v.CodigoVeiculo DESC",
            {"33|3"});
        row("top distinct keeps ties",
            "SELECT DISTINCT TOP 1 CodigoPeca, CodigoComponente FROM PECA_COMPONENTE ORDER BY 1",
            {"1|11", "1|12", "1|13"});
        row("top of tops",
            u"SELECT TOP 1 x FROM "_s + u"(SELECT TOP 2 x FROM "_s.repeated(20) +
                u"(SELECT CodigoPeca AS x FROM PECA)"_s + u" AS t ORDER BY x DESC)"_s.repeated(20) +
                u" AS t ORDER BY x"_s,
            {"4"});
        row("accents in names",
            "SELECT PEÇAS.[AÇÃO] AS É FROM (SELECT 1 AS Ação) AS Peças WHERE peças.ação = 1 ORDER "
            "BY "
            "é",
            {"1"});
        row("groups by more than columns",
            "SELECT CodigoPeca Mod 2 AS par, Left(NumeroTarvoPeca, 1) & '!', Count(*) + 1 FROM "
            "PECA "
            "GROUP BY CodigoPeca Mod 2, Left(PECA.NumeroTarvoPeca, 1) HAVING Max(CodigoPeca) > 3 "
            "ORDER BY par, Count(*)",
            {"0|1!|3", "1|9!|2"});
        row("distinctrow",
            "SELECT DISTINCTROW PECA.NumeroTarvoPeca FROM PECA INNER JOIN PECA_COMPONENTE ON "
            "PECA.CodigoPeca = PECA_COMPONENTE.CodigoPeca ORDER BY 1",
            {"1001", "K24"});
        row("union",
            "SELECT Count(*) FROM (SELECT 'a' AS x FROM UMREGISTRO UNION SELECT 'A' FROM "
            "UMREGISTRO UNION ALL SELECT 'á' FROM UMREGISTRO) AS t",
            {"2"});
        row("union in brackets", "(SELECT 2 AS x) UNION ALL (SELECT 1) ORDER BY 1", {"1", "2"});
        row("comma join",
            "SELECT a.CodigoJogoReparo, b.CodigoVeiculo FROM JOGOREPARO a, VEICULO b WHERE "
            "a.CodigoJogoReparo+10 = b.CodigoVeiculo",
            {"21|31", "22|32"});
        row("right join",
            "SELECT PECA.CodigoPeca, FOTOPECAPESQUISA.CodigoFotoPecaPesquisa FROM FOTOPECAPESQUISA "
            "RIGHT JOIN PECA ON PECA.CodigoFotoPecaPesquisa = "
            "FOTOPECAPESQUISA.CodigoFotoPecaPesquisa WHERE PECA.CodigoPeca > 3 ORDER BY 1",
            {"4|2", "5|-"});
        row("join in brackets on the right",
            "SELECT V.CodigoVeiculo, PECA.CodigoPeca FROM VEICULO AS V LEFT JOIN (VEICULO_PECA "
            "INNER JOIN PECA ON VEICULO_PECA.CodigoPeca = PECA.CodigoPeca) ON V.CodigoVeiculo = "
            "VEICULO_PECA.CodigoVeiculo ORDER BY 1",
            {"31|1", "32|1", "33|3"});
        row("subqueries",
            "SELECT CodigoPeca FROM PECA WHERE CodigoPeca IN (SELECT CodigoPeca FROM VEICULO_PECA) "
            "AND EXISTS (SELECT * FROM PECA_COMPONENTE WHERE PECA_COMPONENTE.CodigoPeca = "
            "PECA.CodigoPeca) AND CodigoPeca = ANY (SELECT CodigoPeca FROM VEICULO_PECA) AND "
            "DescricaoPeca > (SELECT Min(DescricaoPeca) FROM PECA)",
            {"3"});
        row("queries about a group, and from within a row",
            "SELECT CodigoPeca AS c, (SELECT Max(v.CodigoVeiculo) + PECA.CodigoPeca FROM "
            "VEICULO_PECA "
            "AS v WHERE v.CodigoPeca = PECA.CodigoPeca AND EXISTS (SELECT * FROM VEICULO WHERE "
            "CodigoVeiculo = v.CodigoVeiculo) ORDER BY 1) AS m FROM PECA GROUP BY CodigoPeca "
            "HAVING CodigoPeca IN (1, 3)",
            {"1|33", "3|36"});
        row("groups",
            u"SELECT CodigoPeca, Count(*), Sum(QuantidadeComponente), Avg(QuantidadeComponente) AS "
            "a, First(ItemComponente), Last(ItemComponente)"_s +
                item + u"GROUP BY CodigoPeca HAVING Count(*) > 1"_s,
            {"1|4|8.5|2.125|  12| 100"});
        row("texts",
            "SELECT Len('ação'), Left('Peça',3), Right$('Peça',2), Mid('abcdef',2,3), "
            "Mid('abc',9), InStr('Êmbolo','BOL'), InStr(3,'abcabc','b'), UCase('ação'), "
            "LCase('ÉS'), '['&Trim('  a ')&LTrim('  a ')&RTrim('  a ')&']', "
            "Replace('a.b.c','.','--')",
            {"4|Peç|ça|bcd||3|5|AÇÃO|és|[aa   a]|a--b--c"});
        row("more texts",
            "SELECT Space(2) & String(3,'xy') & Chr(65), Asc('A'), StrReverse('abc'), "
            "StrComp('a','Á'), Val(' 12,5'), Val('1.5x'), Str(5), CStr(2.50), Nz(Null,'n'), "
            "Nz(Null) & 'x'",
            {"  xxxA|65|cba|-1|12|1.5| 5|2.5|n|x"});
        row("numbers",
            "SELECT Abs(-3), Int(-1.5), Fix(-1.5), Round(2.5), Round(3.5), Round(2.345,2), "
            "Sgn(-7), Sqr(16), CInt(0.5), CInt(1.5), CLng('12'), CBool(3), CByte(255), "
            "CCur(1.00005)",
            {"3|-2|-1|2|4|2.34|-1|4|0|2|12|-1|255|1"});
        row("parts of dates",
            "SELECT Year(#3/15/2024#), Month(#3/15/2024#), Day(#3/15/2024#), Hour(#6:07:08#), "
            "Minute(#6:07:08#), Second(#6:07:08#), Weekday(#3/15/2024#), "
            "DatePart('q',#3/15/2024#), DatePart('ww',#1/7/2024#), Year(-1)",
            {"2024|3|15|6|7|8|6|1|2|1899"});
        row("date arithmetic",
            "SELECT DateAdd('m',1,#1/31/2024#) - #2/29/2024#, "
            "DateDiff('yyyy',#12/31/2023#,#1/1/2024#), DateDiff('d',#2/28/2024#,#3/1/2024#), "
            "DateDiff('n',#1/1/2024 10:59:59#,#1/1/2024 11:00#), CDate('15/03/2024') = #3/15/2024#",
            {"0.0|1|2|1|-1"});
        row("format",
            "SELECT Format(1234.5,'#,##0.00'), Format(7,'000'), Format(0.256,'0.0%'), "
            "Format(-3,'0;(0)'), Format(#3/5/2024 14:07#,'dd/mm/yyyy hh:mm'), Format(#3/5/2024#,'d "
            "\"de\" mmmm'), Format('abc','>'), Format(1.50)",
            {"1.234,50|007|25,6%|(3)|05/03/2024 14:07|5 de março|ABC|1.5"});
        row("choices",
            "SELECT Switch(1=2,'a',2=2,'b'), Choose(2,'x','y'), Choose(3,'x','y'), "
            "IIF(Null,'s','n'), IIF('a' Like 'b*',1,2)",
            {"b|y|-|n|2"});
    }
    void Queries() {
        QFETCH(QString, text);
        QFETCH(QStringList, rows);
        QCOMPARE(db_->Run(text), rows);
    }

    void NamesColumnsAsTheTextDoes() {
        const QString text =
            u"SELECT PECA.CodigoPeca, 1+1, Count(*) AS Quantos FROM PECA GROUP BY PECA.CodigoPeca "
            "HAVING PECA.CodigoPeca = 5"_s;
        QCOMPARE(db_->Run(text, true).first(), u"CodigoPeca|Expr1001|Quantos"_s);
    }

    void Changes_data() {
        const Table<QStringList, QString, QStringList> row("texts", "query", "rows");
        row("selection", {"UPDATE CODIGOCLIENTECONCORRENTE SET CodigoClienteConcorrente = 3"},
            "SELECT * FROM REFERENCIACRUZADA1", {"1002|A7"});
        row("lock", {"UPDATE CONTROLETRAN SET a = a"}, "SELECT a FROM CONTROLETRAN", {"0"});
        row("verification",
            {"UPDATE UMREGISTRO SET "
             "DataUltimaVerificacao=DateSerial(2024,3,5)+TimeSerial(0,0,1),"
             "FlagErroUltimaVerificacao=1"},
            "SELECT Format(DataUltimaVerificacao,'dd/mm/yyyy hh:nn:ss'), FlagErroUltimaVerificacao "
            "FROM UMREGISTRO",
            {"05/03/2024 00:00:01|1"});
        row("version",
            {"UPDATE UMREGISTRO SET Versao                    = 7,VersaoAnterior            = "
             "5,FlagErroUltimaVerificacao = 0"},
            "SELECT Versao, VersaoAnterior FROM UMREGISTRO", {"7|5"});
        row("insert",
            {"INSERT INTO VEICULO (CodigoVeiculo, DescricaoVeiculo) VALUES (40, \"Carro d'água\")",
             "INSERT INTO VEICULO VALUES (2.5, 'B', Null)"},
            "SELECT * FROM VEICULO WHERE IsNull(CodigoClienteConcorrente) ORDER BY 1",
            {"2|B|-", "40|Carro d'água|-"});
        row("insert from a query by name",
            {"INSERT INTO VEICULO SELECT DescricaoPeca AS DescricaoVeiculo, CodigoPeca AS "
             "CodigoVeiculo FROM PECA WHERE CodigoPeca = 3",
             "INSERT INTO FOTOPECAPESQUISA SELECT * FROM FOTOPECAPESQUISA WHERE False"},
            "SELECT * FROM VEICULO WHERE CodigoVeiculo = 3", {"3|Êmbolo|-"});
        row("update over a join",
            {"UPDATE PECA INNER JOIN VEICULO_PECA ON PECA.CodigoPeca = VEICULO_PECA.CodigoPeca SET "
             "PECA.ArquivoFotoPeca = VEICULO_PECA.CodigoVeiculo & '.bmp', CodigoFigura = "
             "CodigoFigura + 1 WHERE VEICULO_PECA.CodigoVeiculo = 33"},
            "SELECT CodigoPeca, ArquivoFotoPeca, CodigoFigura FROM PECA WHERE CodigoPeca = 1 OR "
            "CodigoPeca = 3",
            {"1|a.bmp|1", "3|33.bmp|3"});
        row("delete all", {"DELETE * FROM VEICULO_PECA"}, "SELECT Count(*) FROM VEICULO_PECA",
            {"0"});
        row("delete by a column",
            {"DELETE VEICULO_PECA.CodigoPeca FROM VEICULO_PECA WHERE CodigoVeiculo = 31",
             "DELETE VEICULO_PECA.*, VEICULO_PECA.CodigoPeca FROM VEICULO_PECA WHERE CodigoVeiculo "
             "= "
             "32"},
            "SELECT * FROM VEICULO_PECA", {"33|3"});
        row("delete over tables with commas",
            {"DELETE CodigoPeca FROM VEICULO_PECA, VEICULO AS v WHERE VEICULO_PECA.CodigoVeiculo = "
             "v.CodigoVeiculo AND v.DescricaoVeiculo = 'caminhão'"},
            "SELECT * FROM VEICULO_PECA", {"31|1", "32|1"});
        row("update over tables with commas",
            {"UPDATE PECA, VEICULO_PECA AS v SET ArquivoFotoPeca = v.CodigoVeiculo WHERE "
             "PECA.CodigoPeca = v.CodigoPeca AND v.CodigoVeiculo = 33"},
            "SELECT ArquivoFotoPeca FROM PECA WHERE CodigoPeca = 3", {"33"});
        row("names with accents",
            {"CREATE TABLE AÇÃO (Código LONG, Peça TEXT(5))",
             "INSERT INTO [ação] (CÓDIGO, peça) VALUES (1, 'a')",
             "UPDATE Ação SET PEÇA = código & 'b' WHERE AÇÃO.código = 1",
             "ALTER TABLE ação ALTER COLUMN peça TEXT(9)", "CREATE INDEX É ON ação (peça)",
             "DROP INDEX é ON AÇÃO", "ALTER TABLE AÇÃO DROP COLUMN CÓDIGO"},
            "SELECT * FROM AçãO", {"1b"});
        row("delete over a join",
            {"DELETE VEICULO_PECA.* FROM VEICULO_PECA INNER JOIN VEICULO ON "
             "VEICULO_PECA.CodigoVeiculo = VEICULO.CodigoVeiculo WHERE VEICULO.DescricaoVeiculo "
             "LIKE 'trator*'"},
            "SELECT * FROM VEICULO_PECA", {"33|3"});
        row("delete what has no partner",
            {"DELETE PECA.* FROM PECA LEFT JOIN VEICULO_PECA AS v ON PECA.CodigoPeca = "
             "v.CodigoPeca WHERE v.CodigoPeca IS NULL"},
            "SELECT CodigoPeca FROM PECA", {"1", "3"});
        row("select into",
            {"SELECT CodigoVeiculo, DescricaoVeiculo & '!' AS d, DescricaoVeiculo INTO NOVA FROM "
             "VEICULO WHERE CodigoVeiculo < 33",
             "INSERT INTO NOVA VALUES (1,'A','B')"},
            "SELECT * FROM NOVA WHERE d = 'trator t1!' OR DescricaoVeiculo = 'b' ORDER BY 1",
            {"1|A|B", "31|Trator T1!|Trator T1", "32|Trator T1!|Trator T1"});
    }
    void Changes() {
        QFETCH(QStringList, texts);
        QFETCH(QString, query);
        QTEST(db_->RunAll(texts, query), "rows");
    }

    void BeginningsUseTheIndex_data() {
        const Table<QString, QString> row("where", "plan");
        row("prefix", "LIKE 'abc*'", "(NumeroTarvoPeca>? AND NumeroTarvoPeca<?)");
        row("whole", "LIKE 'abc'", "(NumeroTarvoPeca>? AND NumeroTarvoPeca<?)");
        row("equal", "= 'abc'", "(NumeroTarvoPeca=?)");
        row("list", "IN ('abc', 'd')", "(NumeroTarvoPeca=?)");
    }
    void BeginningsUseTheIndex() {
        QFETCH(QString, where);
        QFETCH(QString, plan);
        const auto translation =
            db_->Translate(u"SELECT CodigoPeca FROM PECA WHERE NumeroTarvoPeca "_s + where);
        const QStringList steps =
            db_->RunNative("EXPLAIN QUERY PLAN " + translation.statements.first());
        QVERIFY2(steps.join(u'\n').contains(u"PECA_NUMERO "_s + plan),
                 qPrintable(steps.join(u'\n')));
    }

    void Refuses_data() {
        const Table<QString, Failure> row("text", "failure");
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
        row("many negations", u"SELECT "_s + u"NOT "_s.repeated(100000) + u"1"_s,
            Failure::SyntaxError);
        row("many operators", u"SELECT 1"_s + u"+1"_s.repeated(100000), Failure::SyntaxError);
        row("many subqueries", u"SELECT * FROM "_s + u"(SELECT * FROM "_s.repeated(50000),
            Failure::SyntaxError);
        row("many unions", u"SELECT 1"_s + u" UNION SELECT 1"_s.repeated(1000),
            Failure::SyntaxError);
        row("unknown function", "SELECT DLookup('a','b')", Failure::UnknownFunction);
        row("half a pair", "SELECT Switch(1=1, 2, 3)", Failure::SyntaxError);
        row("star", "SELECT Max(*) FROM PECA", Failure::SyntaxError);
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
        row("beside an aggregate", "SELECT Count(*), CodigoPeca + 1 FROM PECA",
            Failure::NotGrouped);
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
        row("unqualified",
            correlated.arg(u"1 IN (SELECT 1 FROM VEICULO WHERE DescricaoPeca = 'x')"_s),
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
    }
    void Refuses() {
        QFETCH(QString, text);
        QFETCH(Failure, failure);
        try {
            db_->Run(text);
            QFAIL("accepted");
        } catch (const Erro& erro) {
            QCOMPARE(erro.Number(), static_cast<int>(failure));
        }
    }

    void FailingFunctionsFailTheStatement() {
        QVERIFY_THROWS_EXCEPTION(Erro, db_->Run("SELECT CInt(40000)"));
        QVERIFY_THROWS_EXCEPTION(Erro,
                                 db_->Run("INSERT INTO PECA (CodigoPeca) SELECT Null & Null"));
        QVERIFY_THROWS_EXCEPTION(Erro, db_->Run("SELECT CLng('abc')"));
        QVERIFY_THROWS_EXCEPTION(Erro, db_->Run("SELECT 1 WHERE 'a' LIKE ('[' & '')"));
    }

private:
    std::unique_ptr<MemoryDatabase> db_;
};

TARVO_TEST(TestDialect);
#include "test_dialect.moc"
