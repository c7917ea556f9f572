#include "catalogue/assortment.h"
#include "catalogue/numbers.h"
#include "catalogue/vocabulary.h"
#include "catalogue/wording.h"
#include "session/numeros.h"
#include "support/test.h"

#include <QRegularExpression>
#include <QSet>

using namespace demo;

namespace {

// What a Brazilian keyboard writes, the acute accent in place of the apostrophe, and no more.
bool IsClean(const QString& text) {
    static const QRegularExpression clean(
        u"^[A-ZÂÊ](?:[A-Za-z0-9ÁÂÃÀÇÉÊÍÓÔÕÚáâãàçéêíóôõú´.,/()+\\-]| (?! ))*[^ ,]$"_s);
    return clean.match(text).hasMatch();
}

}  // namespace

struct Words : Fixture {};

TEST(Words, Patterns) {
    for (const auto& [source, texts] : Each<QString, QStringList>{
             {"no place", "Êmbolo", List("Êmbolo")},
             {"named, empty value", "Válvula{tipo:| dupla}", List("Válvula", "Válvula dupla")},
             {"range with decimals", "Anel {9..10/0,5} mm",
              List("Anel 9 mm", "Anel 9,5 mm", "Anel 10 mm")},
             {"two places, first fastest", "{a|b}-{1|2}", List("a-1", "b-1", "a-2", "b-2")},
         }) {
        const Wording wording(source);
        QCOMPARE(wording.Combinations(), static_cast<quint64>(texts.size()));
        for (qsizetype i = 0; i < texts.size(); ++i) {
            QCOMPARE(wording.Text(wording.ChoicesOf(static_cast<quint64>(i))), texts[i]);
        }
    }
}

// Every text that can ever appear, not only those of one seed.
TEST(Words, EveryDescriptionIsClean) {
    QStringList sources;
    for (const auto families :
         {ValveFamilies(), ActuatorFamilies(), SupplyFamilies(), LineFamilies()}) {
        for (const Family& family : families) {
            sources << QString::fromUtf16(family.wording) << QString::fromUtf16(family.caption);
        }
    }
    for (const Component& component : Components()) {
        sources << QString::fromUtf16(component.wording);
    }
    for (const demo::Maker& maker : Makers()) {
        sources << QString::fromUtf16(maker.company.name);
        for (const Text vehicle : maker.vehicles) {
            sources << QString::fromUtf16(vehicle);
        }
    }
    for (const Company& competitor : Competitors()) {
        sources << QString::fromUtf16(competitor.name);
    }
    for (const QString& source : std::as_const(sources)) {
        const Wording wording(source);
        for (quint64 i = 0; i < wording.Combinations(); ++i) {
            const QString text = wording.Text(wording.ChoicesOf(i));
            QVERIFY2(IsClean(text), qPrintable(text));
        }
    }
}

// A place that the kit's words name and the parts do not have would stay in braces.
TEST(Words, KitsNameTheirConstruction) {
    const Assortment assortment(3, 5000);
    for (const Construction& construction : assortment.Constructions()) {
        if (assortment.Families()[construction.family].kitNoun != nullptr) {
            const QString text = u"Jogo - "_s + assortment.KitNoun(construction);
            QVERIFY2(IsClean(text), qPrintable(text));
        }
    }
}

TEST(Words, PartsOfAConstructionAgreeWithItsKits) {
    const Assortment assortment(1, 3000);
    for (const Construction& construction : assortment.Constructions()) {
        const Family& family = assortment.Families()[construction.family];
        if (QStringView(family.slug) != u"camara-dupla") {
            continue;
        }
        const QString type = assortment.KitNoun(construction).section(u' ', -2);
        for (quint32 i = 0; i < construction.parts; ++i) {
            const QString text = assortment.Description(assortment.ModelOf(construction, i));
            QVERIFY2(text.contains(type), qPrintable(text + u" / "_s + type));
        }
    }
}

TEST(Words, OwnNumbersAreStoredFormAndUnique) {
    OwnNumbers numbers(200000);
    Random random(1);
    QSet<QString> seen;
    QSet<QChar> firsts;
    for (int i = 0; i < 200000; ++i) {
        const QString number = numbers.Take(u"VR", random);
        QCOMPARE(NormalizarNumero(number), number);
        QVERIFY2(!seen.contains(number), qPrintable(number));
        seen.insert(number);
        firsts.insert(number.front());
    }
    QCOMPARE(firsts.size(), 10);  // the nine digits and the prefix
}

TEST(Words, TheirNumbersAreStoredForm) {
    Random random(1);
    QList<Company> companies(Competitors().begin(), Competitors().end());
    for (const demo::Maker& maker : Makers()) {
        companies << maker.company;
    }
    for (const Company& company : std::as_const(companies)) {
        for (const Text form : company.numbers) {
            const QString number = NumberLike(QStringView(form), {}, random);
            QCOMPARE(RemoverZerosEsquerda(SomenteAlfanumericos(number)), number);
            QVERIFY(number.size() >= 5);
        }
    }
}

TEST(Words, SharesAddUp) {
    Each<quint32, std::vector<double>, std::vector<quint32>> row;
    using Weights = std::vector<double>;
    using Shares = std::vector<quint32>;
    row("even", 6U, Weights{1, 1, 1}, Shares{2, 2, 2});
    row("largest fraction first", 5U, Weights{3, 1, 1}, Shares{3, 1, 1});
    row("nothing for nothing", 4U, Weights{0, 1}, Shares{0, 4});
    row("no weights", 4U, Weights{0, 0}, Shares{0, 0});
    row("fewer than takers", 1U, Weights{1, 1}, Shares{1, 0});
    for (const auto& [total, weights, shares] : row) {
        QCOMPARE(Split(total, weights), shares);
    }
}

TEST(Words, SelectionIsExact) {
    for (quint64 seed = 0; seed < 50; ++seed) {
        Random random(seed);
        Selection selection(7, 40);
        int taken = 0;
        for (int i = 0; i < 40; ++i) {
            taken += selection.Take(random) ? 1 : 0;
        }
        QCOMPARE(taken, 7);
    }
}
