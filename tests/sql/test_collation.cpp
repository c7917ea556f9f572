#include "platform/sql/collation.h"
#include "platform/sql/errors.h"
#include "platform/sql/likepattern.h"
#include "support/test.h"

#include <QRandomGenerator>

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
    const QStringList sorted = {
        u""_s,           u"\t"_s,     u" "_s,     u"   7"_s,    u"  12"_s,    u"  12a"_s,
        u" 100"_s,       u"!"_s,      u"-1"_s,    u"1"_s,       u"10"_s,      u"1A"_s,
        u"2"_s,          u"a"_s,      u"A b"_s,   u"abacate"_s, u"abóbora"_s, u"Açaí"_s,
        u"acalanto"_s,   u"ação"_s,   u"aço"_s,   u"cafe"_s,    u"café"_s,    u"cafés"_s,
        u"coco"_s,       u"cocó"_s,   u"côco"_s,  u"cocos"_s,   u"Ênfase"_s,  u"Łódź"_s,
        u"Müller"_s,     u"mulo"_s,   u"ñandu"_s, u"naõ"_s,     u"Peça"_s,    u"pecado"_s,
        u"São"_s,        u"straße"_s, u"über"_s,  u"zíper"_s,   u"яблоко"_s,  u"\U0001F600"_s,
        u"\U0010FFFF"_s,
    };
    for (qsizetype i = 0; i < sorted.size(); ++i) {
        for (qsizetype j = 0; j < sorted.size(); ++j) {
            const QString& a = sorted.at(i);
            const QString& b = sorted.at(j);
            const int expected = Sign(static_cast<int>(i - j));
            QVERIFY2(Sign(collation::Compare(a, b)) == expected, qPrintable(a + u" : "_s + b));
            QVERIFY2(CompareBytes(a.toUtf8(), b.toUtf8()) == expected,
                     qPrintable(a + u" : "_s + b));
        }
    }
}

TEST(TestCollation, EqualityIgnoresCaseAndMindsAccents) {
    for (const auto& [a, b, equal] : Each<QString, QString, bool>{
             {"ascii", "Anel de Vedação 12A", "ANEL DE VEDAÇÃO 12a", true},
             {"extended", "ŸŻŐ", "ÿżő", true},
             {"cyrillic", "Ж", "ж", true},
             {"accent", "avo", "avó", false},
             {"other accent", "avô", "avó", false},
             {"cedilla", "peca", "peça", false},
             {"trailing blank", "a", "a ", false},
         }) {
        QCOMPARE(collation::Compare(a, b) == 0, equal);
        QCOMPARE(CompareBytes(a.toUtf8(), b.toUtf8()) == 0, equal);
        QCOMPARE(collation::Like(a, b), equal);
    }
}

