#include "platform/forms/densepicture.h"
#include "platform/forms/font.h"
#include "platform/forms/picturefile.h"
#include "platform/forms/scale.h"
#include "platform/forms/theme.h"
#include "support/windows.h"

#include <QImageWriter>
#include <QRegularExpression>

using namespace forms;

struct TestPaint : Fixture {};

TEST(TestPaint, ThemeReachesEverything) {
    const Theme& theme = CurrentTheme();
    const QPalette palette = QApplication::palette();
    QList<QColor> colours;
    for (const auto role :
         {QPalette::Window, QPalette::Button, QPalette::WindowText, QPalette::Base,
          QPalette::AlternateBase, QPalette::ToolTipBase, QPalette::Highlight,
          QPalette::HighlightedText, QPalette::Link, QPalette::PlaceholderText}) {
        colours += palette.color(QPalette::Active, role);
    }
    QCOMPARE(colours,
             (QList{theme.window, theme.button, theme.text, theme.base, theme.window, theme.tip,
                    theme.selection, theme.selectionText, theme.text, theme.disabledText}));
    QCOMPARE(palette.color(QPalette::Disabled, QPalette::Text), theme.disabledText);
    QCOMPARE(QApplication::font().pixelSize(), theme.textPixels);
    QVERIFY(Font(theme.textPixels, true).bold() && !Font(theme.textPixels).bold());
    // Each value in the place of its whole name.
    QVERIFY(!qApp->styleSheet().contains(QRegularExpression(u"@|#[0-9a-f]{6}\\w"_s)));
}

// Pictures are made smaller to fit, never larger, in the screen's own pixels.
TEST(TestPaint, PictureFiles) {
    const QTemporaryDir folder;
    for (const auto& [size, target, ratio, loaded] : Each<QSize, QSize, qreal, QSize>{
             {"fits", {40, 20}, {100, 100}, 1.0, {40, 20}},
             {"too wide", {400, 100}, {100, 100}, 1.0, {100, 25}},
             {"too high", {100, 400}, {100, 100}, 1.0, {25, 100}},
             {"dense screen", {400, 100}, {100, 100}, 2.0, {200, 50}},
             {"a thread", {900, 1}, {100, 100}, 1.0, {100, 1}},
             {"as it is", {400, 100}, {}, 2.0, {400, 100}},
         }) {
        const QString file = folder.filePath(u"%1x%2.png"_s.arg(size.width()).arg(size.height()));
        WritePicture(file, size);
        const QPixmap picture = LoadPicture(file, target, ratio);
        QCOMPARE(picture.size(), loaded);
        QCOMPARE(picture.devicePixelRatio(), target.isEmpty() ? 1.0 : ratio);
        QCOMPARE(LoadNaturalPicture(file, {100, 50}).size(), size.boundedTo({100, 50}));
    }
    Write(folder.filePath(u"texto.png"_s));
    QCOMPARE(ErrorOf([&] { LoadPicture(folder.filePath(u"texto.png"_s), {}, 1); }), 481);
    QCOMPARE(ErrorOf([&] { LoadPicture(folder.path(), {}, 1); }), 53);
    // By its content, whatever it is called, and anew when it changes.
    for (const auto& [format, side] : {std::pair("jpg", 50), std::pair("png", 30)}) {
        const QString file = folder.filePath(u"foto.jpg"_s);
        WritePicture(file, {side, side}, Qt::red, format);
        QCOMPARE(LoadPicture(file, {100, 100}, 1).size(), QSize(side, side));
    }
    // A camera that was held upright says so.
    const QString turned = folder.filePath(u"alto.jpg"_s);
    QImageWriter camera(turned, "jpg");
    camera.setTransformation(QImageIOHandler::TransformationRotate90);
    QVERIFY(camera.write(QImage(40, 20, QImage::Format_RGB32)));
    QCOMPARE(LoadPicture(turned, {100, 100}, 1).size(), QSize(20, 40));
    QCOMPARE(LoadPicture(turned, {10, 100}, 1).size(), QSize(10, 20));
    QCOMPARE(LoadNaturalPicture(turned, {100, 30}).size(), QSize(20, 30));
}

TEST(TestPaint, CompanionOfThreeTimesTheSize) {
    const QTemporaryDir folder;
    // Names of its own for each: two files of one size, written in one tick of the file
    // system's clock, are one to the cache of pictures.
    for (const auto& [picture, companion, size, taken] : Each<QString, QString, QSize, bool>{
             {"fits", "a.png", "a@3x.png", QSize(120, 60), true},
             {"other size", "c.png", "c@3x.png", QSize(119, 60), false},
             {"other picture's", "d.png", "b@3x.png", QSize(120, 60), false},
         }) {
        WritePicture(folder.filePath(picture), {40, 20}, Qt::red);
        WritePicture(folder.filePath(companion), size, Qt::blue);
        QCOMPARE(!LoadDensePicture(folder.filePath(picture), {40, 20}).isNull(), taken);
    }
    QVERIFY(LoadDensePicture(u"figura"_s, {1, 1}).isNull());  // nor without an ending
}

// The companion adds pixels, never size: numbers are placed by the picture's own.
TEST(TestPaint, TheCompanionShowsWhereThePictureHasTooFewPixels) {
    QPixmap plain(40, 20);
    plain.fill(Qt::red);
    QPixmap dense(120, 60);
    dense.fill(Qt::blue);
    dense.setDevicePixelRatio(3);  // which a file of such a name comes with
    Picture natural(u"p"_s, QString(), nullptr, Picture::Mode::Natural);
    natural.resize(60, 40);
    natural.SetPixmap(plain, dense);
    QCOMPARE(natural.PictureRect(), QRectF(0, 0, 40, 20));

    Picture fitted(u"p"_s, QString(), nullptr);
    fitted.resize(100, 80);  // in proportion, in the middle
    fitted.SetPixmap(plain, dense);
    QCOMPARE(fitted.PictureRect(), QRectF(0, 15, 100, 50));
    fitted.resize(100, 40);
    QCOMPARE(fitted.PictureRect(), QRectF(10, 0, 80, 40));
    for (const auto& [size, colour] :
         {std::pair(QSize(40, 20), Qt::red), std::pair(QSize(80, 40), Qt::blue)}) {
        fitted.resize(size);
        QCOMPARE(fitted.grab().toImage().pixelColor(size.width() - 1, size.height() - 1),
                 QColor(colour));
    }
}

TEST(TestPaint, ScaleFillsTheScreenEvenly) {
    QCOMPARE(ScaleFor({1920, 1080}), 1.8);
    QCOMPARE(ScaleFor({1024, 740}), 1.233);
    QCOMPARE(ScaleFor({640, 480}), 1);
    for (int width = 800; width < 4000; width += 7) {
        const double scale = ScaleFor({width, width});
        QVERIFY(qRound(width / scale) >= PictureSize.width());
    }
}
