#include "memorydatabase.h"
#include "support/test.h"

class TestDefinitions : public QObject {
    Q_OBJECT

    std::unique_ptr<MemoryDatabase> db_;

private Q_SLOTS:
    void init() {
        db_ = std::make_unique<MemoryDatabase>();
        db_->MakeCatalogue();
    }

    void Definitions_data() {
        const Table<QStringList, QString, QStringList> row("texts", "query", "rows");
        const QString create =
            u"CREATE TABLE T (Id COUNTER CONSTRAINT PK PRIMARY KEY, Nome TEXT(10) NOT NULL, Obs "
            "MEMO, Qtd SHORT, Preco CURRENCY, Em DATETIME, Ativo YESNO, B BYTE, D DOUBLE DEFAULT "
            "1.5, CONSTRAINT UmNome UNIQUE (Nome))"_s;
        const QString all = u"SELECT Id, Nome, Qtd, Preco, Em, Ativo, D FROM T"_s;
        row("types and counter",
            {create,
             "INSERT INTO T (Nome, Qtd, Preco, Em, Ativo) VALUES ('a', 2.5, 1.00005, '05/03/2024', "
             "1)",
             "INSERT INTO T (Nome) VALUES ('B')"},
            all, {"1|a|2|1|45356|-1|1.5", "2|B|-|-|-|0|1.5"});
        row("texts sort and compare",
            {create, "INSERT INTO T (Nome, Obs) VALUES ('é', 'Á')",
             "INSERT INTO T (Nome, Obs) VALUES ('Z', 'b')"},
            "SELECT Nome FROM T WHERE Obs = 'á' OR Obs = 'B' ORDER BY Nome", {"é", "Z"});
        row("key of several columns",
            {"CREATE TABLE K (A LONG, B TEXT(5), CONSTRAINT X PRIMARY KEY (A, B))",
             "INSERT INTO K VALUES (1, 'a')", "INSERT INTO K VALUES (1, 'b')"},
            "SELECT A, B FROM K", {"1|a", "1|b"});
        row("add columns",
            {create, "INSERT INTO T (Nome) VALUES ('a')", "ALTER TABLE T ADD COLUMN N LONG",
             "ALTER TABLE T ADD M TEXT(3) DEFAULT 'x'", "ALTER TABLE T ADD F BIT",
             "INSERT INTO T (Nome, N) VALUES ('b', 7)"},
            "SELECT Nome, N, M, F FROM T", {"a|-|-|0", "b|7|x|0"});
        row("alter a column",
            {create, "INSERT INTO T (Nome, Qtd) VALUES ('a', 5)",
             "ALTER TABLE T ALTER COLUMN Qtd TEXT(20)",
             "ALTER TABLE T ALTER COLUMN Nome TEXT(30) NOT NULL",
             "ALTER TABLE T ALTER COLUMN Nome TEXT(40) NULL", "INSERT INTO T (Qtd) VALUES ('n')",
             "DELETE FROM T WHERE Nome IS NULL",
             "UPDATE T SET Nome = 'mais que dez letras', Qtd = Qtd & 'x'",
             "INSERT INTO T (Nome) VALUES ('b')"},
            "SELECT Id, Nome, Qtd FROM T", {"1|mais que dez letras|5x", "3|b|-"});
        row("dates of an older catalogue",
            {"ALTER TABLE UMREGISTRO ALTER COLUMN DataEmissao DATETIME NOT NULL",
             "UPDATE UMREGISTRO SET DataEmissao = '05/03/2024'"},
            "SELECT 'rev. ' & DataEmissao, Versao FROM UMREGISTRO", {"rev. 05/03/2024|5"});
        row("several columns at once",
            {create, "INSERT INTO T (Nome) VALUES ('a')",
             "ALTER TABLE T ADD COLUMN X LONG, COLUMN Z DOUBLE",
             "ALTER TABLE T ADD (U LONG, V LONG)", "DELETE FROM T",
             "ALTER TABLE T ADD Y TEXT(3) NOT NULL DEFAULT 'y', W BYTE",
             "ALTER TABLE T DROP COLUMN X, COLUMN V", "INSERT INTO T (Nome, U) VALUES ('b', 2)"},
            "SELECT Y, Z, U, W FROM T", {"y|-|2|-"});
        row("defaults",
            {create, "ALTER TABLE T ALTER COLUMN Qtd SET DEFAULT -7",
             "ALTER TABLE T ALTER COLUMN D DROP DEFAULT", "INSERT INTO T (Nome) VALUES ('a')",
             "ALTER TABLE T ALTER Qtd SET DEFAULT '8'", "INSERT INTO T (Nome) VALUES ('b')"},
            "SELECT Nome, Qtd, D FROM T", {"a|-7|-", "b|8|-"});
        row("quotes in a definition",
            {"CREATE TABLE Q ([a,b)] TEXT(9) DEFAULT 'it''s (', B TEXT(30) DEFAULT \"x\"\"(, "
             "PRIMARY KEY\", C LONG, CONSTRAINT [K (] CHECK (B <> 'NOT NULL'''))",
             "ALTER TABLE Q ALTER COLUMN C TEXT(5)", "CREATE INDEX N ON Q (B) WITH DISALLOW NULL",
             "INSERT INTO Q (C) VALUES (7)", "ALTER TABLE Q DROP CONSTRAINT [k (]",
             "ALTER TABLE Q ALTER COLUMN B TEXT(40)", "INSERT INTO Q (B) SELECT B FROM Q"},
            "SELECT * FROM Q", {"it's (|x\"(, PRIMARY KEY|7", "it's (|x\"(, PRIMARY KEY|-"});
        row("drop a column", {"ALTER TABLE PECA DROP COLUMN CodigoFigura"},
            "SELECT * FROM PECA WHERE CodigoPeca = 5", {"5|99|Pino d´água|-|-"});
        row("rebuilding keeps indexes, triggers and views",
            {"ALTER TABLE REFERENCIACRUZADA ALTER COLUMN NumeroTarvo TEXT(20) NOT NULL"},
            "SELECT NumeroTarvo, NumeroClienteConcorrente FROM REFERENCIACRUZADA1 ORDER BY 2",
            {"1001|A70", "2001|A71", "1001|B1", "3001|C3"});
        row("indexes of one name on two tables",
            {"CREATE INDEX I ON VEICULO (DescricaoVeiculo ASC, CodigoVeiculo DESC)",
             "CREATE UNIQUE INDEX I ON PECA (NumeroTarvoPeca) WITH IGNORE NULL",
             "DROP INDEX I ON VEICULO", "DROP INDEX PECA_DESCRICAO ON PECA",
             "CREATE INDEX PECA ON PECA (CodigoFigura)"},
            "SELECT name FROM sqlite_schema WHERE type = 'index' AND (name LIKE '*.I' OR name LIKE "
            "'PECA[._][DP]*') ORDER BY 1",
            {"PECA.I", "PECA.PECA"});
        row("dropped constraints",
            {create, "INSERT INTO T (Nome) VALUES ('a')", "ALTER TABLE T DROP CONSTRAINT UmNome",
             "INSERT INTO T (Nome) VALUES ('A')",
             "ALTER TABLE VEICULO_PECA ADD CONSTRAINT P PRIMARY KEY (CodigoVeiculo, CodigoPeca)",
             "ALTER TABLE VEICULO_PECA DROP CONSTRAINT P",
             "INSERT INTO VEICULO_PECA VALUES (31, 1)"},
            "SELECT Count(*) FROM VEICULO_PECA, T WHERE CodigoVeiculo = 31", {"4"});
        row("views",
            {"CREATE VIEW V AS SELECT DescricaoVeiculo & '!' AS d FROM VEICULO",
             "CREATE VIEW W (x) AS SELECT CodigoPeca FROM PECA", "DROP TABLE W"},
            "SELECT d FROM V WHERE d = 'CAMINHÃO!'", {"Caminhão!"});
        row("drop a table", {create, "DROP TABLE T"},
            "SELECT Count(*) FROM sqlite_schema WHERE name = 'T'", {"0"});
    }
    void Definitions() {
        QFETCH(QStringList, texts);
        QFETCH(QString, query);
        QTEST(db_->RunAll(texts, query), "rows");
    }

