#include "memorydatabase.h"
#include "platform/sql/errors.h"
#include "support/servers.h"
#include "support/test.h"

using sql::Failure;

namespace {

constexpr int Mismatch = Erro::TypeMismatch;
constexpr int Overflow = Erro::Overflow;
constexpr int TooLong = static_cast<int>(Failure::TextTooLong);
constexpr int Missing = static_cast<int>(Failure::NotNull);

}  // namespace

struct TestStoring : Fixture {
    void init() override { db_ = std::make_unique<MemoryDatabase>(); }

    std::unique_ptr<MemoryDatabase> db_;
};

// What a column keeps of a value is the same whichever way the value comes.
TEST(TestStoring, KeepsTheSameEveryWay) {
    Each<QString, QString, QString, int> row;
    const auto rows = [&](const char* type,
                          std::initializer_list<std::tuple<const char*, const char*, int>> all) {
        for (const auto& [value, kept, error] : all) {
            row(QByteArray(type) + ' ' + value, type, value, kept, error);
        }
    };
    rows("BYTE", {{"255", "255", 0},
                  {"'7'", "7", 0},
                  {"256", "", Overflow},
                  {"-1", "", Overflow},
                  {"'x'", "", Mismatch}});
    rows("SHORT", {{"-32768", "-32768", 0},
                   {"2.5", "2", 0},
                   {"40000", "", Overflow},
                   {"'1,5'", "", Mismatch}});
    rows("LONG", {{"2147483647", "2147483647", 0},
                  {"' 12 '", "12", 0},
                  {"1=1", "-1", 0},
                  {"99999999999", "", Overflow},
                  {"'abc'", "", Mismatch},
                  {"''", "", Mismatch}});
    rows("SINGLE", {{"0.1", "0.1", 0},
                    {"16777217", "16777220.0", 0},
                    {"1e39", "", Overflow},
                    {"'05/03/2024'", "", Mismatch}});
    rows("DOUBLE", {{"'1.5e3'", "1500.0", 0},
                    {"'1,000'", "", Mismatch},
                    {"'nan'", "", Mismatch},
                    {"'inf'", "", Mismatch},
                    {"'1e999'", "", Mismatch}});
    rows("CURRENCY", {{"1.00005", "1", 0},
                      {"2.71828", "2.7183", 0},
                      {"1e15", "", Overflow},
                      {"'R$ 5'", "", Mismatch}});
    rows("DECIMAL(5,2)", {{"123.456", "123.46", 0},
                          {"-999.99", "-999.99", 0},
                          {"1000", "", Overflow},
                          {"'x'", "", Mismatch}});
    rows("DATETIME", {{"'05/03/2024'", "45356", 0},
                      {"#3/5/2024 18:00#", "45356.75", 0},
                      {"'5-mar-2024'", "45356", 0},
                      {"45356.75", "45356.75", 0},
                      {"'amanhã'", "", Mismatch},
                      {"1e9", "", Overflow}});
    rows("YESNO", {{"1", "-1", 0},
                   {"'0'", "0", 0},
                   {"'Sim'", "-1", 0},
                   {"Off", "0", 0},
                   {"'talvez'", "", Mismatch},
                   {"Null", "", Missing}});
    rows("TEXT(3)", {{"'ação'", "", TooLong},
                     {"'éçã'", "éçã", 0},
                     {"1.50", "1.5", 0},
                     {"1234", "", TooLong},
                     {"Null", "-", 0}});
    rows("MEMO", {{"5", "5", 0},
                  {"#3/5/2024#", "05/03/2024", 0},
                  {"#3/5/2024 6:00 PM#", "05/03/2024 18:00:00", 0},
                  {"#6:30#", "06:30:00", 0},
                  {"1 & 'a'", "1a", 0},
                  {"2 > 1", "-1", 0}});
    for (const auto& [type, value, kept, error] : row) {
        const QString create = u"CREATE TABLE T (K LONG, A %1)"_s.arg(type);
        const QString source = value.startsWith(u'#')    ? u"DATETIME"_s
                               : value.startsWith(u'\'') ? u"TEXT"_s
                                                         : u"DOUBLE"_s;
        const bool number = source == "DOUBLE"_L1 && !value.contains("Null"_L1);
        const QString from = u"CREATE TABLE S (K LONG, V %1)"_s.arg(source);
        const QString fill = u"INSERT INTO S VALUES (1, %1)"_s.arg(value);
        const bool condition = value.contains(u'=') || value.contains(u'>');
        const QString given = condition ? u'(' + value + u')' : value;
        const bool flag = type == "YESNO"_L1;
        const QString one =
            flag ? u"INSERT INTO T VALUES (1, 0)"_s : u"INSERT INTO T (K) VALUES (1)"_s;
        QMap<QString, QStringList> ways = {
            {u"values"_s, {create, u"INSERT INTO T VALUES (1, %1)"_s.arg(value)}},
            {u"named values"_s, {create, u"INSERT INTO T (A, K) VALUES (%1, 1)"_s.arg(value)}},
            {u"select"_s, {create, u"INSERT INTO T (A, K) SELECT %1, 1"_s.arg(value)}},
            {u"union"_s,
             {create, u"INSERT INTO T (A) SELECT %1 UNION ALL SELECT %1 WHERE False"_s.arg(value)}},
            {u"update"_s, {create, one, u"UPDATE T SET A = %1"_s.arg(value)}},
            {u"joined update"_s,
             {create, one, u"CREATE TABLE J (K LONG)"_s, u"INSERT INTO J VALUES (1)"_s,
              u"UPDATE T, J SET T.A = %1 WHERE T.K = J.K"_s.arg(value)}},
        };
        if (value != "Null"_L1) {
            ways[u"default"_s] = {u"CREATE TABLE T (K LONG, A %1 DEFAULT %2)"_s.arg(type, given),
                                  u"INSERT INTO T (K) VALUES (1)"_s};
            ways[u"set default"_s] = {create,
                                      u"ALTER TABLE T ALTER COLUMN A SET DEFAULT "_s + given,
                                      u"INSERT INTO T (K) VALUES (1)"_s};
        }
        // A column of numbers has no memory of how its value was written.
        if (!number || (!value.contains(u'&') && !value.contains(u'='))) {
            if (!value.contains(u'&')) {
                ways[u"select a column"_s] = {create, from, fill,
                                              u"INSERT INTO T (K, A) SELECT K, V FROM S"_s};
                ways[u"update by a column"_s] = {
                    create, one, from, fill, u"UPDATE T INNER JOIN S ON T.K = S.K SET T.A = S.V"_s};
                if (value != "Null"_L1) {
                    ways[u"alter"_s] = {from, fill, u"ALTER TABLE S ALTER COLUMN V "_s + type,
                                        u"SELECT K, V AS A INTO T FROM S"_s};
                }
            }
        }
        for (auto way = ways.cbegin(); way != ways.cend(); ++way) {
            init();
            int seen = 0;
            for (qsizetype i = 0; i < way.value().size() && seen == 0; ++i) {
                seen = db_->RefusalOf(way.value().at(i)).section(u' ', 0, 0).toInt();
            }
            const bool enginesOwn = error == Missing && seen == -1;
            QVERIFY2(seen == error || enginesOwn,
                     qPrintable(way.key() + u' ' + QString::number(seen)));
            if (error == 0) {
                const QStringList stored = db_->Run("SELECT A FROM T");
                const QString bare = kept.endsWith(".0"_L1) ? kept.chopped(2) : kept;
                QVERIFY2(
                    stored == List(kept) || stored == List(bare) || stored == List(bare + u".0"_s),
                    qPrintable(way.key() + u' ' + stored.join(u';')));
            }
        }
    }
}

