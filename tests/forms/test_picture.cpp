#include "platform/forms/controls.h"
#include "platform/forms/densepicture.h"
#include "platform/forms/picturefile.h"
#include "support/test.h"

struct TestPicture : Fixture {
    QTemporaryDir folder_;
};

TEST(TestPicture, companionOfThreeTimesTheSize) {
    // Names of its own for each: two files of one size, written in one tick of the file
    // system's clock, are one to the cache of pictures.
    for (const auto& [picture, companion, size, taken] : Each<QString, QString, QSize, bool>{
             {"fits", "a.png", "a@3x.png", QSize(120, 60), true},
             {"other size", "c.png", "c@3x.png", QSize(119, 60), false},
             {"other picture's", "d.png", "b@3x.png", QSize(120, 60), false},
         }) {
        WritePicture(folder_.filePath(picture), {40, 20}, Qt::red);
        WritePicture(folder_.filePath(companion), size, Qt::blue);
        QCOMPARE(!forms::LoadDensePicture(folder_.filePath(picture), {40, 20}).isNull(), taken);
    }
    QVERIFY(forms::LoadDensePicture(u"figura"_s, {1, 1}).isNull());  // nor without an ending
}

// The companion adds pixels, never size: numbers are placed by the picture's own.
TEST(TestPicture, theCompanionShowsWhereThePictureHasTooFewPixels) {
    QPixmap plain(40, 20);
    plain.fill(Qt::red);
    QPixmap dense(120, 60);
    dense.fill(Qt::blue);
    dense.setDevicePixelRatio(3);  // which a file of such a name comes with
    forms::Picture natural(u"p"_s, QString(), nullptr, forms::Picture::Mode::Natural);
    natural.resize(60, 40);
    natural.SetPixmap(plain, dense);
    QCOMPARE(natural.PictureRect(), QRectF(0, 0, 40, 20));

    forms::Picture fitted(u"p"_s, QString(), nullptr);
    fitted.resize(100, 80);  // in proportion, in the middle
    fitted.SetPixmap(plain, dense);
    QCOMPARE(fitted.PictureRect(), QRectF(0, 15, 100, 50));
    for (const auto& [size, colour] :
         {std::pair(QSize(40, 20), Qt::red), std::pair(QSize(80, 40), Qt::blue)}) {
        fitted.resize(size);
        QCOMPARE(fitted.grab().toImage().pixelColor(size.width() - 1, size.height() - 1),
                 QColor(colour));
    }
}