    void DefinitionsGuardTheirTables_data() {
        const Table<QStringList, QString> row("texts", "refused");
        const QString one = u"INSERT INTO G VALUES (1, 'a', 1)"_s;
        row("key twice", {one}, one);
        row("key without a value", {}, "INSERT INTO G (B) VALUES ('a')");
        row("text too long", {}, "INSERT INTO G VALUES (1, 'abcd', 1)");
        row("number too big", {}, "INSERT INTO G VALUES (1, 'a', 256)");
        row("no number", {}, "INSERT INTO G VALUES ('x', 'a', 1)");
        row("unique, whatever the case", {one, u"CREATE UNIQUE INDEX U ON G (B)"_s},
            "INSERT INTO G VALUES (2, 'A', 1)");
        row("disallow null",
            {u"ALTER TABLE G ADD COLUMN D TEXT(9) DEFAULT 'NOT NULL'''"_s,
             u"CREATE INDEX N ON G (D) WITH DISALLOW NULL"_s},
            "INSERT INTO G VALUES (1, 'a', 1, Null)");
        row("second key", {}, "CREATE INDEX P ON G (B) WITH PRIMARY");
        row("check", {u"ALTER TABLE G ADD CONSTRAINT K CHECK (C < 5)"_s},
            "INSERT INTO G VALUES (1, 'a', 5)");
        row("value that the new type cannot take", {one}, "ALTER TABLE G ALTER COLUMN B LONG");
        row("table there already", {}, "CREATE TABLE G (A LONG)");
        row("a new length opens nothing", {u"ALTER TABLE G ALTER COLUMN A LONG"_s},
            "INSERT INTO G (B) VALUES ('a')");
        row("no such index", {}, "DROP INDEX X ON G");
        row("length of a text", {}, "CREATE TABLE H (A TEXT(300))");
        row("column twice", {}, "ALTER TABLE G ADD COLUMN B LONG NOT NULL");
        row("key beside a key", {}, "ALTER TABLE G ADD COLUMN D COUNTER");
        row("no such column", {}, "ALTER TABLE G ALTER COLUMN X LONG");
        row("unknown type", {}, "CREATE TABLE H (A FOO)");
    }
    void DefinitionsGuardTheirTables() {
        QFETCH(QStringList, texts);
        QFETCH(QString, refused);
        for (const QString& text :
             List("CREATE TABLE G (A LONG PRIMARY KEY, B TEXT(3), C BYTE)") + texts) {
            db_->Run(text);
        }
        const QByteArray state =
            "SELECT group_concat(sql), (SELECT count(*) FROM G) FROM sqlite_schema";
        const QStringList before = db_->RunNative(state);
        QVERIFY_THROWS_EXCEPTION(Erro, db_->Run(refused));
        QCOMPARE(db_->RunNative(state), before);
    }
};

TARVO_TEST(TestDefinitions);
#include "test_definitions.moc"
