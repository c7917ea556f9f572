#include "platform/dao/errors.h"
#include "platform/dao/preparedchange.h"
#include "platform/dao/schema.h"
#include "platform/sql/parser.h"
#include "platform/sql/writer.h"
#include "support/cases.h"
#include "support/database.h"

using namespace dao;

namespace {

constexpr char Definition[] = R"(
CREATE TABLE PECA (CodigoPeca INTEGER PRIMARY KEY, Numero TEXT COLLATE TARVO);
CREATE INDEX PECA_NUMERO ON PECA (Numero);
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000)
INSERT INTO PECA SELECT i, 'N' || (10000 + i) FROM n;
CREATE TABLE ESCOLHA (Cliente INTEGER);
INSERT INTO ESCOLHA VALUES (1);
CREATE TABLE REFERENCIA (Cliente INTEGER, Numero TEXT COLLATE TARVO, DoCliente TEXT COLLATE TARVO);
CREATE INDEX REFERENCIA_NUMERO ON REFERENCIA (Cliente, Numero, DoCliente);
INSERT INTO REFERENCIA SELECT 1, Numero, 'A' FROM PECA;
INSERT INTO REFERENCIA SELECT 2, Numero, 'B' FROM PECA;
CREATE VIEW REFERENCIA1 AS SELECT Numero, DoCliente FROM REFERENCIA
    WHERE Cliente = (SELECT Cliente FROM ESCOLHA);
)";

}  // namespace

struct TestChanges : Fixture {
    TestDatabase file_{Definition};
    TestDatabase::Session session_ = file_.Open();

    int ErrorOfChange(const AnyText& text) const {
        return ErrorOf([&] { session_.Execute(text); });
    }
};

// Each line of counted.data is how many rows a statement touches, and the statement.
TEST(TestChanges, CountsTheRowsOfEachStatement) {
    for (const auto& [cells] : Lines(TARVO_DAO_CASES "/counted.data")) {
        session_.Execute("UPDATE PECA SET Numero = 'y'");  // whose count must not stay
        session_.Execute(cells.at(1));
        QCOMPARE(int(session_.database->RecordsAffected()), cells.first().toInt());
    }
}

// A table of this name in the catalogue, which the dialect makes no more, hides the lock's.
TEST(TestChanges, GivesTheLockTableBack) {
    session_.database->GetConnection()->Run("CREATE TABLE main.CONTROLETRAN (a)");
    session_ = file_.Open();
    session_.Execute("DROP TABLE CONTROLETRAN");
    QCOMPARE(session_.Value("SELECT a FROM CONTROLETRAN"), u"0"_s);
    // Its own is filled again by whoever comes next, and held without a lock on the catalogue.
    session_.Execute("DELETE FROM CONTROLETRAN");
    const auto holder = file_.Open();
    holder.workspace->BeginTrans();
    holder.Execute("UPDATE CONTROLETRAN SET a = 1");
    session_ = file_.Open();
    const auto takes = [&](const QString& text) {
        return ErrorOf([&] { session_.database->Execute(text, dbSeeChanges); });
    };
    QCOMPARE(takes(u"INSERT INTO CONTROLETRAN VALUES (1)"_s), 3260);
    QCOMPARE(session_.Value("SELECT a FROM CONTROLETRAN"), u"0"_s);
    QCOMPARE(takes(u"UPDATE CONTROLETRAN SET a = 2"_s), 3260);
    session_.Execute("DELETE FROM PECA");
    QVERIFY(QFile::exists(file_.Folder() + "/Tarvo.ldb"_L1));
}

// The parts of one result see one selection, even if it changes before the later ones begin.
TEST(TestChanges, AResultKeepsItsSelection) {
    const QString half =
        u"SELECT PECA.Numero AS N, REFERENCIA1.DoCliente AS C, '%1' AS Tipo FROM PECA LEFT JOIN "
        "REFERENCIA1 ON PECA.Numero = REFERENCIA1.Numero "_s;
    const QString text = half.arg(u'a') + u"UNION ALL "_s + half.arg(u'b') + u"ORDER BY 3,1"_s;
    const auto rows = session_.database->OpenRecordset(text, dbOpenDynaset);
    const auto inTheLast = session_.database->OpenRecordset(text, dbOpenDynaset);
    rows->ReadUpTo(10);
    inTheLast->ReadUpTo(2001);
    session_.Execute("UPDATE ESCOLHA SET Cliente = 2");
    QVERIFY(!inTheLast->IsComplete());  // and so need not be read to its end
    rows->MoveLast();
    QCOMPARE(rows->RecordCount(), 4000);
    for (qint64 row = 0; row < 4000; ++row) {
        QCOMPARE(rows->Text(row, 1), u"A"_s);
    }
}

