#include "memorydatabase.h"
#include "platform/sql/collation.h"
#include "platform/sql/plan.h"

#include <algorithm>
#include <sqlite3.h>

namespace {

constexpr int RowsPerTable = 120;

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
    const QStringList words = {u"Eixo"_s, u"êixo"_s, u"EIXO"_s, u"Pino"_s, u"Peça"_s, u"peca"_s};
    const QList<QByteArray> tables = {"COMPONENTE", "JOGOREPARO", "PECA"};
    for (const QByteArray& table : tables) {
        db.RunNative("DELETE FROM " + table);
        for (int i = 0; i < RowsPerTable; ++i) {
            const QString number =
                Any(List("A", "1", "12")) + QString::number(g_random.bounded(90));
            const QString name = Any(words) + u' ' + QString::number(g_random.bounded(9));
            const bool none = g_random.bounded(15) == 0;
            db.RunNative("INSERT INTO " + table + " (Codigo" + table + ", NumeroTarvo" + table +
                         ", Descricao" + table + ") VALUES (" + QByteArray::number(i + 1) + ", '" +
                         number.toUtf8() + "', " +
                         (none ? QByteArray("NULL") : "'" + name.toUtf8() + "'") + ")");
            for (int n = g_random.bounded(3) - 1; n > 0; --n) {
                db.RunNative("INSERT OR IGNORE INTO REFERENCIACRUZADA VALUES (" +
                             QByteArray::number(1 + g_random.bounded(2)) + ", '" + number.toUtf8() +
                             "', 'X" + QByteArray::number(g_random.bounded(40)) + "')");
            }
        }
    }
}

const QString SearchOfParts =
    u"SELECT PECA.NumeroTarvoPECA As NumeroTarvo,PECA.DescricaoPECA AS "
    "Descricao,REFERENCIACRUZADA1.NumeroClienteConcorrente,'Peça' AS Tipo,CodigoPECA AS "
    "Codigo FROM PECA LEFT JOIN REFERENCIACRUZADA1 ON PECA.NumeroTarvoPECA = "
    "REFERENCIACRUZADA1.NumeroTarvo "_s;

// A search as the screen builds it, of any combination of inputs.
QString RandomSearch(const QString& order) {
    const int customer = g_random.bounded(3);  // none, shown, selected but not shown
    QStringList where;
    if (customer > 0 && g_random.bounded(2) == 0) {
        where += u"REFERENCIACRUZADA1.NumeroClienteConcorrente "_s +
                 Any(List("LIKE 'X1*'", "LIKE 'x*'", "= 'x12'", "LIKE '*'"));
    }
    if (g_random.bounded(2) == 0) {
        where +=
            u"?????.NumeroTarvo????? LIKE '"_s + Any(List("1", "12", "a5", "", "12A")) + u"*'"_s;
    }
    if (g_random.bounded(2) == 0) {
        where += u"?????.Descricao????? LIKE '"_s +
                 Any(List("e", "Ê", "*o 3", "pe?a", "[ep]*1", "zz")) + u"*'"_s;
    }
    const QString join = customer == 0 ? QString()
                                       : u"LEFT JOIN REFERENCIACRUZADA1 ON ?????.NumeroTarvo????? "
                                         "= REFERENCIACRUZADA1.NumeroTarvo "_s;
    const QString column = customer == 1 ? u"REFERENCIACRUZADA1.NumeroClienteConcorrente"_s
                                         : u"'' AS NumeroClienteConcorrente"_s;
    const QString arm =
        u"SELECT ?????.NumeroTarvo????? As NumeroTarvo,?????.Descricao????? AS Descricao,"_s +
        column + u",'!!!!!' AS Tipo,Codigo????? AS Codigo FROM ????? "_s + join +
        (where.isEmpty() ? QString() : u"WHERE "_s + where.join(u" AND "_s) + u' ');
    QStringList arms;
    const int kinds = g_random.bounded(4);
    const QList<QStringList> all = {{u"COMPONENTE"_s, u"Componente"_s},
                                    {u"JOGOREPARO"_s, u"Jogo de Reparo"_s},
                                    {u"PECA"_s, u"Peça"_s}};
    for (int i = 0; i < 3; ++i) {
        if (kinds == 3 || kinds == i) {
            arms += QString(arm).replace(u"?????"_s, all[i][0]).replace(u"!!!!!"_s, all[i][1]);
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
        db_.MakeCatalogue();
        sqlite3_create_function_v2(db_.Handle(), "dao_pulse", 0, SQLITE_UTF8, nullptr, FakePulse,
                                   nullptr, nullptr, nullptr);
        Fill(db_);
    }

    // The names, then the rows that are some, without what is hidden. What is counted is few, some
    // or very many, so that all ways of finding rows are gone.
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
        return rows;
    }

    MemoryDatabase db_;
    sql::Accents accents_ = sql::Accents::Minded;
};

