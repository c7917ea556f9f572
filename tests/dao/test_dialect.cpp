#include "memorydatabase.h"
#include "platform/dao/dialect.h"
#include "platform/dao/errors.h"
#include "platform/erro.h"
#include "support/testmain.h"

#include <QTest>

using namespace Qt::StringLiterals;
using dao::Failure;

namespace {

const QString ForPart =
    u" FROM ((PECA_COMPONENTE LEFT JOIN PECA_COMPONENTE_JOGOREPARO ON "
    "PECA_COMPONENTE.CodigoPeca = PECA_COMPONENTE_JOGOREPARO.CodigoPeca AND "
    "PECA_COMPONENTE.ItemComponente = PECA_COMPONENTE_JOGOREPARO.ItemComponente) INNER JOIN "
    "COMPONENTE ON PECA_COMPONENTE.CodigoComponente = COMPONENTE.CodigoComponente) LEFT JOIN "
    "REFERENCIACRUZADA1 ON COMPONENTE.NumeroTarvoComponente = REFERENCIACRUZADA1.NumeroTarvo "
    "WHERE PECA_COMPONENTE.CodigoPeca = 1 "_s;

// The part search for one kind of row.
QString Arm(const QString& table, const QString& kind, const QString& customer, const QString& join,
            const QString& where) {
    QString text =
        u"SELECT ?????.NumeroTarvo????? As NumeroTarvo,?????.Descricao????? AS "
        "Descricao,%1,'!!!!!' AS Tipo,Codigo????? AS Codigo FROM ????? %2%3"_s.arg(customer, join,
                                                                                   where);
    return text.replace(u"?????"_s, table).replace(u"!!!!!"_s, kind);
}

QString Search(const QString& where, const QString& order, bool joined = false) {
    const QString customer = joined ? u"REFERENCIACRUZADA1.NumeroClienteConcorrente"_s
                                    : u"'' AS NumeroClienteConcorrente"_s;
    const QString join = joined ? u"LEFT JOIN REFERENCIACRUZADA1 ON ?????.NumeroTarvo????? = "
                                  "REFERENCIACRUZADA1.NumeroTarvo "_s
                                : QString();
    return Arm(u"COMPONENTE"_s, u"Componente"_s, customer, join, where) + u"UNION ALL "_s +
           Arm(u"JOGOREPARO"_s, u"Jogo de Reparo"_s, customer, join, where) + u"UNION ALL "_s +
           Arm(u"PECA"_s, u"Peça"_s, customer, join, where) + u"ORDER BY "_s + order;
}

void Expect(const QString& name, const QString& text, const QStringList& rows) {
    QTest::newRow(qPrintable(name)) << text << rows;
}

}  // namespace

