#include "memorydatabase.h"
#include "platform/sql/functiontable.h"
#include "support/cases.h"
#include "support/servers.h"

#include <QLocale>

using sql::Function;

struct TestDialect : OverTheCatalogue {
    static QString Ask(const QString& expression) {
        return u"SELECT "_s + expression + u" FROM LINHA"_s;
    }
    QString ValueOf(const QString& expression) const {
        return db_->Run(Ask(expression)).join(u'\n');
    }

    // With an error like this, and nothing is changed.
    void Refuses(const QString& text, const QString& error) const {
        const QStringList before = db_->Everything();
        const QString pattern = error + u'*';
        const QString said = db_->RefusalOf(text).left(200);
        QVERIFY2(Like(said, pattern) == pattern, qPrintable(text.left(200) + u": "_s + said));
        QCOMPARE(db_->Everything(), before);
    }
};

// The cases of casos.data, which tells how they are written.
TEST(TestDialect, Cases) {
    Cases cases(TARVO_SQL_CASES "/casos.data");
    cases("top of tops", {{u"?? SELECT TOP 1 x FROM "_s + u"(SELECT TOP 2 x FROM "_s.repeated(20) +
                               u"(SELECT CodigoPeca AS x FROM PECA)"_s +
                               u" AS t ORDER BY x DESC)"_s.repeated(20) + u" AS t ORDER BY x"_s,
                           u"4"_s}});
    for (const auto& [one] : cases) {
        const QStringList& lines = one.lines;
        static const QRegularExpression mark(u"[?!][?!=].*"_s);
        for (qsizetype i = 0; i < lines.size();) {
            const QString head = lines.at(i++);
            if (lines.indexOf(mark, i - 1) != i - 1) {
                db_->Run(head);
                continue;
            }
            const qsizetype next = lines.indexOf(mark, i);
            const QStringList block = lines.mid(i, next < 0 ? -1 : next - i);
            i += block.size();
            if (head.startsWith("??"_L1)) {
                QCOMPARE(db_->Run(head.mid(3)), block);
                continue;
            }
            for (const QString& text : block) {
                const QString expression = text.section(u" => "_s, 0, -2);
                if (head == "?="_L1) {
                    QCOMPARE(expression + u" => "_s + ValueOf(expression), text);
                } else {
                    Refuses(head.startsWith("!="_L1) ? Ask(text) : text, head.mid(3));
                }
            }
        }
    }
}

// Each line of excess.data is an error, a text's beginning, what comes then so many times, and how
// the text ends.
TEST(TestDialect, RefusesHoweverMuch) {
    Lines lines(TARVO_SQL_CASES "/excess.data");
    lines("nothing", {"3129 ", ""});
    lines("a line end", {"3129 ", " \r\n"});
    lines("zero", {"3075 Erro de sintaxe no comando", u"SELECT '\0' FROM PECA"_s});
    for (const auto& [cells] : lines) {
        const QString often = cells.value(2).repeated(cells.value(3).toInt());
        Refuses(cells.at(1) + often + cells.value(4), cells.first());
    }
}

TEST(TestDialect, MonthsByName) {
    for (int month = 1; month <= 12; ++month) {
        for (const QLocale& spoken : {QLocale(QLocale::C), QLocale(QLocale::Portuguese)}) {
            const QString name = spoken.monthName(month);
            for (const QString& written : {name, name.left(3).toUpper()}) {
                QCOMPARE(ValueOf(u"Month(#5-%1-2024#)"_s.arg(written)), QString::number(month));
            }
        }
    }
}

TEST(TestDialect, NullMakesNull) {
    for (const auto table : {sql::TextFunctions(), sql::NumberFunctions(), sql::DateFunctions()}) {
        for (const Function& function : table) {
            if (function.form != Function::Form::Evaluated || function.takesNull) {
                continue;
            }
            for (int place = 0; place < function.least; ++place) {
                QStringList arguments(function.least, u"1"_s);
                arguments[place] = u"Null"_s;
                const QString call =
                    QString::fromUtf8(function.name.data(), qsizetype(function.name.size())) +
                    u'(' + arguments.join(u',') + u')';
                QCOMPARE(call + ValueOf(call), call + u'-');
            }
        }
    }
}
