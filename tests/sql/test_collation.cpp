#include "platform/sql/collation.h"
#include "platform/sql/errors.h"
#include "platform/sql/likepattern.h"
#include "support/test.h"

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
        QCOMPARE(sql::Pattern(b).Matches(a), equal);
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
    using sql::Accents;
    Each<Accents, QString, QStringList, QStringList> row;
    const auto minded = [&row](const AnyText& pattern, const QStringList& yes,
                               const QStringList& no) {
        row(pattern.toUtf8(), Accents::Minded, pattern, yes, no);
    };
    const auto typed = [&row](const AnyText& pattern, const QStringList& yes,
                              const QStringList& no) {
        row(pattern.toUtf8(), Accents::AsTyped, pattern, yes, no);
    };
    minded("emb*", List("EMBOLO", "emb"), List("Êmbolo", "em", "xemb"));
    minded("ÊMB*", List("Êmbolo", "êmbolo"), List("Embolo"));
    minded("*água*", List("Pino d´Água", "ÁGUA"), List("agua", ""));
    minded("*a*b*c", List("xaybzc", "abcabc"), List("abcx", "acb"));
    minded("?a?", List("pas", "ça1"), List("a", "paás"));
    minded("a?b", List("a\U0001F600b"), List("ab"));
    minded("##-?", List("12-A"), List("1²-A", "1a-b", "12-"));
    minded("[abc]x", List("Bx"), List("dx", "x", "áx"));
    minded("[a-c]", List("B", "á"), List("d", "-"));
    minded("[!0-9]*", List("A1", "-"), List("1A", ""));
    minded("[-a][a-]", List("--", "a-"), List("b-"));
    minded("[*][?][#][[]]", List("*?#[]"), List("ab1[]"));
    minded("[!]", List("!"), List("a"));
    minded("a[]b", List("ab"), List("axb"));
    minded("a*b", List("a\r\nb"), List());
    typed("valv*", List("Válvula", "VALVULA", "vâlv"), List("val", "xvalv"));
    typed("*rele*", List("o Relé", "RELÊ", "Rele 5"), List("rel", "réi"));
    typed("*relé", List("RELÉ", "rÉLÉ"), List("rele", "relê"));
    typed("orgao", List("Órgão", "orgao"), List("Órgão 2", "orga"));
    typed("[ac]*", List("á", "Ç", "c"), List("b"));
    typed("[á]", List("Á"), List("a", "à"));
    typed("[a-c]o", List("ço", "ão"), List("do"));
    typed("[!a]", List("b", "é"), List("a", "ã"));
    typed("1o m2", List("1º m²", "1o m2"), List("1a m2"));
    typed("daotsdhiiklnots", List("ðæøþßđħıĳĸłŋœŧſ", "ÐÆØÞßĐĦıĲĸŁŊŒŦſ"), List("ðæøþßđħıĳĸłŋœŧ"));
    typed("*д-", List("Д-"), List("Д+"));
    for (const auto& [accents, pattern, yes, no] : row) {
        const sql::Pattern ready(pattern, accents);
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
