#include "memorydatabase.h"

struct TestStoring : Fixture {
    void init() override { db_ = std::make_unique<MemoryDatabase>(); }

    std::unique_ptr<MemoryDatabase> db_;
};

// What a column keeps of a value is the same whichever way the value comes.
TEST(TestStoring, KeepsTheSameEveryWay) {
    // Each line of the file is a type and values with "=>" and what is kept of them, or the
    // error's number in brackets.
    Each<QString, QString, QString, int> row;
    const QString all = sys::ReadText(QStringLiteral(TARVO_SQL_CASES "/guardados.data"));
    for (const QString& line : all.split(u'\n', Qt::SkipEmptyParts)) {
        for (const QString& one : line.split(u'\t').sliced(1)) {
            const QString type = line.section(u'\t', 0, 0);
            const QString kept = one.section(u" => "_s, 1);
            const int error = kept.startsWith(u'[') ? kept.sliced(1).chopped(1).toInt() : 0;
            row((type + u' ' + one).toUtf8(), type, one.section(u" => "_s, 0, 0), kept, error);
        }
    }
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
            // The engine itself refuses Null.
            QVERIFY2(seen == error || (error == 3314 && seen == -1),
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
