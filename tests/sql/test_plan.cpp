#include "memorydatabase.h"
#include "platform/sql/collation.h"
#include "platform/sql/plan.h"
#include "support/cases.h"

#include <algorithm>
#include <sqlite3.h>

namespace {

constexpr int RowsPerTable = 120;
const QStringList Tables = List("COMPONENTE", "JOGOREPARO", "PECA");

// Stands for the reader's clock: lets a row through always, never, or now and then.
enum class Pulse { Never, Sometimes, Always };
Pulse g_pulse = Pulse::Never;
QRandomGenerator g_random(11);

void FakePulse(sqlite3_context* context, int, sqlite3_value**) {
    const bool fires =
        g_pulse == Pulse::Always || (g_pulse == Pulse::Sometimes && g_random.bounded(5) == 0);
    sqlite3_result_int(context, fires ? 1 : 0);
}

template <typename List>
auto Any(const List& list) {
    return list.at(g_random.bounded(static_cast<int>(list.size())));
}

void Fill(const MemoryDatabase& db) {
    const QStringList words = List("Eixo", "êixo", "EIXO", "Pino", "Peça", "peca");
    for (const QString& table : Tables) {
        db.RunNative("DELETE FROM " + table.toUtf8());
        for (int i = 1; i <= RowsPerTable; ++i) {
            const QString number =
                Any(List("A", "1", "12")) + QString::number(g_random.bounded(90));
            const QString name = g_random.bounded(15) == 0
                                     ? u"NULL"_s
                                     : u"'%1 %2'"_s.arg(Any(words)).arg(g_random.bounded(9));
            db.RunNative(
                u"INSERT INTO %1 (Codigo%1, NumeroTarvo%1, Descricao%1) VALUES "
                "(%2, '%3', %4)"_s.arg(table, QString::number(i), number, name)
                    .toUtf8());
            for (int n = g_random.bounded(3) - 1; n > 0; --n) {
                db.RunNative(u"INSERT OR IGNORE INTO REFERENCIACRUZADA VALUES (%1, '%2', 'X%3')"_s
                                 .arg(1 + g_random.bounded(2))
                                 .arg(number)
                                 .arg(g_random.bounded(40))
                                 .toUtf8());
            }
        }
    }
}

// A search as the screen builds it, of any combination of inputs.
QString RandomSearch(const QString& order) {
    const int customer = g_random.bounded(3);  // none, shown, selected but not shown
    QStringList where;
    if (customer > 0 && g_random.bounded(2) == 0) {
        where += u"REFERENCIACRUZADA1.NumeroClienteConcorrente "_s +
                 Any(List("LIKE 'X1*'", "LIKE 'x*'", "= 'x12'", "LIKE '*'"));
    }
    if (g_random.bounded(2) == 0) {
        where += u"%1.NumeroTarvo%1 LIKE '"_s + Any(List("1", "12", "a5", "", "12A")) + u"*'"_s;
    }
    if (g_random.bounded(2) == 0) {
        where += u"%1.Descricao%1 LIKE '"_s + Any(List("e", "Ê", "*o 3", "pe?a", "[ep]*1", "zz")) +
                 u"*'"_s;
    }
    const QString join = customer == 0 ? QString()
                                       : u"LEFT JOIN REFERENCIACRUZADA1 ON %1.NumeroTarvo%1 "
                                         "= REFERENCIACRUZADA1.NumeroTarvo "_s;
    const QString column = customer == 1 ? u"REFERENCIACRUZADA1.NumeroClienteConcorrente"_s
                                         : u"'' AS NumeroClienteConcorrente"_s;
    const QString arm = u"SELECT %1.NumeroTarvo%1 As NumeroTarvo,%1.Descricao%1 AS Descricao,"_s +
                        column + u",'%1' AS Tipo,Codigo%1 AS Codigo FROM %1 "_s + join +
                        (where.isEmpty() ? QString() : u"WHERE "_s + where.join(u" AND "_s) + u' ');
    QStringList arms;
    const int kinds = g_random.bounded(4);
    for (int i = 0; i < 3; ++i) {
        if (kinds == 3 || kinds == i) {
            arms += arm.arg(Tables.at(i));
        }
    }
    return arms.join(u"UNION ALL "_s) + u"ORDER BY "_s + order;
}

bool SameKey(const QString& a, const QString& b, const QString& order) {
    for (const QString& ordinal : order.split(u',')) {
        const int column = ordinal.toInt() - 1;
        if (sql::collation::Compare(a.section(u'|', column, column),
                                    b.section(u'|', column, column)) != 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

struct TestPlan : Fixture {
    TestPlan() {
        sqlite3_create_function_v2(db_.Handle(), "dao_pulse", 0, SQLITE_UTF8, nullptr, FakePulse,
                                   nullptr, nullptr, nullptr);
        Fill(db_);
    }

    // As the plain query's: the names, if there is a row, then the rows that are some, without what
    // is hidden. What is counted is few, some or very many, so that all ways of finding rows are
    // gone.
    QStringList RunPlan(const QString& text) const {
        const auto count = [](const QByteArray&) {
            return Any(QList<qint64>{1, 100, sql::CountLimit + 1, 1'000'000});
        };
        const auto plan = sql::PlanQuery(text, db_.Schema(), count, accents_);
        QStringList rows;
        for (const QByteArray& statement : plan.statements) {
            const QStringList part = db_.RunNative(statement, true);
            for (const QString& row : rows.isEmpty() ? part : part.mid(1)) {
                const QString flag = row.section(u'|', plan.resultColumns, plan.resultColumns);
                if (plan.resultColumns == 0) {
                    rows.append(row);
                } else if (flag != u"0"_s && flag != u"-"_s) {
                    rows.append(row.section(u'|', 0, plan.resultColumns - 1));
                }
            }
        }
        return rows.size() > 1 ? rows : QStringList();
    }

    MemoryDatabase db_;
    sql::Accents accents_ = sql::Accents::Minded;
};

// Whatever way the plan goes, and wherever the reader looks up, the rows are those of the text.
TEST(TestPlan, GivesTheRowsOfTheText) {
    for (const auto& [order] :
         Each<QString>{{"1"}, {"2"}, {"3"}, {"4,1"}, {"1,2"}, {"4,3"}, {"2,5"}}) {
        for (int round = 0; round < 50; ++round) {
            const QString text = RandomSearch(order);
            accents_ = round % 2 ? sql::Accents::AsTyped : sql::Accents::Minded;
            const QStringList plain = db_.Run(text, true, accents_);
            for (const Pulse pulse : {Pulse::Never, Pulse::Sometimes, Pulse::Always}) {
                g_pulse = pulse;
                const QStringList planned = RunPlan(text);
                QVERIFY2(planned.size() == plain.size(), qPrintable(text));
                QCOMPARE(planned.value(0), plain.value(0));
                for (qsizetype i = 1; i < plain.size(); ++i) {
                    QVERIFY2(SameKey(planned.at(i), plain.at(i), order), qPrintable(text));
                }
                QVERIFY2(std::ranges::is_permutation(planned, plain), qPrintable(text));
            }
        }
    }
}

// Every row on the way gives the reader a chance, the ones that do not match as well.
TEST(TestPlan, PassesEveryRow) {
    g_pulse = Pulse::Always;
    for (const auto& [order] : Each<QString>{{"1"}, {"2"}, {"3"}, {"4,1"}, {"5"}}) {
        const auto plan = sql::PlanQuery(
            u"SELECT NumeroTarvoPeca AS N, DescricaoPeca AS D, NumeroClienteConcorrente AS C, "
            "'Peça' AS T, CodigoPeca AS P FROM PECA LEFT JOIN REFERENCIACRUZADA1 ON "
            "PECA.NumeroTarvoPeca = REFERENCIACRUZADA1.NumeroTarvo WHERE DescricaoPeca LIKE '*x*' "
            "ORDER BY "_s +
                order,
            db_.Schema(), [](const QByteArray&) { return qint64(sql::CountLimit + 1); });
        const qsizetype passed = db_.RunNative(plan.statements.join(';')).size();
        QVERIFY2(passed >= RowsPerTable, qPrintable(QString::number(passed)));
    }
}

// Each case of planos.data is named by its text; it is how many rows a condition finds and the
// highest number of a row, or a hyphen where it is no search, and the engine's way through each
// statement.
TEST(TestPlan, TakesItsWayByWhatIsCounted) {
    Cases cases(TARVO_SQL_CASES "/planos.data");
    for (const auto& [one] : cases) {
        const QStringList lines = List(cases.Name().constData()) + one.lines;
        const QStringList counts = lines.at(1).split(u' ');
        const auto plan = sql::PlanQuery(lines.first(), db_.Schema(), [&](const QByteArray& sql) {
            db_.RunNative(sql);
            return counts.at(sql.startsWith("SELECT max(") ? 1 : 0).toLongLong();
        });
        QCOMPARE(plan.resultColumns == 0, lines.at(1) == "-"_L1);
        if (lines.size() == 2) {
            continue;
        }
        QStringList steps = lines.first(2);
        for (const QByteArray& statement : plan.statements) {
            for (const QString& step : db_.RunNative("EXPLAIN QUERY PLAN " + statement)) {
                if (!step.contains("SUBQUERY"_L1)) {
                    steps += step.section(u'|', 3).remove(" LEFT-JOIN"_L1);
                }
            }
        }
        QCOMPARE(steps, lines);
    }
}

// The range that the index is asked for holds all that the pattern can match.
TEST(TestPlan, FindsEveryAccentOfABeginning) {
    accents_ = sql::Accents::AsTyped;
    for (const AnyText pattern : {"peca*", "êix*", "peca 3"}) {
        QStringList rows = RunPlan(
                               u"SELECT DescricaoPeca AS d, CodigoPeca AS c FROM PECA WHERE "
                               "DescricaoPeca LIKE '%1' ORDER BY 1"_s.arg(pattern))
                               .mid(1);
        QStringList expected = db_.RunNative("SELECT DescricaoPeca, CodigoPeca FROM PECA");
        const sql::Pattern typed(pattern, accents_);
        expected.removeIf(
            [&](const QString& row) { return !typed.Matches(row.section(u'|', 0, 0)); });
        rows.sort();
        expected.sort();
        QVERIFY(!rows.isEmpty());
        QCOMPARE(rows, expected);
    }
}
