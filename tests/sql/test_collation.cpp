#include "platform/sql/collation.h"
#include "platform/sql/errors.h"
#include "platform/sql/likepattern.h"
#include "support/cases.h"

#include <algorithm>

namespace collation = sql::collation;

namespace {

int Sign(int value) {
    return (value > 0) - (value < 0);
}

int CompareBytes(const QByteArray& a, const QByteArray& b) {
    return Sign(collation::CompareUtf8(a.constData(), a.size(), b.constData(), b.size()));
}

}  // namespace

struct TestCollation : Fixture {};

TEST(TestCollation, SortsAsADictionaryDoes) {
    // The others stand in a file, one a line.
    const QString others = sys::ReadText(QStringLiteral(TARVO_SQL_CASES "/ordem.data"));
    const QStringList sorted =
        List("", "\x01", "\t", "\x1F", "\x7F", "\u0080", "\u009F", " ", "\u00A0") +
        others.split(u'\n', Qt::SkipEmptyParts);
    QVERIFY(sorted.size() > 250);
    for (qsizetype i = 0; i < sorted.size(); ++i) {
        for (qsizetype j = 0; j < sorted.size(); ++j) {
            const QString& a = sorted.at(i);
            const QString& b = sorted.at(j);
            const int expected = Sign(static_cast<int>(i - j));
            QVERIFY2(Sign(collation::Compare(a, b)) == expected &&
                         CompareBytes(a.toUtf8(), b.toUtf8()) == expected,
                     qPrintable(a + u" : "_s + b));
        }
    }
}

TEST(TestCollation, EqualityIgnoresCaseAndMindsAccents) {
    for (const auto& [a, b, equal] : Each<QString, QString, bool>{
             {"ascii", "Anel de Vedação 12A", "ANEL DE VEDAÇÃO 12a", true},
             {"extended", "ŸŻŐ", "ÿżő", true},
             {"cyrillic", "Ж", "ж", true},
             {"accent", "avô", "avó", false},
             {"trailing blank", "a", "a ", false},
         }) {
        QCOMPARE(collation::Compare(a, b) == 0, equal);
        QCOMPARE(CompareBytes(a.toUtf8(), b.toUtf8()) == 0, equal);
        QCOMPARE(sql::Pattern(b).Matches(a), equal);
    }
}

// Sorting breaks, and an index is lost, when the order of any three contents contradicts
// itself.
TEST(TestCollation, IsAnOrderOnAnyBytes) {
    QRandomGenerator random(7);
    const QByteArray pool =
        "aA\xC3\xA1\xC3\x81 1-\xFF\xC3\xF4\x8F\xBF\xBF\xED\xA0\x80"
        "eE\xC0\x00"_ba;
    QList<QByteArray> texts;
    for (int i = 0; i < 150; ++i) {
        QByteArray text;
        for (int n = random.bounded(12); n > 0; --n) {
            text += pool.at(random.bounded(static_cast<int>(pool.size())));
        }
        texts.append(text);
    }
    for (const QByteArray& a : texts) {
        QCOMPARE(CompareBytes(a, a), 0);
        for (const QByteArray& b : texts) {
            const int ab = CompareBytes(a, b);
            QCOMPARE(CompareBytes(b, a), -ab);
            for (const QByteArray& c : texts) {
                if (ab <= 0 && CompareBytes(b, c) <= 0) {
                    QVERIFY(CompareBytes(a, c) <= 0);
                }
                QVERIFY(ab != 0 || CompareBytes(a, c) == CompareBytes(b, c));
            }
        }
    }
}

// Each line of padroes.data is a pattern, behind ~ one as it is typed, and texts: those behind + it
// matches, those behind - it does not.
TEST(TestCollation, Matches) {
    Lines lines(TARVO_SQL_CASES "/padroes.data");
    lines("line end", {"a*b", "+a\r\nb"});
    for (const auto& [cells] : lines) {
        const bool typed = cells.first().startsWith(u'~');
        const sql::Pattern ready(cells.first().sliced(typed ? 1 : 0),
                                 typed ? sql::Accents::AsTyped : sql::Accents::Minded);
        for (const QString& cell : cells.sliced(1)) {
            const QString text = cell.sliced(1);
            QVERIFY2(ready.Matches(text) == cell.startsWith(u'+'), qPrintable(cell));
            QVERIFY2(ready.MatchesUtf8(text.toStdString()) == cell.startsWith(u'+'),
                     qPrintable(cell));
        }
    }
}

// As Unicode takes letters apart.
TEST(TestCollation, FindsEveryAccentedLetter) {
    int letters = 0;
    for (char16_t code = 0x00C0; code < 0x0180; ++code) {
        const QString letter = QChar(code);
        const QString base = QChar(code).decomposition().left(1);
        if (QChar(code).decompositionTag() == QChar::Canonical) {
            const sql::Pattern plain(base, sql::Accents::AsTyped);
            QVERIFY2(plain.Matches(letter) && collation::Compare(letter, base) > 0 &&
                         collation::Compare(letter, base + u'a') < 0,
                     qPrintable(letter));
            ++letters;
        }
    }
    QVERIFY(letters > 150);
}

TEST(TestCollation, RefusesWhatWouldTakeTooLong) {
    const std::string text(10'000'000, 'a');
    const QString beginning(5000, u'a');
    QCOMPARE(ErrorOf([&] { sql::Pattern(u'*' + beginning + u'b').MatchesUtf8(text); }),
             static_cast<int>(sql::Failure::BadPattern));
    QVERIFY(sql::Pattern(u"*a*b*"_s).MatchesUtf8(text + 'b'));
    QVERIFY(!sql::Pattern(QString(32767, u'*') + u"b*"_s).Matches(u"a"_s));  // a full box
    // Would not end if runs were tried in all their combinations.
    const QString runs = u"*a"_s.repeated(13);
    QVERIFY(!sql::Pattern(runs + u"*c"_s).Matches(QString(20000, u'a')));
    QVERIFY(sql::Pattern(runs + u"*b"_s).Matches(QString(20000, u'a') + u'b'));
}

// However many a statement holds; what it gave back serves the next.
TEST(TestCollation, ManyLongPatterns) {
    const sql::Pattern manyRuns(u"*a"_s.repeated(40));
    QVERIFY(manyRuns.MatchesUtf8(std::string(40, 'a')));
    QVERIFY(!manyRuns.MatchesUtf8(std::string(39, 'a')));
    const QString longOne = u"*a"_s.repeated(20000);
    for (int round = 0; round < 2; ++round) {
        std::vector<std::unique_ptr<sql::Pattern>> held;
        const int error = ErrorOf([&] {
            while (held.size() < 300) {
                held.push_back(std::make_unique<sql::Pattern>(longOne));
            }
        });
        QCOMPARE(error, static_cast<int>(sql::Failure::Resources));
        QVERIFY(held.size() > 20);
    }
}