// Whatever way the plan goes, and wherever the reader looks up, the rows are those of the text.
TEST(TestPlan, GivesTheRowsOfTheText) {
    Each<QString> row;
    for (const QString& order : {u"1"_s, u"2"_s, u"3"_s, u"4,1"_s, u"1,2"_s, u"4,3"_s, u"2,5"_s}) {
        row(qPrintable(order), order);
    }
    for (const auto& [order] : row) {
        for (int round = 0; round < 50; ++round) {
            const QString text = RandomSearch(order);
            accents_ = round % 2 ? sql::Accents::AsTyped : sql::Accents::Minded;
            const QStringList plain = db_.Run(text, true, accents_);
            for (const Pulse pulse : {Pulse::Never, Pulse::Sometimes, Pulse::Always}) {
                g_pulse = pulse;
                const QStringList planned = RunPlan(text);
                QVERIFY2(planned.size() == plain.size(), qPrintable(text));
                QCOMPARE(planned.first(), plain.first());
                for (qsizetype i = 1; i < plain.size(); ++i) {
                    QVERIFY2(SameKey(planned.at(i), plain.at(i), order), qPrintable(text));
                }
                QStringList a = planned;
                QStringList b = plain;
                std::sort(a.begin(), a.end());
                std::sort(b.begin(), b.end());
                QVERIFY2(a == b, qPrintable(text));
            }
        }
    }
}

// Nothing is sorted where the rows may be many.
TEST(TestPlan, WalksAnIndexInItsOrder) {
    Each<QString, QString> row;
    const QString inside = u"WHERE PECA.DescricaoPECA LIKE '*x*' "_s;
    row("number", inside, "1");
    row("description", inside, "2");
    row("kind", inside, "4,1");
    row("code", inside, "5");
    row("customer's number", inside, "3");
    row("other beginning", "WHERE PECA.DescricaoPECA LIKE 'e*' ", "1");
    row("customer's beginning", "WHERE REFERENCIACRUZADA1.NumeroClienteConcorrente LIKE 'X*' ",
        "3");
    row("customer's beginning, by number",
        "WHERE REFERENCIACRUZADA1.NumeroClienteConcorrente LIKE 'X*' ", "1");
    row("customer's beginning, by kind",
        "WHERE REFERENCIACRUZADA1.NumeroClienteConcorrente LIKE 'X*' ", "4,1");
    for (const auto& [where, order] : row) {
        const auto many = [](const QByteArray&) { return qint64(sql::CountLimit + 1); };
        const auto plan =
            sql::PlanQuery(SearchOfParts + where + u"ORDER BY "_s + order, db_.Schema(), many);
        g_pulse = Pulse::Always;
        qsizetype passed = 0;
        for (const QByteArray& statement : plan.statements) {
            const QString steps = db_.RunNative("EXPLAIN QUERY PLAN " + statement).join(u'\n');
            QVERIFY2(!steps.contains(u"TEMP B-TREE"_s), qPrintable(steps));
            passed += db_.RunNative(statement).size();
        }
        // Every row on the way gives the reader a chance, the ones that do not match as well.
        const bool ranged = where.contains(u"LIKE 'e"_s) || where.contains(u"LIKE 'X"_s);
        QVERIFY2(ranged || passed >= RowsPerTable, qPrintable(QString::number(passed)));
    }
}

// Each block of planos.data: a text, how many rows a condition finds and the highest number of a
// row, and the engine's way through each statement; or, behind a hyphen, that it is no search.
TEST(TestPlan, TakesItsWayByWhatIsCounted) {
    const QString all = sys::ReadText(QStringLiteral(TARVO_SQL_CASES "/planos.data"));
    Each<QStringList> row;
    for (const QString& block : all.split(u"\n\n"_s)) {
        row(block.toUtf8(), block.split(u'\n', Qt::SkipEmptyParts));
    }
    for (const auto& [lines] : row) {
        const QStringList counts = lines.at(1).split(u' ');
        const auto plan = sql::PlanQuery(lines.first(), db_.Schema(), [&](const QByteArray& sql) {
            db_.RunNative(sql);
            return counts.at(sql.startsWith("SELECT max(") ? 1 : 0).toLongLong();
        });
        if (lines.at(1) == "-"_L1) {
            QCOMPARE(plan.resultColumns, 0);
            QCOMPARE(plan.statements, db_.Translate(lines.first()).statements);
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
    for (const auto& [pattern] : Each<QString>{
             {"none typed", "peca*"},
             {"typed", "êix*"},
             {"whole", "peca 3"},
         }) {
        const QString text =
            u"SELECT DescricaoPeca AS d, CodigoPeca AS c FROM PECA WHERE DescricaoPeca LIKE "
            u"'%1' "
            "ORDER BY 1"_s.arg(pattern);
        const sql::Pattern typed(pattern, sql::Accents::AsTyped);
        QStringList expected;
        for (const QString& row : db_.RunNative("SELECT DescricaoPeca, CodigoPeca FROM PECA")) {
            if (typed.Matches(row.section(u'|', 0, 0))) {
                expected.append(row);
            }
        }
        accents_ = sql::Accents::AsTyped;
        QStringList rows = RunPlan(text).mid(1);
        rows.sort();
        expected.sort();
        QVERIFY(!rows.isEmpty());
        QCOMPARE(rows, expected);
    }
}
