#include "memorydatabase.h"
#include "support/cases.h"

struct TestStoring : OverTheCatalogue {};

// What a column keeps of a value is the same whichever way the value comes. Each line of the file
// is a type and values with "=>" and what is kept of them, or the error's number in brackets.
TEST(TestStoring, KeepsTheSameEveryWay) {
    for (const auto& [cells] : Lines(TARVO_SQL_CASES "/guardados.data")) {
        for (const QString& cell : cells.sliced(1)) {
            const QString& type = cells.first();
            const QString value = cell.section(u" => "_s, 0, 0);
            const QString kept = cell.section(u" => "_s, 1);
            const int error = kept.startsWith(u'[') ? kept.sliced(1).chopped(1).toInt() : 0;
            const QString create = u"CREATE TABLE T (K LONG, A %1)"_s.arg(type);
            const QString one = u"INSERT INTO T VALUES (1, 0)"_s;
            QList<QStringList> ways = {
                {create, u"INSERT INTO T VALUES (1, %1)"_s.arg(value)},
                {create, u"INSERT INTO T (A, K) VALUES (%1, 1)"_s.arg(value)},
                {create, u"INSERT INTO T (A, K) SELECT %1, 1"_s.arg(value)},
                {create,
                 u"INSERT INTO T (A) SELECT %1 UNION ALL SELECT %1 WHERE False"_s.arg(value)},
                {create, one, u"UPDATE T SET A = %1"_s.arg(value)},
                {create, one, u"CREATE TABLE J (K LONG)"_s, u"INSERT INTO J VALUES (1)"_s,
                 u"UPDATE T, J SET T.A = %1 WHERE T.K = J.K"_s.arg(value)},
            };
            if (value != "Null"_L1) {
                ways += {{u"CREATE TABLE T (K LONG, A %1 DEFAULT %2)"_s.arg(type, value),
                          u"INSERT INTO T (K) VALUES (1)"_s},
                         {create, u"ALTER TABLE T ALTER COLUMN A SET DEFAULT "_s + value,
                          u"INSERT INTO T (K) VALUES (1)"_s}};
            }
            if (!value.contains(u'&')) {
                const QString from =
                    u"CREATE TABLE S (K LONG, V %1)"_s.arg(value.startsWith(u'#')    ? u"DATETIME"_s
                                                           : value.startsWith(u'\'') ? u"TEXT"_s
                                                                                     : u"DOUBLE"_s);
                const QString fill = u"INSERT INTO S VALUES (1, %1)"_s.arg(value);
                ways += {{create, from, fill, u"INSERT INTO T (K, A) SELECT K, V FROM S"_s},
                         {create, one, from, fill,
                          u"UPDATE T INNER JOIN S ON T.K = S.K SET T.A = S.V"_s},
                         {from, fill, u"ALTER TABLE S ALTER COLUMN V "_s + type,
                          u"SELECT K, V AS A INTO T FROM S"_s}};
            }
            for (const QStringList& way : std::as_const(ways)) {
                init();
                int seen = 0;
                for (qsizetype i = 0; i < way.size() && seen == 0; ++i) {
                    seen = db_->RefusalOf(way.at(i)).section(u' ', 0, 0).toInt();
                }
                const QString told = way.join(u"; "_s) + u": "_s + QString::number(seen);
                // The engine itself refuses Null.
                QVERIFY2(seen == error || (error == 3314 && seen == -1), qPrintable(told));
                if (error == 0) {
                    const QString stored = db_->Run("SELECT A FROM T").join(u';');
                    const QString bare = kept.endsWith(".0"_L1) ? kept.chopped(2) : kept;
                    QVERIFY2(stored == kept || stored == bare || stored == bare + u".0"_s,
                             qPrintable(told + u' ' + stored));
                }
            }
        }
    }
}