class TestDialect : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        db_ = std::make_unique<MemoryDatabase>();
        db_->MakeCatalogue();
    }

    void TextsOfTheSystem_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("rows");
        Expect(
            u"whole catalogue by kind"_s, Search({}, u"4,1"_s),
            {u"1003|Zíper||Componente|14"_s, u"2001|Anel||Componente|11"_s,
             u"2002|Mola||Componente|12"_s, u"2003|Ônibus, trava||Componente|13"_s,
             u"3001|Jogo de anéis||Jogo de Reparo|21"_s, u"3002|Jogo completo||Jogo de Reparo|22"_s,
             u"1001|Árvore de comando||Peça|1"_s, u"1002|ARVORE LISA||Peça|2"_s,
             u"12A|embolo 1/2\"||Peça|4"_s, u"99|Pino d´água||Peça|5"_s, u"K24|Êmbolo||Peça|3"_s});
        Expect(u"number"_s, Search(u"WHERE ?????.NumeroTarvo????? LIKE '100*' "_s, u"1"_s),
               {u"1001|Árvore de comando||Peça|1"_s, u"1002|ARVORE LISA||Peça|2"_s,
                u"1003|Zíper||Componente|14"_s});
        Expect(u"accented description"_s,
               Search(u"WHERE ?????.Descricao????? LIKE 'ÁRV*' "_s, u"2"_s),
               {u"1001|Árvore de comando||Peça|1"_s});
        Expect(u"inside the description"_s,
               Search(u"WHERE ?????.Descricao????? LIKE '*jog*' "_s, u"2"_s),
               {u"3002|Jogo completo||Jogo de Reparo|22"_s,
                u"3001|Jogo de anéis||Jogo de Reparo|21"_s});
        Expect(
            u"lone wildcard"_s,
            Search(u"WHERE ?????.NumeroTarvo????? LIKE '*' AND ?????.Descricao????? LIKE 'e*' "_s,
                   u"2"_s),
            {u"12A|embolo 1/2\"||Peça|4"_s});
        Expect(u"customer's number"_s,
               Search(u"WHERE REFERENCIACRUZADA1.NumeroClienteConcorrente LIKE 'A7*' "_s, u"3"_s,
                      true),
               {u"1001|Árvore de comando|A70|Peça|1"_s, u"2001|Anel|A71|Componente|11"_s});
        Expect(u"competitor's number"_s,
               Search(u"WHERE REFERENCIACRUZADA1.NumeroClienteConcorrente = 'c3' "_s, u"3"_s, true),
               {u"3001|Jogo de anéis|C3|Jogo de Reparo|21"_s});
        Expect(u"by customer's number"_s,
               Search(u"WHERE ?????.NumeroTarvo????? LIKE '1*' "_s, u"3"_s, true)
                   .section(u"UNION ALL "_s, 2),
               {u"1002|ARVORE LISA|-|Peça|2"_s, u"12A|embolo 1/2\"|-|Peça|4"_s,
                u"1001|Árvore de comando|A70|Peça|1"_s, u"1001|Árvore de comando|B1|Peça|1"_s});
        Expect(u"sentinel"_s,
               u"SELECT PECA.NumeroTarvoPeca As NumeroTarvo,PECA.DescricaoPeca AS "
               "Descricao,PECA.NumeroTarvoPeca As NumeroClienteConcorrente,'' AS Tipo FROM PECA "
               "WHERE CodigoPeca = -5"_s,
               {});
        Expect(u"vehicles"_s,
               u"SELECT VEICULO.DescricaoVeiculo As Veiculo,CLIENTECONCORRENTE."
               "DescricaoClienteConcorrente AS Fabricante,VEICULO.CodigoVeiculo AS Codigo FROM "
               "VEICULO INNER JOIN CLIENTECONCORRENTE ON VEICULO.CodigoClienteConcorrente = "
               "CLIENTECONCORRENTE.CodigoClienteConcorrente WHERE VEICULO.DescricaoVeiculo LIKE "
               "'tra*' ORDER BY 1,2"_s,
               {u"Trator T1|Andorinha|32"_s, u"Trator T1|Órion|31"_s});
        Expect(u"customers"_s,
               u"SELECT CodigoClienteConcorrente, DescricaoClienteConcorrente FROM "
               "CLIENTECONCORRENTE WHERE TipoClienteConcorrente = 'I' ORDER BY "
               "DescricaoClienteConcorrente"_s,
               {u"2|Andorinha"_s, u"1|Órion"_s});
        Expect(u"parts of a component"_s,
               u"SELECT DISTINCT PECA.NumeroTarvoPeca,PECA.DescricaoPeca,"
               "REFERENCIACRUZADA1.NumeroClienteConcorrente,PECA_COMPONENTE.CodigoPeca,"
               "PECA.ArquivoFotoPeca FROM (PECA_COMPONENTE INNER JOIN PECA ON "
               "PECA_COMPONENTE.CodigoPeca = PECA.CodigoPeca) LEFT JOIN REFERENCIACRUZADA1 ON "
               "PECA.NumeroTarvoPeca = REFERENCIACRUZADA1.NumeroTarvo WHERE "
               "PECA_COMPONENTE.CodigoComponente = 11 ORDER BY 1"_s,
               {u"1001|Árvore de comando|A70|1|a.bmp"_s, u"1001|Árvore de comando|B1|1|a.bmp"_s});
        Expect(u"parts of a picture"_s,
               u"SELECT PECA.NumeroTarvoPeca,REFERENCIACRUZADA1."
               "NumeroClienteConcorrente,PECA.CodigoPeca FROM (FOTOPECAPESQUISA INNER JOIN PECA ON "
               "FOTOPECAPESQUISA.CodigoFotoPecaPesquisa = PECA.CodigoFotoPecaPesquisa) LEFT JOIN "
               "REFERENCIACRUZADA1 ON PECA.NumeroTarvoPeca = REFERENCIACRUZADA1.NumeroTarvo WHERE "
               "FOTOPECAPESQUISA.CodigoFotoPecaPesquisa = 2 ORDER BY 1"_s,
               {u"12A|-|4"_s, u"K24|-|3"_s});
        Expect(u"vehicles of a part"_s,
               u"SELECT VEICULO.DescricaoVeiculo AS Veiculo, "
               "CLIENTECONCORRENTE.DescricaoClienteConcorrente AS Fabricante FROM (VEICULO_PECA "
               "INNER JOIN VEICULO ON VEICULO_PECA.CodigoVeiculo = VEICULO.CodigoVeiculo) INNER "
               "JOIN CLIENTECONCORRENTE ON VEICULO.CodigoClienteConcorrente = "
               "CLIENTECONCORRENTE.CodigoClienteConcorrente WHERE VEICULO_PECA.CodigoPeca = 1 "
               "ORDER BY 1,2"_s,
               {u"Trator T1|Andorinha"_s, u"Trator T1|Órion"_s});
        const QString list =
            u"SELECT PECA_COMPONENTE.ItemComponente,Min(PECA_COMPONENTE."
            "QuantidadeComponente) AS QuantidadeComponente,Min(COMPONENTE.DescricaoComponente) AS "
            "DescricaoComponente,Min(COMPONENTE.NumeroTarvoComponente) AS NumeroTarvoComponente,"
            "Min(REFERENCIACRUZADA1.NumeroClienteConcorrente) AS NumeroClienteConcorrente,IIF("
            "IsNull(Min(PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo)),'N','S') AS "
            "FazParteJogoReparo "_s +
            ForPart;
        const QStringList byItem = {u"   7|1|Mola|2002|-|S"_s, u"  12|2|Anel|2001|A71|S"_s,
                                    u"  12a|1.5|Ônibus, trava|2003|-|N"_s,
                                    u" 100|4|Anel|2001|A71|N"_s};
        Expect(u"component list"_s, list + u"GROUP BY PECA_COMPONENTE.ItemComponente ORDER BY 1"_s,
               byItem);
        Expect(u"component list of a kit, by description"_s,
               list +
                   u"AND PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo = 22 GROUP BY "
                   "PECA_COMPONENTE.ItemComponente ORDER BY 3"_s,
               {byItem.at(1), byItem.at(0)});
        Expect(u"component list by number"_s,
               list + u"GROUP BY PECA_COMPONENTE.ItemComponente ORDER BY 4,1"_s,
               {byItem.at(1), byItem.at(3), byItem.at(0), byItem.at(2)});
        Expect(u"kits of an item"_s,
               u"SELECT JOGOREPARO.DescricaoJogoReparo,JOGOREPARO."
               "NumeroTarvoJogoReparo,REFERENCIACRUZADA1.NumeroClienteConcorrente,"
               "PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo FROM (PECA_COMPONENTE_JOGOREPARO INNER "
               "JOIN JOGOREPARO ON PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo = "
               "JOGOREPARO.CodigoJogoReparo) LEFT JOIN REFERENCIACRUZADA1 ON "
               "JOGOREPARO.NumeroTarvoJogoReparo = REFERENCIACRUZADA1.NumeroTarvo WHERE "
               "PECA_COMPONENTE_JOGOREPARO.CodigoPeca = 1 AND "
               "PECA_COMPONENTE_JOGOREPARO.ItemComponente = '  12' ORDER BY 1"_s,
               {u"Jogo completo|3002|-|22"_s, u"Jogo de anéis|3001|C3|21"_s});
        Expect(u"kit in the select list"_s,
               u"SELECT PECA_COMPONENTE.ItemComponente,"
               "COMPONENTE.DescricaoComponente,(SELECT DescricaoJogoReparo FROM JOGOREPARO WHERE "
               "CodigoJogoReparo = PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo) AS "
               "DescricaoJogoReparo"_s +
                   ForPart + u"ORDER BY PECA_COMPONENTE.ItemComponente, 3"_s,
               {u"   7|Mola|Jogo completo"_s, u"  12|Anel|Jogo completo"_s,
                u"  12|Anel|Jogo de anéis"_s, u"  12a|Ônibus, trava|-"_s, u" 100|Anel|-"_s});
        Expect(
            u"markers"_s,
            u"SELECT FIGURADETALHADA1.ArquivoFigura,FIGURADETALHADA1."
            "ItemComponente,FIGURADETALHADA1.LLeft,FIGURADETALHADA1.TTop,FIGURADETALHADA1."
            "CodigoFiguraDetalhada,PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo FROM "
            "FIGURADETALHADA1 LEFT JOIN PECA_COMPONENTE_JOGOREPARO ON (FIGURADETALHADA1."
            "CodigoPeca = PECA_COMPONENTE_JOGOREPARO.CodigoPeca) AND (FIGURADETALHADA1."
            "ItemComponente = PECA_COMPONENTE_JOGOREPARO.ItemComponente) WHERE "
            "FIGURADETALHADA1.CodigoPeca = 1 ORDER BY FIGURADETALHADA1.CodigoFiguraDetalhada"_s,
            {u"f.bmp|   7|30|40|1|22"_s, u"f.bmp|  12|10|20|2|21"_s, u"f.bmp|  12|10|20|2|22"_s});
        Expect(u"kits of a part"_s,
               u"SELECT DISTINCT PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo, "
               "JOGOREPARO.DescricaoJogoReparo FROM PECA_COMPONENTE_JOGOREPARO INNER JOIN "
               "JOGOREPARO ON PECA_COMPONENTE_JOGOREPARO.CodigoJogoReparo = "
               "JOGOREPARO.CodigoJogoReparo WHERE PECA_COMPONENTE_JOGOREPARO.CodigoPeca = 1 "
               "ORDER BY 2"_s,
               {u"22|Jogo completo"_s, u"21|Jogo de anéis"_s});
        Expect(u"settings"_s,
               u"SELECT DataEmissao,ComplementoDataEmissao,DataUltimaVerificacao,"
               "FlagErroUltimaVerificacao FROM UMREGISTRO"_s,
               {u"45000.0|-|-|0"_s});
    }
    void TextsOfTheSystem() {
        QFETCH(QString, text);
        QFETCH(QStringList, rows);
        QCOMPARE(db_->Run(text), rows);
    }

    void Queries_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("rows");
        const QString item = u" FROM PECA_COMPONENTE "_s;
        Expect(u"quotes"_s, u"SELECT \"d'água \"\"x\"\"\", 'd''água \"x\"', \"SELECT [a] -- *\""_s,
               {u"d'água \"x\"|d'água \"x\"|SELECT [a] -- *"_s});
        Expect(
            u"double quotes are text"_s,
            u"SELECT CodigoPeca FROM PECA WHERE \"CodigoPeca\" = 'codigopeca' AND CodigoPeca < 2"_s,
            {u"1"_s});
        Expect(u"precedence"_s, u"SELECT 2+3*4, -2^2, 7\\2*2, 10 MOD 4+1, 1 & 2+3, 2^3^2, 8-3-2"_s,
               {u"14|-4|1|3|15|64|3"_s});
        Expect(u"arithmetic"_s, u"SELECT 7/2, 7.5\\2, -7\\2, 7 MOD 2.5, 1/0, 5\\0, 2^0.5 > 1.41"_s,
               {u"3.5|4|-3|1|-|-|-1"_s});
        Expect(u"two minus signs"_s, u"SELECT 5--3, 5 - -CodigoPeca FROM PECA WHERE CodigoPeca=1"_s,
               {u"8|6"_s});
        Expect(u"plus and ampersand"_s,
               u"SELECT 'a'+'b', Null & 'a', Null & Null, 'a'+Null, "
               "1 & 2.50, NumeroTarvoPeca+'x', CodigoPeca+1 FROM PECA WHERE CodigoPeca = 1"_s,
               {u"ab|a|-|-|12.5|1001x|2"_s});
        Expect(
            u"conditions as values"_s,
            u"SELECT 1=1, True, False, Not True, 1>2, 'a' Like 'A*', "
            "1 In (2,3), Null = 1, (1=1) = True, True Xor True, True Eqv False, False Imp False"_s,
            {u"-1|-1|0|0|0|-1|0|-|-1|0|0|-1"_s});
        Expect(u"comparing texts without a column"_s,
               u"SELECT 'Á' = 'á', 'a' < 'B', 'e' = 'é', "
               "UCase('a') = 'a', 'b' Between 'A' And 'C', 'X' In ('x'), IIF(1=1,'á','') < 'B'"_s,
               {u"-1|-1|0|-1|-1|-1|-1"_s});
        Expect(u"order of computed texts"_s,
               u"SELECT DescricaoPeca & '' AS d FROM PECA WHERE "
               "CodigoPeca <> 5 ORDER BY 1"_s,
               {u"Árvore de comando"_s, u"ARVORE LISA"_s, u"Êmbolo"_s, u"embolo 1/2\""_s});
        Expect(u"distinct of computed texts"_s,
               u"SELECT DISTINCT TipoClienteConcorrente & '' FROM CLIENTECONCORRENTE ORDER BY 1"_s,
               {u"C"_s, u"I"_s});
        Expect(u"dates"_s,
               u"SELECT #12/31/1999#, #1999-12-31 18:00:00#, #6:00 PM#, "
               "#31/12/1999#, DateSerial(2024,2,29)+TimeSerial(12,0,0), DateSerial(2024,14,0)"_s,
               {u"36525|36525.75|0.75|36525|45351.5|45688.0"_s});
        Expect(u"names"_s,
               u"SELECT [p].[CodigoPeca] AS [código da peça], p!NumeroTarvoPeca AS [Group] "
               "FROM [PECA] AS [p] WHERE [p].CODIGOPECA = 1;"_s,
               {u"1|1001"_s});
        Expect(u"words of the engine as names"_s,
               u"SELECT t.[Index], Glob, Limit FROM (SELECT 1 AS "
               "[Index], 2 AS Glob, 3 AS Limit) AS t ORDER BY t.[Index]"_s,
               {u"1|2|3"_s});
        Expect(u"like"_s,
               u"SELECT CodigoPeca FROM PECA WHERE NumeroTarvoPeca LIKE '##?*' AND "
               "NOT (NumeroTarvoPeca LIKE '*[!0-9]*')"_s,
               {u"1"_s, u"2"_s});
        Expect(u"not like"_s,
               u"SELECT CodigoPeca FROM PECA WHERE ArquivoFotoPeca NOT LIKE 'a*' "
               "ORDER BY 1"_s,
               {u"2"_s, u"3"_s, u"4"_s});
        Expect(u"like on numbers"_s,
               u"SELECT QuantidadeComponente"_s + item +
                   u"WHERE QuantidadeComponente LIKE '1*' ORDER BY 1"_s,
               {u"1"_s, u"1"_s, u"1.5"_s});
        Expect(u"lone wildcard and Null"_s,
               u"SELECT Count(*) FROM PECA WHERE ArquivoFotoPeca LIKE "
               "'*' OR NOT (ArquivoFotoPeca LIKE '*')"_s,
               {u"4"_s});
        Expect(u"null tests"_s,
               u"SELECT CodigoPeca FROM PECA WHERE IsNull(CodigoFigura) AND "
               "ArquivoFotoPeca IS NOT NULL ORDER BY CodigoPeca DESC"_s,
               {u"4"_s, u"2"_s});
        Expect(u"top keeps ties"_s,
               u"SELECT TOP 1 DescricaoVeiculo, CodigoVeiculo FROM VEICULO "
               "ORDER BY DescricaoVeiculo DESC"_s,
               {u"Trator T1|31"_s, u"Trator T1|32"_s});
        Expect(u"top without order"_s, u"SELECT TOP 2 CodigoPeca FROM PECA"_s, {u"1"_s, u"2"_s});
        Expect(u"top percent"_s, u"SELECT TOP 30 PERCENT CodigoPeca AS c FROM PECA ORDER BY c"_s,
               {u"1"_s, u"2"_s});
        Expect(u"top distinct"_s,
               u"SELECT DISTINCT TOP 2 DescricaoVeiculo FROM VEICULO ORDER BY 1"_s,
               {u"Caminhão"_s, u"Trator T1"_s});
        Expect(u"top in a union"_s, u"SELECT TOP 1 CodigoPeca FROM PECA ORDER BY CodigoPeca"_s,
               {u"1"_s});
        Expect(u"distinctrow"_s,
               u"SELECT DISTINCTROW PECA.NumeroTarvoPeca FROM PECA INNER JOIN "
               "PECA_COMPONENTE ON PECA.CodigoPeca = PECA_COMPONENTE.CodigoPeca ORDER BY 1"_s,
               {u"1001"_s, u"K24"_s});
        Expect(u"union"_s,
               u"SELECT Count(*) FROM (SELECT 'a' AS x FROM UMREGISTRO UNION SELECT 'A' FROM "
               "UMREGISTRO UNION ALL SELECT 'á' FROM UMREGISTRO) AS t"_s,
               {u"2"_s});
        Expect(u"union in brackets"_s, u"(SELECT 2 AS x) UNION ALL (SELECT 1) ORDER BY 1"_s,
               {u"1"_s, u"2"_s});
        Expect(u"comma join"_s,
               u"SELECT a.CodigoJogoReparo, b.CodigoVeiculo FROM JOGOREPARO a, "
               "VEICULO b WHERE a.CodigoJogoReparo+10 = b.CodigoVeiculo"_s,
               {u"21|31"_s, u"22|32"_s});
        Expect(u"right join"_s,
               u"SELECT PECA.CodigoPeca, FOTOPECAPESQUISA.CodigoFotoPecaPesquisa "
               "FROM FOTOPECAPESQUISA RIGHT JOIN PECA ON PECA.CodigoFotoPecaPesquisa = "
               "FOTOPECAPESQUISA.CodigoFotoPecaPesquisa WHERE PECA.CodigoPeca > 3 ORDER BY 1"_s,
               {u"4|2"_s, u"5|-"_s});
        Expect(u"join in brackets on the right"_s,
               u"SELECT V.CodigoVeiculo, PECA.CodigoPeca FROM "
               "VEICULO AS V LEFT JOIN (VEICULO_PECA INNER JOIN PECA ON VEICULO_PECA.CodigoPeca = "
               "PECA.CodigoPeca) ON V.CodigoVeiculo = VEICULO_PECA.CodigoVeiculo ORDER BY 1"_s,
               {u"31|1"_s, u"32|1"_s, u"33|3"_s});
        Expect(u"subqueries"_s,
               u"SELECT CodigoPeca FROM PECA WHERE CodigoPeca IN (SELECT CodigoPeca "
               "FROM VEICULO_PECA) AND EXISTS (SELECT * FROM PECA_COMPONENTE WHERE "
               "PECA_COMPONENTE.CodigoPeca = PECA.CodigoPeca) AND CodigoPeca = ANY (SELECT "
               "CodigoPeca FROM VEICULO_PECA) AND DescricaoPeca > (SELECT Min(DescricaoPeca) FROM "
               "PECA)"_s,
               {u"3"_s});
        Expect(u"groups"_s,
               u"SELECT CodigoPeca, Count(*), Sum(QuantidadeComponente), "
               "Avg(QuantidadeComponente) AS a, First(ItemComponente), Last(ItemComponente)"_s +
                   item + u"GROUP BY CodigoPeca HAVING Count(*) > 1"_s,
               {u"1|4|8.5|2.125|  12| 100"_s});
        Expect(u"texts"_s,
               u"SELECT Len('ação'), Left('Peça',3), Right$('Peça',2), Mid('abcdef',2,3), "
               "Mid('abc',9), InStr('Êmbolo','BOL'), InStr(3,'abcabc','b'), UCase('ação'), "
               "LCase('ÉS'), "
               "'['&Trim('  a ')&LTrim('  a ')&RTrim('  a ')&']', Replace('a.b.c','.','--')"_s,
               {u"4|Peç|ça|bcd||3|5|AÇÃO|és|[aa   a]|a--b--c"_s});
        Expect(
            u"more texts"_s,
            u"SELECT Space(2) & String(3,'xy') & Chr(65), Asc('A'), StrReverse('abc'), "
            "StrComp('a','Á'), Val(' 12,5'), Val('1.5x'), Str(5), CStr(2.50), Nz(Null,'n'), Nz(Null) & 'x'"_s,
            {u"  xxxA|65|cba|-1|12.0|1.5| 5|2.5|n|x"_s});
        Expect(u"numbers"_s,
               u"SELECT Abs(-3), Int(-1.5), Fix(-1.5), Round(2.5), Round(3.5), "
               "Round(2.345,2), Sgn(-7), Sqr(16), CInt(0.5), CInt(1.5), CLng('12'), CBool(3), "
               "CByte(255), "
               "CCur(1.00005)"_s,
               {u"3|-2|-1|2|4|2.34|-1|4|0|2|12|-1|255|1"_s});
        Expect(u"parts of dates"_s,
               u"SELECT Year(#3/15/2024#), Month(#3/15/2024#), Day(#3/15/2024#), "
               "Hour(#6:07:08#), Minute(#6:07:08#), Second(#6:07:08#), Weekday(#3/15/2024#), "
               "DatePart('q',#3/15/2024#), DatePart('ww',#1/7/2024#), Year(-1)"_s,
               {u"2024|3|15|6|7|8|6|1|2|1899"_s});
        Expect(
            u"date arithmetic"_s,
            u"SELECT DateAdd('m',1,#1/31/2024#) - #2/29/2024#, "
            "DateDiff('yyyy',#12/31/2023#,#1/1/2024#), DateDiff('d',#2/28/2024#,#3/1/2024#), "
            "DateDiff('n',#1/1/2024 10:59:59#,#1/1/2024 11:00#), CDate('15/03/2024') = #3/15/2024#"_s,
            {u"0.0|1|2|1|-1"_s});
        Expect(u"format"_s,
               u"SELECT Format(1234.5,'#,##0.00'), Format(7,'000'), Format(0.256,'0.0%'), "
               "Format(-3,'0;(0)'), Format(#3/5/2024 14:07#,'dd/mm/yyyy hh:mm'), "
               "Format(#3/5/2024#,'d \"de\" mmmm'), Format('abc','>'), Format(1.50)"_s,
               {u"1.234,50|007|25,6%|(3)|05/03/2024 14:07|5 de março|ABC|1.5"_s});
        Expect(u"choices"_s,
               u"SELECT Switch(1=2,'a',2=2,'b'), Choose(2,'x','y'), Choose(3,'x','y'), "
               "IIF(Null,'s','n'), IIF('a' Like 'b*',1,2)"_s,
               {u"b|y|-|n|2"_s});
    }
    void Queries() {
        QFETCH(QString, text);
        QFETCH(QStringList, rows);
        QCOMPARE(db_->Run(text), rows);
    }

    void NamesColumnsAsTheTextDoes() {
        const QString text =
            u"SELECT PECA.CodigoPeca, 1+1, Count(*) AS Quantos FROM PECA "
            "GROUP BY PECA.CodigoPeca HAVING PECA.CodigoPeca = 5"_s;
        QCOMPARE(db_->Run(text, true).first(), u"CodigoPeca|Expr1001|Quantos"_s);
    }

    void Changes_data() {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("query");
        QTest::addColumn<QStringList>("rows");
        const auto row = [](const char* name, const QStringList& texts, const QString& query,
                            const QStringList& rows) {
            QTest::newRow(name) << texts << query << rows;
        };
        row("selection", {u"UPDATE CODIGOCLIENTECONCORRENTE SET CodigoClienteConcorrente = 3"_s},
            u"SELECT * FROM REFERENCIACRUZADA1"_s, {u"1002|A7"_s});
        row("lock", {u"UPDATE CONTROLETRAN SET a = a"_s}, u"SELECT a FROM CONTROLETRAN"_s,
            {u"0"_s});
        row("verification",
            {u"UPDATE UMREGISTRO SET DataUltimaVerificacao=DateSerial(2024,3,5)+"
             "TimeSerial(0,0,1),FlagErroUltimaVerificacao=1"_s},
            u"SELECT Format(DataUltimaVerificacao,'dd/mm/yyyy hh:nn:ss'), "
            "FlagErroUltimaVerificacao FROM UMREGISTRO"_s,
            {u"05/03/2024 00:00:01|1"_s});
        row("version",
            {u"UPDATE UMREGISTRO SET Versao                    = 7,VersaoAnterior"
             "            = 5,FlagErroUltimaVerificacao = 0"_s},
            u"SELECT Versao, VersaoAnterior FROM UMREGISTRO"_s, {u"7|5"_s});
        row("insert",
            {u"INSERT INTO VEICULO (CodigoVeiculo, DescricaoVeiculo) VALUES (40, "
             "\"Carro d'água\")"_s,
             u"INSERT INTO VEICULO VALUES (2.5, 'B', Null)"_s},
            u"SELECT * FROM VEICULO WHERE IsNull(CodigoClienteConcorrente) ORDER BY 1"_s,
            {u"2|B|-"_s, u"40|Carro d'água|-"_s});
        row("insert from a query by name",
            {u"INSERT INTO VEICULO SELECT DescricaoPeca AS "
             "DescricaoVeiculo, CodigoPeca AS CodigoVeiculo FROM PECA WHERE CodigoPeca = 3"_s,
             u"INSERT INTO FOTOPECAPESQUISA SELECT * FROM FOTOPECAPESQUISA WHERE False"_s},
            u"SELECT * FROM VEICULO WHERE CodigoVeiculo = 3"_s, {u"3|Êmbolo|-"_s});
        row("update over a join",
            {u"UPDATE PECA INNER JOIN VEICULO_PECA ON PECA.CodigoPeca = "
             "VEICULO_PECA.CodigoPeca SET PECA.ArquivoFotoPeca = VEICULO_PECA.CodigoVeiculo & "
             "'.bmp', "
             "CodigoFigura = CodigoFigura + 1 WHERE VEICULO_PECA.CodigoVeiculo = 33"_s},
            u"SELECT CodigoPeca, ArquivoFotoPeca, CodigoFigura FROM PECA WHERE CodigoPeca = 1 OR "
            "CodigoPeca = 3"_s,
            {u"1|a.bmp|1"_s, u"3|33.bmp|3"_s});
        row("delete all", {u"DELETE * FROM VEICULO_PECA"_s}, u"SELECT Count(*) FROM VEICULO_PECA"_s,
            {u"0"_s});
        row("delete over a join",
            {u"DELETE VEICULO_PECA.* FROM VEICULO_PECA INNER JOIN VEICULO ON "
             "VEICULO_PECA.CodigoVeiculo = VEICULO.CodigoVeiculo WHERE VEICULO.DescricaoVeiculo "
             "LIKE 'trator*'"_s},
            u"SELECT * FROM VEICULO_PECA"_s, {u"33|3"_s});
        row("delete what has no partner",
            {u"DELETE PECA.* FROM PECA LEFT JOIN VEICULO_PECA AS v ON "
             "PECA.CodigoPeca = v.CodigoPeca WHERE v.CodigoPeca IS NULL"_s},
            u"SELECT CodigoPeca FROM PECA"_s, {u"1"_s, u"3"_s});
        row("select into",
            {u"SELECT CodigoVeiculo, DescricaoVeiculo & '!' AS d, DescricaoVeiculo "
             "INTO NOVA FROM VEICULO WHERE CodigoVeiculo < 33"_s,
             u"INSERT INTO NOVA VALUES (1,'A','B')"_s},
            u"SELECT * FROM NOVA WHERE d = 'trator t1!' OR DescricaoVeiculo = 'b' ORDER BY 1"_s,
            {u"1|A|B"_s, u"31|Trator T1!|Trator T1"_s, u"32|Trator T1!|Trator T1"_s});
    }
    void Changes() {
        QFETCH(QStringList, texts);
        QFETCH(QString, query);
        QFETCH(QStringList, rows);
        for (const QString& text : texts) {
            db_->Run(text);
        }
        QCOMPARE(db_->Run(query), rows);
    }

    void Definitions_data() {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("query");
        QTest::addColumn<QStringList>("rows");
        const auto row = [](const char* name, const QStringList& texts, const QString& query,
                            const QStringList& rows) {
            QTest::newRow(name) << texts << query << rows;
        };
        const QString create =
            u"CREATE TABLE T (Id COUNTER CONSTRAINT PK PRIMARY KEY, Nome "
            "TEXT(10) NOT NULL, Obs MEMO, Qtd SHORT, Preco CURRENCY, Em "
            "DATETIME, Ativo YESNO, B BYTE, D DOUBLE DEFAULT 1.5, "
            "CONSTRAINT UmNome UNIQUE (Nome))"_s;
        const QString all = u"SELECT Id, Nome, Qtd, Preco, Em, Ativo, D FROM T"_s;
        row("types and counter",
            {create,
             u"INSERT INTO T (Nome, Qtd, Preco, Em, Ativo) VALUES ('a', 2.5, 1.00005, "
             "'05/03/2024', 1)"_s,
             u"INSERT INTO T (Nome) VALUES ('B')"_s},
            all, {u"1|a|2|1|45356|-1|1.5"_s, u"2|B|-|-|-|0|1.5"_s});
        row("texts sort and compare",
            {create, u"INSERT INTO T (Nome, Obs) VALUES ('é', 'Á')"_s,
             u"INSERT INTO T (Nome, Obs) VALUES ('Z', 'b')"_s},
            u"SELECT Nome FROM T WHERE Obs = 'á' OR Obs = 'B' ORDER BY Nome"_s, {u"é"_s, u"Z"_s});
        row("key of several columns",
            {u"CREATE TABLE K (A LONG, B TEXT(5), CONSTRAINT X PRIMARY KEY (A, B))"_s,
             u"INSERT INTO K VALUES (1, 'a')"_s, u"INSERT INTO K VALUES (1, 'b')"_s},
            u"SELECT A, B FROM K"_s, {u"1|a"_s, u"1|b"_s});
        row("add columns",
            {create, u"INSERT INTO T (Nome) VALUES ('a')"_s, u"ALTER TABLE T ADD COLUMN N LONG"_s,
             u"ALTER TABLE T ADD M TEXT(3) DEFAULT 'x'"_s, u"ALTER TABLE T ADD F BIT"_s,
             u"INSERT INTO T (Nome, N) VALUES ('b', 7)"_s},
            u"SELECT Nome, N, M, F FROM T"_s, {u"a|-|-|0"_s, u"b|7|x|0"_s});
        row("alter a column",
            {create, u"INSERT INTO T (Nome, Qtd) VALUES ('a', 5)"_s,
             u"ALTER TABLE T ALTER COLUMN Qtd TEXT(20)"_s,
             u"ALTER TABLE T ALTER COLUMN Nome TEXT(30) NOT NULL"_s,
             u"UPDATE T SET Nome = 'mais que dez letras', Qtd = Qtd & 'x'"_s,
             u"INSERT INTO T (Nome) VALUES ('b')"_s},
            u"SELECT Id, Nome, Qtd FROM T"_s, {u"1|mais que dez letras|5x"_s, u"2|b|-"_s});
        row("drop a column", {u"ALTER TABLE PECA DROP COLUMN CodigoFigura"_s},
            u"SELECT * FROM PECA WHERE CodigoPeca = 5"_s, {u"5|99|Pino d´água|-|-"_s});
        row("rebuilding keeps indexes, triggers and views",
            {u"ALTER TABLE REFERENCIACRUZADA ALTER COLUMN NumeroTarvo TEXT(20) NOT NULL"_s},
            u"SELECT NumeroTarvo, NumeroClienteConcorrente FROM REFERENCIACRUZADA1 ORDER BY 2"_s,
            {u"1001|A70"_s, u"2001|A71"_s, u"1001|B1"_s, u"3001|C3"_s});
        row("indexes of one name on two tables",
            {u"CREATE INDEX I ON VEICULO (DescricaoVeiculo ASC, CodigoVeiculo DESC)"_s,
             u"CREATE UNIQUE INDEX I ON PECA (NumeroTarvoPeca) WITH IGNORE NULL"_s,
             u"DROP INDEX I ON VEICULO"_s, u"DROP INDEX PECA_DESCRICAO ON PECA"_s},
            u"SELECT name FROM sqlite_schema WHERE type = 'index' AND (name LIKE '*.I' OR name "
            "LIKE 'PECA[_]D*')"_s,
            {u"PECA.I"_s});
        row("dropped constraints",
            {create, u"INSERT INTO T (Nome) VALUES ('a')"_s,
             u"ALTER TABLE T DROP CONSTRAINT UmNome"_s, u"INSERT INTO T (Nome) VALUES ('A')"_s,
             u"ALTER TABLE VEICULO_PECA ADD CONSTRAINT P PRIMARY KEY (CodigoVeiculo, CodigoPeca)"_s,
             u"ALTER TABLE VEICULO_PECA DROP CONSTRAINT P"_s,
             u"INSERT INTO VEICULO_PECA VALUES (31, 1)"_s},
            u"SELECT Count(*) FROM VEICULO_PECA, T WHERE CodigoVeiculo = 31"_s, {u"4"_s});
        row("views",
            {u"CREATE VIEW V AS SELECT DescricaoVeiculo & '!' AS d FROM VEICULO"_s,
             u"CREATE VIEW W (x) AS SELECT CodigoPeca FROM PECA"_s, u"DROP TABLE W"_s},
            u"SELECT d FROM V WHERE d = 'CAMINHÃO!'"_s, {u"Caminhão!"_s});
        row("drop a table", {create, u"DROP TABLE T"_s},
            u"SELECT Count(*) FROM sqlite_schema WHERE name = 'T'"_s, {u"0"_s});
    }
    void Definitions() { Changes(); }

    void DefinitionsGuardTheirTables_data() {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("refused");
        const QString create = u"CREATE TABLE G (A LONG PRIMARY KEY, B TEXT(3), C BYTE)"_s;
        const auto row = [&](const char* name, const QStringList& texts, const QString& refused) {
            QTest::newRow(name) << QStringList{create} + texts << refused;
        };
        const QString one = u"INSERT INTO G VALUES (1, 'a', 1)"_s;
        row("key twice", {one}, one);
        row("key without a value", {}, u"INSERT INTO G (B) VALUES ('a')"_s);
        row("text too long", {}, u"INSERT INTO G VALUES (1, 'abcd', 1)"_s);
        row("number too big", {}, u"INSERT INTO G VALUES (1, 'a', 256)"_s);
        row("no number", {}, u"INSERT INTO G VALUES ('x', 'a', 1)"_s);
        row("unique, whatever the case", {one, u"CREATE UNIQUE INDEX U ON G (B)"_s},
            u"INSERT INTO G VALUES (2, 'A', 1)"_s);
        row("disallow null", {u"CREATE INDEX N ON G (B) WITH DISALLOW NULL"_s},
            u"INSERT INTO G VALUES (1, Null, 1)"_s);
        row("second key", {}, u"CREATE INDEX P ON G (B) WITH PRIMARY"_s);
        row("check", {u"ALTER TABLE G ADD CONSTRAINT K CHECK (C < 5)"_s},
            u"INSERT INTO G VALUES (1, 'a', 5)"_s);
        row("value that the new type cannot take", {one}, u"ALTER TABLE G ALTER COLUMN B LONG"_s);
        row("table there already", {}, create);
        row("no such index", {}, u"DROP INDEX X ON G"_s);
        row("no such column", {}, u"ALTER TABLE G ALTER COLUMN X LONG"_s);
        row("unknown type", {}, u"CREATE TABLE H (A FOO)"_s);
    }
    void DefinitionsGuardTheirTables() {
        QFETCH(QStringList, texts);
        QFETCH(QString, refused);
        for (const QString& text : texts) {
            db_->Run(text);
        }
        const QByteArray state =
            "SELECT group_concat(sql), (SELECT count(*) FROM G) FROM sqlite_schema";
        const QStringList before = db_->RunNative(state);
        QVERIFY_THROWS_EXCEPTION(Erro, db_->Run(refused));
        QCOMPARE(db_->RunNative(state), before);
    }

    void BeginningsUseTheIndex_data() {
        QTest::addColumn<QString>("where");
        QTest::addColumn<QString>("plan");
        QTest::newRow("prefix") << u"LIKE 'abc*'"_s
                                << u"(NumeroTarvoPeca>? AND NumeroTarvoPeca<?)"_s;
        QTest::newRow("whole") << u"LIKE 'abc'"_s << u"(NumeroTarvoPeca>? AND NumeroTarvoPeca<?)"_s;
        QTest::newRow("equal") << u"= 'abc'"_s << u"(NumeroTarvoPeca=?)"_s;
        QTest::newRow("list") << u"IN ('abc', 'd')"_s << u"(NumeroTarvoPeca=?)"_s;
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
        QTest::addColumn<QString>("text");
        QTest::addColumn<Failure>("failure");
        const auto row = [](const char* name, const QString& text, Failure failure) {
            QTest::newRow(name) << text << failure;
        };
        row("nothing", u""_s, Failure::MissingExpression);
        row("blanks", u" \r\n"_s, Failure::MissingExpression);
        row("no statement", u"FOO BAR"_s, Failure::MissingExpression);
        row("open bracket in a pattern", u"SELECT 1 FROM PECA WHERE DescricaoPeca LIKE 'a[b*'"_s,
            Failure::BadPattern);
        row("open text", u"SELECT 'abc"_s, Failure::SyntaxError);
        row("open name", u"SELECT [abc FROM PECA"_s, Failure::SyntaxError);
        row("placeholder left over", u"UPDATE PECA SET CodigoFigura = 2?"_s, Failure::SyntaxError);
        row("bad date", u"SELECT #13/32/2024#"_s, Failure::SyntaxError);
        row("rest", u"SELECT 1 FROM PECA garbage here"_s, Failure::SyntaxError);
        row("two statements", u"SELECT 1; DROP TABLE PECA"_s, Failure::SyntaxError);
        row("missing operand", u"SELECT * FROM PECA WHERE CodigoPeca = "_s, Failure::SyntaxError);
        row("nul", u"SELECT '\0' FROM PECA"_s, Failure::SyntaxError);
        row("number of arguments", u"SELECT Left('a')"_s, Failure::SyntaxError);
        row("delete from a join",
            u"DELETE FROM PECA INNER JOIN VEICULO_PECA ON PECA.CodigoPeca = "
            "VEICULO_PECA.CodigoPeca"_s,
            Failure::SyntaxError);
        row("many brackets", u"SELECT "_s + QString(100000, u'('), Failure::SyntaxError);
        row("many negations", u"SELECT "_s + u"NOT "_s.repeated(100000) + u"1"_s,
            Failure::SyntaxError);
        row("many operators", u"SELECT 1"_s + u"+1"_s.repeated(100000), Failure::SyntaxError);
        row("many subqueries", u"SELECT * FROM "_s + u"(SELECT * FROM "_s.repeated(50000),
            Failure::SyntaxError);
        row("many unions", u"SELECT 1"_s + u" UNION SELECT 1"_s.repeated(1000),
            Failure::SyntaxError);
        row("unknown function", u"SELECT DLookup('a','b')"_s, Failure::UnknownFunction);
        row("quantifier", u"SELECT 1 FROM PECA WHERE CodigoPeca > ALL (SELECT 1)"_s,
            Failure::NotSupported);
        row("crosstab", u"TRANSFORM Count(*) SELECT 1"_s, Failure::NotSupported);
        row("other file", u"SELECT * FROM PECA IN 'outro.mdb'"_s, Failure::NotSupported);
        row("two targets",
            u"UPDATE PECA INNER JOIN VEICULO_PECA ON PECA.CodigoPeca = "
            "VEICULO_PECA.CodigoPeca SET PECA.CodigoFigura = 1, VEICULO_PECA.CodigoVeiculo = 1"_s,
            Failure::NotSupported);
        row("target that may be missing",
            u"UPDATE PECA LEFT JOIN VEICULO_PECA ON PECA.CodigoPeca = "
            "VEICULO_PECA.CodigoPeca SET VEICULO_PECA.CodigoVeiculo = 1"_s,
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
        QVERIFY_THROWS_EXCEPTION(Erro, db_->Run(u"SELECT CInt(40000)"_s));
        QVERIFY_THROWS_EXCEPTION(Erro, db_->Run(u"SELECT CLng('abc')"_s));
        QVERIFY_THROWS_EXCEPTION(Erro, db_->Run(u"SELECT 1 WHERE 'a' LIKE ('[' & '')"_s));
    }

private:
    std::unique_ptr<MemoryDatabase> db_;
};

TARVO_TEST(TestDialect);
#include "test_dialect.moc"
