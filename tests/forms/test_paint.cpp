#include "platform/forms/densepicture.h"
#include "platform/forms/picturefile.h"
#include "platform/forms/scale.h"
#include "platform/forms/theme.h"
#include "support/windows.h"

using namespace forms;

struct TestPaint : Fixture {};

TEST(TestPaint, ThemeReachesEverything) {
    const Theme& theme = CurrentTheme();
    const QPalette palette = QApplication::palette();
    QList<QColor> colours;
    for (const auto role : {QPalette::Window, QPalette::Button, QPalette::WindowText,
                            QPalette::Base, QPalette::AlternateBase, QPalette::ToolTipBase,
                            QPalette::Highlight, QPalette::HighlightedText, QPalette::Link}) {
        colours += palette.color(QPalette::Active, role);
    }
    QCOMPARE(colours, (QList{theme.window, theme.button, theme.text, theme.base, theme.window,
                             theme.tip, theme.selection, theme.selectionText, theme.text}));
    QCOMPARE(palette.color(QPalette::Disabled, QPalette::Text), theme.disabledText);
    QCOMPARE(QApplication::font().pixelSize(), theme.textPixels);
    QVERIFY(!qApp->styleSheet().contains(u'@'));
}

// What is changed is painted anew.
TEST(TestPaint, ChangesAreSeen) {
    QWidget window;
    Label label(u"lbl"_s, &window);
    label.SetText(u"antes"_s);
    Picture picture(u"img"_s, {}, &window);
    picture.move(0, 100);
    ClickZone zone(u"zona"_s, {}, &window);
    zone.move(200, 100);
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QPixmap red(40, 40);
    red.fill(Qt::red);
    Artwork::SetFolder(u":/artwork"_s);
    const auto drawing = Artwork::Load(u"icone"_s);
    const std::pair<QWidget*, std::function<void()>> changes[] = {
        {&label, [&] { label.SetText(u"depois"_s); }},
        {&label, [&] { label.SetForeColor(Qt::red); }},
        {&label, [&] { label.SetAlignment(Qt::AlignRight); }},
        {&label, [&] { label.SetWordWrap(true); }},
        {&picture, [&] { picture.SetPixmap(red); }},
        {&zone, [&] { zone.SetDrawing(drawing, QRect(0, 0, 256, 256)); }},
    };
    for (const auto& [control, change] : changes) {
        Settle();
        Paints paints;
        control->installEventFilter(&paints);
        change();
        QTRY_VERIFY(paints.count > 0);
    }
    QVERIFY(Shows(label, Qt::red).isValid() && Shows(picture, Qt::red).isValid());
}

TEST(TestPaint, TheKeyboardsPlace) {
    const Theme& theme = CurrentTheme();
    QWidget window;
    ClickZone button(u"botao"_s, {}, &window);
    button.setGeometry(0, 0, 60, 30);
    ClickZone tick(u"caixa"_s, {}, &window);
    tick.setGeometry(0, 40, 60, 30);
    tick.SetTicked(true);
    ScrollBar bar(u"barra"_s, Qt::Horizontal, &window);
    bar.setGeometry(0, 80, 200, 17);
    bar.SetMin(1);
    bar.SetMax(5);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    for (QWidget* control : std::initializer_list<QWidget*>{&button, &tick, &bar}) {
        QVERIFY(Shows(*control, theme.focus).isNull());
        control->setFocus();
        QVERIFY(Shows(*control, theme.focus, {10, control->height() - 2, 20, 2}).isValid());
        // A ring has four sides.
        QCOMPARE(Shows(*control, theme.focus, {0, 10, 2, 5}).isValid(), control == &button);
        QCOMPARE(Shows(*control, theme.focus, {20, 0, 10, 2}).isValid(), control == &button);
    }
    // An arrow that leads nowhere is pale.
    for (const int value : {1, 3, 5}) {
        bar.SetValue(value);
        QCOMPARE(Shows(bar, theme.text, {0, 0, 17, 15}).isValid(), value > 1);
        QCOMPARE(Shows(bar, theme.text, {183, 0, 17, 15}).isValid(), value < 5);
    }
    ComboList combo(u"lista"_s, u"Tipo"_s, &window);
    combo.setGeometry(0, 120, 100, 21);
    combo.show();
    const QRect text(4, 2, 70, 17);
    QVERIFY(Shows(combo, theme.text, text).isNull());
    const QRect hint = Shows(combo, theme.disabledText, text);
    combo.AddItem(u"Tipo"_s);
    combo.SetListIndex(0);
    QVERIFY(Shows(combo, theme.disabledText, text).isNull());
    QCOMPARE(Shows(combo, theme.text, text), hint);  // in the place of what will be chosen
    QVERIFY(Shows(combo, theme.text, {84, 2, 16, 17}).isValid());  // the arrow
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
    WritePicture(folder.filePath(u"40x20.png"_s), {30, 30}, Qt::red, "jpg");
    QCOMPARE(LoadPicture(folder.filePath(u"40x20.png"_s), {100, 100}, 1).size(), QSize(30, 30));
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
