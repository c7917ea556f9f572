#include "orders.h"
#include "support/test.h"

namespace {

int Darkest(const QImage& photo) {
    int least = 255;
    for (int y = 0; y < photo.height(); ++y) {
        for (int x = 0; x < photo.width(); ++x) {
            least = std::min(least, qGray(photo.pixel(x, y)));
        }
    }
    return least;
}

}  // namespace

struct DemoPhotographs : Fixture {
    DemoPhotographs() { connection_ = Open(Pictured().folder); }

    int Count(const QString& rows) { return ::Count(*connection_, rows.toUtf8()); }

    static QString Path(const QString& name) { return Pictured().folder + u'/' + name; }

    std::shared_ptr<dao::Connection> connection_;
};

// Every photograph that the catalogue names is there, can be read, and shows something.
TEST(DemoPhotographs, PhotosAreThere) {
    dao::Statement names(*connection_,
                         "SELECT ArquivoFotoPeca FROM PECA WHERE ArquivoFotoPeca IS NOT NULL "
                         "UNION SELECT ArquivoFotoPecaPesquisa FROM FOTOPECAPESQUISA");
    int count = 0;
    while (names.Step()) {
        const QString name = names.Column(0).toString();
        const QImage photo(Path(u"FotoPeca/"_s + name));
        // A quarter, each way, of what ships.
        const QSize frame = name.startsWith("galeria-"_L1) ? QSize(87, 54) : QSize(113, 88);
        QVERIFY2(photo.size() == frame, qPrintable(name));
        QVERIFY2(Darkest(photo) < qGray(photo.pixel(0, 0)) - 60, qPrintable(name));
        ++count;
    }
    QVERIFY(count > 62);
}

// As the figure screen reads them: codes of 16 bits, boxes on the picture, the picture in its
// frame.
TEST(DemoPhotographs, NumbersStandOnTheirPicture) {
    dao::Statement figures(*connection_, "SELECT CodigoFigura, ArquivoFigura FROM FIGURA");
    int count = 0;
    while (figures.Step()) {
        const QString name = figures.Column(1).toString();
        const QImage picture(Path(u"Figuras/"_s + name));
        QCOMPARE(picture.size(), QSize(582, 343));
        const int numbers = Count("SELECT 1 FROM FIGURADETALHADA WHERE CodigoFigura = "_L1 +
                                  figures.Column(0).toString() +
                                  " AND CodigoFiguraDetalhada BETWEEN 1 AND 32767 AND LLeft "
                                  "BETWEEN 0 AND 549 AND TTop BETWEEN 0 AND 330"_L1);
        QVERIFY2(numbers >= 8 && numbers <= 60, qPrintable(name));
        QCOMPARE(numbers, Count("SELECT 1 FROM FIGURADETALHADA WHERE CodigoFigura = "_L1 +
                                figures.Column(0).toString()));
        ++count;
    }
    QVERIFY(count >= 5);
}

// The tour's buttons stand over its pages, at other places on each: nothing may lie under them.
TEST(DemoPhotographs, TourLeavesRoomForItsButtons) {
    Each<QString, QList<QRect>> row;
    constexpr QSize Back(30, 37);
    constexpr QSize Forward(41, 39);
    constexpr QSize Close(34, 35);
    using Rects = QList<QRect>;
    const auto at = [](int x, int y, QSize size) { return QRect(QPoint(x, y), size); };
    row("1", "CK01.bmp", Rects{at(81, 518, Forward), at(15, 518, Close)});
    row("2", "CK02.bmp", Rects{at(667, 525, Back), at(714, 525, Forward), at(428, 525, Close)});
    row("3", "CK03.bmp", Rects{at(225, 529, Back), at(272, 529, Forward), at(15, 529, Close)});
    row("4", "CK04.bmp", Rects{at(465, 516, Back), at(512, 516, Forward), at(15, 516, Close)});
    row("5", "CK05.bmp", Rects{at(522, 524, Back), at(15, 524, Close)});
    for (const auto& [page, buttons] : row) {
        const QImage picture(Path(u"Figuras/"_s + page));
        constexpr int Density = 2;
        QCOMPARE(picture.size(), QSize(800, 573) * Density);
        const auto isPlain = [&picture](const QRect& rect) {
            const QImage part =
                picture.copy(QRect(rect.topLeft() * Density, rect.size() * Density));
            QImage plain(part.size(), part.format());
            plain.fill(part.pixelColor(0, 0));
            return part == plain;
        };
        for (const QRect& button : buttons) {
            QVERIFY(isPlain(button));
            QVERIFY(!isPlain(button.adjusted(-14, -14, 14, 0)));  // a place is painted there
        }
    }
}

// What a figure screen has to cope with is in every catalogue.
TEST(DemoPhotographs, EveryKindOfNumberIsThere) {
    for (const auto& [rows] : Each<QString>{
             {"figure of several parts",
              "SELECT CodigoFigura FROM PECA GROUP BY CodigoFigura HAVING count(*) > 1 AND "
              "CodigoFigura IS NOT NULL"},
             {"part with a list and no figure",
              "SELECT 1 FROM PECA INNER JOIN PECA_COMPONENTE USING (CodigoPeca) WHERE CodigoFigura "
              "IS NULL"},
             {"item at two places",
              "SELECT 1 FROM FIGURADETALHADA GROUP BY CodigoFigura, ItemComponente HAVING count(*) "
              "> "
              "1"},
             {"item without a number",
              "SELECT 1 FROM PECA_COMPONENTE INNER JOIN PECA USING (CodigoPeca) WHERE CodigoFigura "
              "IS NOT NULL AND (CodigoFigura, ItemComponente) NOT IN (SELECT CodigoFigura, "
              "ItemComponente FROM FIGURADETALHADA)"},
             {"number without an item",
              "SELECT 1 FROM FIGURADETALHADA1 WHERE (CodigoPeca, ItemComponente) NOT IN (SELECT "
              "CodigoPeca, ItemComponente FROM PECA_COMPONENTE)"},
         }) {
        QVERIFY(Count(rows) > 0);
    }
}
