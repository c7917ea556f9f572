#include "memorydatabase.h"
#include "support/test.h"

struct TestDefinitions : Fixture {
    std::unique_ptr<MemoryDatabase> db_;

    void init() override {
        db_ = std::make_unique<MemoryDatabase>();
        db_->MakeCatalogue();
    }
};

TEST(TestDefinitions, DefinitionsGuardTheirTables) {
    Each<QStringList, QString> row;
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
    for (const auto& [texts, refused] : row) {
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
}
