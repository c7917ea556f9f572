#include "platform/forms/artwork.h"
#include "platform/forms/picturefile.h"
#include "platform/forms/theme.h"
#include "support/windows.h"

using namespace forms;

namespace {

// Whether a pixel of the colour is in this part of what the control paints.
bool Shows(QWidget& control, const QColor& colour, const QRect& part = {}) {
    const QImage image = control.grab(part.isEmpty() ? control.rect() : part).toImage();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == colour) {
                return true;
            }
        }
    }
    return false;
}

// Counts what is painted of a control.
class Paints : public QObject {
public:
    explicit Paints(QWidget& of) { of.installEventFilter(this); }
    int count = 0;

private:
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

}  // namespace

struct TestPaint : Fixture {};

TEST(TestPaint, ThemeReachesEverything) {
    const Theme& theme = CurrentTheme();
    const QPalette palette = QApplication::palette();
    const std::pair<QPalette::ColorRole, QColor> roles[] = {
        {QPalette::Window, theme.window},
        {QPalette::Button, theme.button},
        {QPalette::WindowText, theme.text},
        {QPalette::Base, theme.base},
        {QPalette::AlternateBase, theme.window},
        {QPalette::ToolTipBase, theme.tip},
        {QPalette::Highlight, theme.selection},
        {QPalette::HighlightedText, theme.selectionText},
        {QPalette::Link, theme.text},
        {QPalette::PlaceholderText, theme.disabledText}};
    for (const auto& [role, colour] : roles) {
        QCOMPARE(palette.color(QPalette::Active, role), colour);
    }
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
        {&zone,
         [&] {
             zone.SetDrawing(drawing, {0, 0, 256, 256});
         }},
    };
    for (const auto& [control, change] : changes) {
        Settle();
        const Paints paints(*control);
        change();
        QTRY_VERIFY(paints.count > 0);
    }
    QVERIFY(Shows(label, Qt::red) && Shows(picture, Qt::red));
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
        QVERIFY(!Shows(*control, theme.focus));
        control->setFocus();
        QVERIFY(Shows(*control, theme.focus, {10, control->height() - 2, 20, 2}));
        // A ring has four sides.
        QCOMPARE(Shows(*control, theme.focus, {0, 10, 2, 5}), control == &button);
        QCOMPARE(Shows(*control, theme.focus, {20, 0, 10, 2}), control == &button);
    }
    // An arrow that leads nowhere is pale.
    for (const int value : {1, 3, 5}) {
        bar.SetValue(value);
        QCOMPARE(Shows(bar, theme.text, {0, 0, 17, 15}), value > 1);
        QCOMPARE(Shows(bar, theme.text, {183, 0, 17, 15}), value < 5);
    }
    ComboList combo(u"lista"_s, u"Tipo"_s, &window);
    combo.setGeometry(0, 120, 100, 21);
    combo.show();
    const QRect text(4, 2, 70, 17);
    QVERIFY(Shows(combo, theme.disabledText, text) && !Shows(combo, theme.text, text));
    combo.AddItem(u"Componente"_s);
    combo.SetListIndex(0);
    QVERIFY(!Shows(combo, theme.disabledText, text));
    QVERIFY(Shows(combo, theme.text, {84, 2, 16, 17}));  // the arrow
    QVERIFY(Shows(combo, theme.border, {20, 0, 10, 1}));
    QVERIFY(window.findChild<QWidget*>(u"barra"_s) && window.findChild<QWidget*>(u"lista"_s));
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
        const QSize corner = LoadNaturalPicture(file, {100, 50}).size();
        QCOMPARE(corner, size.boundedTo({100, 50}));
    }
    Write(folder.filePath(u"texto.png"_s));
    QCOMPARE(ErrorOf([&] { LoadPicture(folder.filePath(u"texto.png"_s), {}, 1); }), 481);
    QCOMPARE(ErrorOf([&] { LoadPicture(folder.path(), {}, 1); }), 53);
    // By its content, whatever it is called, and anew when it changes.
    WritePicture(folder.filePath(u"40x20.png"_s), {30, 30}, Qt::red, "jpg");
    QCOMPARE(LoadPicture(folder.filePath(u"40x20.png"_s), {100, 100}, 1).size(), QSize(30, 30));
}