// Sorting breaks, and an index is lost, when the order of any three contents contradicts
// itself.
TEST(TestCollation, IsAnOrderOnAnyBytes) {
    QRandomGenerator random(7);
    constexpr char Bytes[] =
        "aA\xC3\xA1\xC3\x81 1-\xFF\xC3\xF4\x8F\xBF\xBF\xED\xA0\x80"
        "eE\xC0\x00";
    const QByteArray pool(Bytes, sizeof(Bytes) - 1);
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

TEST(TestCollation, Matches) {
    for (const auto& [pattern, yes, no] : Each<QString, QStringList, QStringList>{
             {"prefix", "emb*", List("EMBOLO", "emb"), List("Êmbolo", "em", "xemb")},
             {"accented prefix", "ÊMB*", List("Êmbolo", "êmbolo"), List("Embolo")},
             {"inside", "*água*", List("Pino d´Água", "ÁGUA"), List("agua", "")},
             {"several runs", "*a*b*c", List("xaybzc", "abcabc"), List("abcx", "acb")},
             {"one", "?a?", List(u"pás"_s.replace(u'á', u'a'), "ça1"), List("a", "paás")},
             {"one of two units", "a?b", List("a\U0001F600b"), List("ab")},
             {"digit", "##-?", List("12-A"), List("1²-A", "1a-b", "12-")},
             {"list", "[abc]x", List("Bx"), List("dx", "x", "áx")},
             {"range", "[a-c]", List("B", "á"), List("d", "-")},
             {"list not", "[!0-9]*", List("A1", "-"), List("1A", "")},
             {"hyphen itself", "[-a][a-]", List("--", "a-"), List("b-")},
             {"wildcards themselves", "[*][?][#][[]]", List("*?#[]"), List("ab1[]")},
             {"exclamation alone", "[!]", List("!"), List("a")},
             {"empty list", "a[]b", List("ab"), List("axb")},
             {"line ends", "a*b", List("a\r\nb"), List()},
         }) {
        const sql::Pattern ready(pattern);
        for (const QString& text : yes + no) {
            QVERIFY2(collation::Like(text, pattern) == yes.contains(text), qPrintable(text));
            QVERIFY2(ready.MatchesUtf8(text.toStdString()) == yes.contains(text), qPrintable(text));
        }
    }
}

TEST(TestCollation, TakesAccentsAsTyped) {
    for (const auto& [pattern, yes, no] : Each<QString, QStringList, QStringList>{
             {"beginning", "valv*", List("Válvula", "VALVULA", "vâlv"), List("val", "xvalv")},
             {"inside", "*rele*", List("o Relé", "RELÊ", "Rele 5"), List("rel", "réi")},
             {"accent minds itself", "*relé", List("RELÉ", "rÉLÉ"), List("rele", "relê")},
             {"whole", "orgao", List("Órgão", "orgao"), List("Órgão 2", "orga")},
             {"list", "[ac]*", List("á", "Ç", "c"), List("b")},
             {"list with an accent", "[á]", List("Á"), List("a", "à")},
             {"range", "[a-c]o", List("ço", "ão"), List("do")},
             {"list not", "[!a]", List("b", "é"), List("a", "ã")},
             {"ordinals and raised digits", "1o m2", List("1º m²", "1o m2"), List("1a m2")},
             {"letters of their own", "daotsdhiiklnots", List("ðæøþßđħıĳĸłŋœŧſ", "ÐÆØÞßĐĦıĲĸŁŊŒŦſ"),
              List("ðæøþßđħıĳĸłŋœŧ")},
             {"other alphabets and signs", "*д-", List("Д-"), List("Д+")},
         }) {
        const sql::Pattern ready(pattern, sql::Accents::AsTyped);
        for (const QString& text : yes + no) {
            QVERIFY2(ready.Matches(text) == yes.contains(text), qPrintable(text));
            QVERIFY2(ready.MatchesUtf8(text.toStdString()) == yes.contains(text), qPrintable(text));
        }
    }
}

// As Unicode takes letters apart.
TEST(TestCollation, FindsEveryAccentedLetter) {
    int letters = 0;
    for (char16_t code = 0x00C0; code < 0x0180; ++code) {
        const QString base = QChar(code).decomposition().left(1);
        if (QChar(code).decompositionTag() == QChar::Canonical) {
            const sql::Pattern plain(base, sql::Accents::AsTyped);
            QVERIFY2(plain.Matches(QString(QChar(code))), qPrintable(QString(QChar(code))));
            QVERIFY(collation::Compare(QString(QChar(code)), base) > 0);
            QVERIFY(collation::Compare(QString(QChar(code)), base + u'a') < 0);
            ++letters;
        }
    }
    QVERIFY(letters > 150);
}

TEST(TestCollation, RefusesBadPatterns) {
    for (const auto& [pattern] : Each<QString>{
             {"open", "abc[de"},
             {"open at the end", "*["},
             {"backwards", "[z-a]"},
         }) {
        try {
            collation::Like(u"abc", pattern);
            QFAIL("accepted");
        } catch (const Erro& erro) {
            QCOMPARE(erro.Number(), static_cast<int>(sql::Failure::BadPattern));
        }
    }
}

TEST(TestCollation, RefusesWhatWouldTakeTooLong) {
    const std::string text(10'000'000, 'a');
    const QString beginning(5000, u'a');
    QCOMPARE(ErrorOf([&] { sql::Pattern(u'*' + beginning + u'b').MatchesUtf8(text); }),
             static_cast<int>(sql::Failure::BadPattern));
    QVERIFY(sql::Pattern(u"*a*b*"_s).MatchesUtf8(text + 'b'));
    QVERIFY(!sql::Pattern(QString(32767, u'*') + u"b*"_s).Matches(u"a"_s));  // a full box
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

// Would take longer than the test may run if runs were tried in all their combinations.
TEST(TestCollation, ManyRunsDoNotExplode) {
    const QString text = QString(20000, u'a') + u'b';
    QVERIFY(!collation::Like(text, u"*a*a*a*a*a*a*a*a*a*a*a*a*a*c"));
    QVERIFY(collation::Like(text, u"*a*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}