// Texts of one shape share a translation, which is what makes a long script quick.
TEST(TestStoring, TellsShapesApart) {
    Each<QByteArray, bool> row;
    for (const char* same : {"1", "0012", "999999999999999999"}) {
        row(same, same, true);
    }
    for (const char* other : {"-1", "1.5", "1234567890123456789", "'1'", "#3/5/2024#", "Null"}) {
        row(other, other, false);
    }
    for (const auto& [value, same] : row) {
        const QByteArray given = "UPDATE T SET A = " + value;
        QCOMPARE(sql::Shape(given).Key() == sql::Shape("UPDATE T SET A = 7").Key(), same);
        QVERIFY(sql::Shape("UPDATE T SET A = 'b'").Key() ==
                sql::Shape("UPDATE T SET A = 'it''s'").Key());
        QVERIFY(sql::Shape(given).Key() != sql::Shape("UPDATE U SET A = 7").Key());
    }
}

TEST(TestStoring, NamesTheColumn) {
    // The engine would make up a key where none is given, again at each run.
    const QString key = QString::number(Missing) + u" *PECA.CodigoPeca*"_s;
    const QString view = u"*grave em REFERENCIACRUZADA.*"_s;
    for (const auto& [text, refusal] : Each<QString, QString>{
             {"no key", "INSERT INTO PECA (NumeroTarvoPeca) VALUES ('1')", key},
             {"Null for it", "INSERT INTO PECA (CodigoPeca) VALUES (Null)", key},
             {"computed", "INSERT INTO PECA (CodigoPeca) SELECT Null & Null", key},
             {"Null from a query", "INSERT INTO PECA (CodigoPeca) SELECT Null", key},
             {"none from a query", "INSERT INTO PECA (NumeroTarvoPeca) SELECT 'x'", key},
             {"literal", "UPDATE PECA SET CodigoFigura = 'abc'", "13 *CodigoFigura*"},
             {"column", "UPDATE PECA SET CodigoFigura = DescricaoPeca", "13 *PECA.CodigoFigura*"},
             {"unknown", "UPDATE PECA SET Nada = 1", "3061 *Nada*"},
             {"view", "UPDATE REFERENCIACRUZADA1 SET NumeroTarvo = '1'",
              u"*REFERENCIACRUZADA1; "_s + view.sliced(1)},
             {"view, by insert", "INSERT INTO REFERENCIACRUZADA1 VALUES ('1', '2')", view},
             {"view, by delete", "DELETE FROM REFERENCIACRUZADA1", view},
             {"link", "CREATE TABLE L (A LONG REFERENCES PECA (CodigoPeca) ON DELETE CASCADE)",
              "*REFERENCES PECA*"},
             {"named link",
              "ALTER TABLE PECA ADD CONSTRAINT F FOREIGN KEY (CodigoFigura) REFERENCES FIGURA",
              "*REFERENCES FIGURA*"},
         }) {
        db_->MakeCatalogue();
        const QString said = db_->RefusalOf(text);
        QVERIFY2(Like(said, refusal) == refusal && !said.startsWith("accepted"_L1),
                 qPrintable(said));
    }
}