// What a connection remembers of a table follows its definition, which somebody may take back.
TEST(TestChanges, DefinitionsAreForgottenWithTheirTransaction) {
    session_.Execute("INSERT INTO ESCOLHA VALUES (3)");
    for (const bool byItsUser : {true, false}) {
        session_.workspace->BeginTrans();
        session_.Execute("ALTER TABLE ESCOLHA ALTER COLUMN Cliente TEXT(5)");
        session_.Execute("INSERT INTO ESCOLHA VALUES ('abc')");
        session_.Execute("ALTER TABLE ESCOLHA ADD COLUMN B LONG");
        session_.Execute("UPDATE ESCOLHA SET B = 1");
        if (byItsUser) {
            session_.workspace->Rollback();
        } else {
            session_.database->SetIdle([] { return false; });
            QCOMPARE(ErrorOfChange("UPDATE PECA SET Numero = Numero & 'x'"), 3059);
            session_.database->SetIdle({});
        }
        QCOMPARE(ErrorOfChange("INSERT INTO ESCOLHA VALUES ('abc')"), 13);
        QCOMPARE(ErrorOfChange("UPDATE ESCOLHA SET B = 1"), 3061);
    }
    session_.workspace->Rollback();
    // Of another program's definitions it hears a moment later.
    session_.Execute("UPDATE ESCOLHA SET Cliente = '1'");
    file_.Open().database->GetConnection()->Run(
        "DROP TABLE ESCOLHA; CREATE TABLE ESCOLHA (Cliente TEXT)");
    QTRY_COMPARE(ErrorOfChange("UPDATE ESCOLHA SET Cliente = 'x'"), 0);
}

TEST(TestChanges, ABuiltTableKeepsWhatItHad) {
    Connection& engine = *session_.database->GetConnection();
    engine.Run(
        "CREATE TABLE CONTA (k INTEGER PRIMARY KEY AUTOINCREMENT, t TEXT NOT NULL, u TEXT, q "
        "DECIMAL(5,2));"
        "CREATE UNIQUE INDEX CONTA_T ON CONTA (t, u); "
        "CREATE INDEX CONTA_U ON CONTA (u) WHERE u IS NOT NULL;"
        "CREATE TRIGGER T2 AFTER DELETE ON CONTA BEGIN UPDATE ESCOLHA SET Cliente = 7; END;"
        "CREATE TRIGGER T1 AFTER UPDATE ON CONTA BEGIN UPDATE ESCOLHA SET Cliente = 8; END");
    const auto kept = [&] {
        return engine.Value(
            "SELECT group_concat(sql, ';') FROM (SELECT sql FROM sqlite_schema WHERE "
            "tbl_name = 'CONTA' AND type IN ('index', 'trigger') ORDER BY name)");
    };
    const QVariant before = kept();
    const auto rows = session_.database->OpenRecordset(u"SELECT * FROM PECA"_s);
    session_.Execute("ALTER TABLE CONTA ALTER COLUMN u TEXT(20)");
    rows->MoveLast();
    QCOMPARE(kept(), before);
    session_.Execute("INSERT INTO CONTA (t) VALUES ('a')");
    session_.Execute("DELETE FROM CONTA WHERE k = 1");
    session_.Execute("INSERT INTO CONTA (t, q) SELECT 'a', '12' * 10.3456");
    QCOMPARE(session_.Value("SELECT k & ' ' & q & ' ' & Cliente FROM CONTA, ESCOLHA"),
             u"2 124.15 7"_s);
    QCOMPARE(ErrorOfChange("INSERT INTO CONTA (u) VALUES ('a')"), 3314);
}

// For one database object until it is closed.
TEST(TestChanges, ShadowsHideTheFile) {
    std::unique_ptr<Recordset> reading;
    for (int time = 0; time < 2; ++time) {
        session_.database->Shadow(List("Escolha", "referencia1", "nada"));
        QCOMPARE(session_.Value("SELECT Cliente & DoCliente FROM ESCOLHA, REFERENCIA1"), u"1A"_s);
        session_.Execute("UPDATE ESCOLHA SET Cliente = 2");
        QCOMPARE(session_.Value("SELECT Cliente & DoCliente FROM ESCOLHA, REFERENCIA1"), u"2B"_s);
        QCOMPARE(file_.Open().Value("SELECT Cliente FROM ESCOLHA"), u"1"_s);
        reading = session_.database->OpenRecordset(u"SELECT Cliente FROM ESCOLHA, PECA"_s);
    }
    reading->MoveLast();
    QCOMPARE(reading->RecordCount(), 2000);
    QCOMPARE(ErrorOfChange("DELETE FROM REFERENCIA1"), 3073);
}

// Texts of one shape share a translation, and nobody can tell. repeated.data: the texts, and what
// stands in them for "%1" and "%2", the columns, and for "%3" and "%4", the values.
TEST(TestChanges, RepeatedChangesAreAsSingleOnes) {
    const QStringList given =
        sys::ReadText(QStringLiteral(TARVO_DAO_CASES "/repeated.data")).split(u"\n\n"_s);
    const QStringList texts = given.at(0).split(u'\n');
    const QStringList columns = given.at(1).split(u'\n');
    const QStringList values = given.at(2).split(u'\n', Qt::SkipEmptyParts);
    const TestDatabase plainFile(Definition);
    const auto plain = plainFile.Open();
    Connection& engine = *plain.database->GetConnection();
    for (const auto* each : {&std::as_const(session_), &plain}) {
        each->Execute(
            "CREATE TABLE T (C LONG PRIMARY KEY, S SHORT, B BYTE, F YESNO, X TEXT(8), M MEMO, D "
            "DATETIME, N DOUBLE, Q DECIMAL(6,2), A SINGLE)");
        each->workspace->BeginTrans();
    }
    QRandomGenerator chance(20260322);
    const auto any = [&](const QStringList& list) {
        return list.at(chance.bounded(int(list.size())));
    };
    int failed = 0;
    for (int i = 0; i < 1200; ++i) {
        QString text = any(texts).replace("%1"_L1, any(columns)).replace("%2"_L1, any(columns));
        text.replace("%3"_L1, any(values)).replace("%4"_L1, any(values));
        const qint64 before = engine.AllChanges();
        const QString expected = SaidBy([&] {
            const auto command = sql::Parser::ParseCommand(text.toUtf8());
            engine.Run(sql::WriteCommand(command, SchemaOf(engine)).statements.first());
        });
        const QString said = SaidBy([&] { session_.Execute(text); });
        QCOMPARE(said + u" <- "_s + text, expected + u" <- "_s + text);
        failed += said.isEmpty() ? 0 : 1;
        QCOMPARE(said.isEmpty(), FindChange(*session_.database->GetConnection(),
                                            sql::Shape(text.toUtf8())) != nullptr);
        QVERIFY(!said.isEmpty() ||
                session_.database->RecordsAffected() == engine.AllChanges() - before);
    }
    QVERIFY2(failed > 200 && failed < 1000, qPrintable(QString::number(failed)));
    session_.Execute("UPDATE T SET X = 'a' WHERE X = 'b' AND C = 3");
    const auto isKnown = [&](const QByteArray& text) {
        return FindChange(*session_.database->GetConnection(), sql::Shape(text)) != nullptr;
    };
    QVERIFY(isKnown("UPDATE T SET X = 'it''s' WHERE X = 'd' AND C = 999999999999999999"));
    QVERIFY(!isKnown("UPDATE T SET X = 'c' WHERE X = 'd' AND C = 1234567890123456789"));
    QStringList rows;
    QStringList plainRows;
    ReadRows(*session_.database, "SELECT * FROM T ORDER BY C", rows);
    ReadRows(*plain.database, "SELECT * FROM T ORDER BY C", plainRows);
    QCOMPARE(rows, plainRows);
}

// Nothing of such a statement stays, no lock either, and the next one runs. Each line of
// memory.data is an error's number and a text.
TEST(TestChanges, StatementsDoNotFillTheMemory) {
    Lines lines(TARVO_DAO_CASES "/memory.data");
    lines("a literal", {"3163", u"UPDATE PECA SET Numero = '"_s + QString(7'000'000, u'x') +
                                    u"' WHERE CodigoPeca = 1"_s});
    for (const auto& [cells] : lines) {
        const QString& text = cells.at(1);
        std::unique_ptr<Recordset> refused;
        QCOMPARE(ErrorOf([&] {
                     if (text.startsWith(u"SELECT"_s)) {
                         refused = session_.database->OpenRecordset(text);
                         refused->MoveLast();
                     } else {
                         session_.Execute(text);
                     }
                 }),
                 cells.first().toInt());
        file_.Open().Execute("UPDATE PECA SET Numero = Numero & 'x' WHERE CodigoPeca = 1");
        QCOMPARE(session_.Value("SELECT Count(*) FROM ESCOLHA"), u"1"_s);
        QCOMPARE(session_.database->GetConnection()->Value("PRAGMA integrity_check").toString(),
                 u"ok"_s);
    }
}
