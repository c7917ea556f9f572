#include "platform/forms/elide.h"
#include "platform/forms/theme.h"
#include "support/windows.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QBitmap>
#include <QClipboard>
#include <QFileIconProvider>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTextDocument>
#include <QToolTip>

using namespace forms;

namespace {

// What is painted on a ground of this colour.
QRect Ink(QWidget& control, const QColor& ground, const QRect& part) {
    return QRegion(control.grab(part).createMaskFromColor(ground)).boundingRect();
}

}  // namespace

// A window with a box and a list of choices.
struct TestControls : Fixture {
    QWidget window_;
    ComboList combo_{u"cboTipo"_s, u"Tipo"_s, &window_};
    TextBox box_{u"txtDescricao"_s, u"Descrição"_s, &window_};
    QList<int> clicks_;

    // Rows with the data -5, 5, 15...
    void Fill(int rows) {
        for (int i = 0; i < rows; ++i) {
            combo_.AddItem(u"Linha %1"_s.arg(i), i * 10 - 5);
        }
        connect(&combo_, &ComboList::Click, this, [this] { clicks_ += combo_.ListIndex(); });
        Show();
    }
    void Show() {
        window_.setGeometry(40, 40, 600, 60);  // a list has room below
        combo_.setGeometry(0, 0, 160, 21);
        box_.move(0, 30);
        window_.show();
        QVERIFY(QTest::qWaitForWindowActive(&window_));
    }
};

TEST(TestControls, ComboAnnouncesWhatWasChosen) {
    Fill(300);
    QCOMPARE(combo_.ListIndex(), -1);
    QCOMPARE(ErrorOf([&] { combo_.SelectedItemData(); }), 9);
    combo_.SetListIndex(0);
    combo_.SetListIndex(0);
    QCOMPARE(combo_.SelectedItemData(), -5);
    combo_.SetListIndex(7);
    QCOMPARE(combo_.SelectedItemData(), 65);
    combo_.SetListIndex(-1);
    QCOMPARE(clicks_, (QList{0, 7}));
    QCOMPARE(ErrorOf([&] { combo_.SetListIndex(300); }), 9);
    QCOMPARE(ErrorOf([&] { combo_.SetListIndex(-2); }), 9);
    QCOMPARE(ErrorOf([&] { combo_.ItemData(300); }), 9);

    combo_.setFocus();
    const auto pick = [&](int from, std::initializer_list<Qt::Key> keys) {
        combo_.SetListIndex(from);
        clicks_.clear();
        combo_.showPopup();
        for (const Qt::Key key : keys) {
            QTest::keyClick(combo_.view(), key);
        }
        return clicks_;
    };
    QCOMPARE(pick(3, {Qt::Key_Down, Qt::Key_Return}), QList{4});
    QCOMPARE(pick(4, {Qt::Key_Return}), QList{4});  // the same again
    QCOMPARE(pick(9, {Qt::Key_Return}), QList{9});  // the same that the program chose
    QCOMPARE(pick(9, {Qt::Key_Down, Qt::Key_Escape}), QList<int>());
    QTest::keyClick(&combo_, Qt::Key_Down);
    QCOMPARE(clicks_, QList{10});
}

// A list of more rows than it shows says so, and gives them to the mouse. The wheel over one that
// does not have the keyboard changes nothing.
TEST(TestControls, ComboUnderTheMouse) {
    QApplication::setDoubleClickInterval(1);  // for so long a list ignores what opened it
    Fill(28);
    combo_.SetListIndex(3);
    clicks_.clear();
    box_.setFocus();
    Wheel(combo_, -1);
    QVERIFY(box_.hasFocus());
    QCOMPARE(clicks_, QList<int>());

    QTest::mouseClick(&combo_, Qt::LeftButton, {}, {150, 10});
    QAbstractItemView* list = combo_.view();
    QVERIFY(QTest::qWaitForWindowExposed(list->window()));
    QCOMPARE(list->viewport()->height() / list->visualRect(list->model()->index(0, 0)).height(),
             14);
    QCOMPARE(list->width(), 160);
    QVERIFY(list->verticalScrollBar()->isVisible());
    QTest::qWait(2);
    Wheel(*list->viewport(), -20);
    const QModelIndex last = list->model()->index(27, 0);
    QTest::mouseMove(list->viewport(), list->visualRect(last).center());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(last).center());
    QVERIFY(!list->isVisible());
    QCOMPARE(clicks_, QList{27});
    Wheel(combo_, 1);  // now it has the keyboard
    QCOMPARE(clicks_, (QList{27, 26}));

    // As wide as its longest row, to some extent.
    for (const int letters : {30, 300}) {
        combo_.clear();
        combo_.AddItem(QString(letters, u'x'));
        combo_.showPopup();
        QVERIFY(!list->verticalScrollBar()->isVisible());
        const int needed = combo_.fontMetrics().horizontalAdvance(combo_.itemText(0)) + 34;
        QCOMPARE(list->width(), std::min(needed, 480));
        combo_.hidePopup();
    }
    QCOMPARE(combo_.accessibleDescription(), u"Tipo"_s);
}

// What is cut stands in the tip as it is written.
TEST(TestControls, TipsShowTheWholeText) {
    for (const auto& [text] : Each<QString>{"Anel \"O\" <12> & mola com um nome que não cabe",
                                            "Válvula de descarga rápida        Nº Tarvo: 12002"}) {
        Label label(u"lblInf"_s, &window_);
        label.resize(100, 15);
        label.SetText(text);
        const int number = label.fontMetrics().horizontalAdvance(text.mid(text.indexOf(u"  "_s)));
        QCOMPARE(ElidedLine(text, label.fontMetrics(), number * 31 / 20).endsWith(u"12002"_s),
                 text.contains(u"12002"_s));
        QVERIFY(!ElidedLine(text, label.fontMetrics(), number * 29 / 20).endsWith(u"12002"_s));
        combo_.resize(100, 21);
        combo_.AddItem(text);
        combo_.SetListIndex(combo_.ListCount() - 1);
        Label lines(u"lblInf"_s, &window_);
        lines.SetWordWrap(true);
        lines.SetText(text);
        lines.resize(100, 2 * lines.fontMetrics().lineSpacing());  // it takes three
        for (QWidget* widget : std::initializer_list<QWidget*>{&label, &combo_, &lines}) {
            QHelpEvent ask(QEvent::ToolTip, {5, 5}, widget->mapToGlobal(QPoint(5, 5)));
            QApplication::sendEvent(widget, &ask);
            QTextDocument shown;
            shown.setHtml(QToolTip::text());
            QCOMPARE(shown.toPlainText(), text);
            QVERIFY(Qt::mightBeRichText(QToolTip::text()));
            widget->resize(800, 21);
            QApplication::sendEvent(widget, &ask);
            QTRY_VERIFY(!QToolTip::isVisible());
        }
    }
}

TEST(TestControls, TextBoxTakesAnyText) {
    for (const auto& [pasted, text] : Each<QString, QString>{
             {"copied cell", "81.50410\r\n", "81.50410"},
             {"lines", "a\r\nb\nc\td", "a b c d"},
             {"line end first", "\r\nb", " b"},
             {"control", u"a\u0000b\u0007c\u009fd"_s, "abcd"},
             {"separators", "a\u2028b\u2029", "a b"},
             {"emoji", "🔧 peça 👩‍🔧", "🔧 peça 👩‍🔧"},
             {"only control", u"\u0001\n"_s, ""},
         }) {
        box_.clear();
        const QSignalSpy changes(&box_, &TextBox::Change);
        QGuiApplication::clipboard()->setText(pasted);
        box_.paste();
        QCOMPARE(box_.text(), text);
        QVERIFY(changes.size() <= 1);
    }
}

// What is in the middle keeps the cursor behind the pasted piece.
TEST(TestControls, TextBoxPastesAtTheCursor) {
    box_.setText(u"início fim"_s);
    box_.setCursorPosition(7);
    QGuiApplication::clipboard()->setText(u"meio\t\u0002"_s);
    box_.paste();
    QCOMPARE(box_.text(), u"início meio fim"_s);
    QCOMPARE(box_.cursorPosition(), 12);
    Show();
    combo_.setFocus();
    QTest::keyClick(&combo_, Qt::Key_Tab);
    QCOMPARE(box_.selectedText(), u"início meio fim"_s);
    box_.deselect();
    QSignalSpy moves(&box_, &TextBox::MouseMove);
    for (const bool held : {false, true}) {
        if (held) {
            QTest::mousePress(&box_, Qt::LeftButton, {}, {1, 10});
        }
        moves.clear();
        QTest::mouseMove(&box_, {20, 10});  // the one that brings the pointer may not be told
        QTest::mouseMove(&box_, {40, 10});
        QTRY_VERIFY(!moves.isEmpty());
        QCOMPARE(box_.hasSelectedText(), held);
    }
}

// The words that its own translation leaves out included.
TEST(TestControls, ToolkitSpeaksPortuguese) {
    QCOMPARE(QLineEdit::tr("Select All"), u"Selecionar tudo"_s);
    QCOMPARE(QFileIconProvider().type(QFileInfo(QDir::tempPath())), u"Pasta"_s);
    QCOMPARE(QFileIconProvider().type(QFileInfo(QDir::rootPath())), u"Unidade"_s);
    QCOMPARE(QLocale().toString(0.5), u"0,5"_s);
}

// Arrows, track, thumb, wheel and keys, each once; a drag tells its end only.
TEST(TestControls, ScrollBarTellsFinishedChanges) {
    ScrollBar bar(u"sclPesquisaFiguras"_s, Qt::Horizontal, &window_);
    bar.setGeometry(0, 25, 561, 17);
    bar.SetMin(1);
    bar.SetMax(20);
    bar.SetLargeChange(3);
    Show();
    QList<int> values;
    connect(&bar, &ScrollBar::Change, [&] { values.append(bar.Value()); });
    const auto click = [&](int x) { QTest::mouseClick(&bar, Qt::LeftButton, {}, {x, 8}); };
    box_.setFocus();
    click(552);  // the arrow at the end
    click(500);  // the track
    click(8);
    QVERIFY(box_.hasFocus());
    QCOMPARE(values, (QList{2, 5, 4}));

    QTest::mousePress(&bar, Qt::LeftButton, {}, {17 + 100, 8});
    QVERIFY(bar.isSliderDown());
    QTest::mouseMove(&bar, {300, 8});
    QTest::mouseMove(&bar, {1000, 8});
    QCOMPARE(values.size(), 3);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, {1000, 8});
    Wheel(bar, 1);
    QTest::keyClick(&box_, Qt::Key_Tab);
    QVERIFY(bar.hasFocus());
    for (const Qt::Key key :
         {Qt::Key_Left, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_Right, Qt::Key_End}) {
        QTest::keyClick(&bar, key);
    }
    bar.SetValue(99);
    QCOMPARE(values.mid(3), (QList{20, 17, 16, 13, 1, 2, 20}));
}

TEST(TestControls, ZoneIsAButtonForAssistiveTechnology) {
    ClickZone zone(u"imgSair"_s, u"Sair"_s, &window_);
    const QSignalSpy clicks(&zone, &Zone::Click);
    QAccessibleInterface* button = QAccessible::queryAccessibleInterface(&zone);
    QCOMPARE(button->text(QAccessible::Name), u"Sair"_s);
    QCOMPARE(button->actionInterface()->actionNames(),
             List(QAccessibleActionInterface::pressAction()));
    QCOMPARE(zone.cursor().shape(), Qt::PointingHandCursor);
    const auto press = [&] {
        button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        Settle();
        return clicks.size();
    };
    QCOMPARE(press(), 0);  // out of sight
    Show();
    QCOMPARE(press(), 1);
    QDialog box;
    box.setModal(true);
    box.show();
    QCOMPARE(press(), 1);  // behind it
    box.close();

    Picture picture(u"imgFigura"_s, u"Figura"_s, &window_);
    Label label(u"lblEmissao"_s, &window_);
    label.SetText(u"Emissão: 01/2024"_s);
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&picture);
    QCOMPARE(told->role(), QAccessible::Graphic);
    QCOMPARE(told->text(QAccessible::Name) + box_.accessibleName(), u"FiguraDescrição"_s);
    QCOMPARE(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name), label.Text());
}

TEST(TestControls, LabelBreaksIntoTheLinesThatFit) {
    Label label(u"lbl"_s, &window_);
    label.SetWordWrap(true);
    label.SetText(u"Anel\nMola"_s);
    Show();
    const int line = label.fontMetrics().lineSpacing();
    for (const int rows : {1, 2, 3}) {
        label.resize(100, rows * line);
        const int height = Ink(label, CurrentTheme().window, label.rect()).height();
        QVERIFY(height > line / 3 + (rows > 1) * line && height < std::min(rows, 2) * line);
    }
}

// What is changed is painted anew.
TEST(TestControls, ChangesAreSeen) {
    Label label(u"lbl"_s, &window_);
    label.move(200, 0);
    Picture picture(u"img"_s, {}, &window_);
    picture.move(300, 0);
    ClickZone zone(u"zona"_s, {}, &window_);
    zone.move(400, 0);
    Show();
    QPixmap red(40, 40);
    red.fill(Qt::red);
    const auto drawing = Artwork::Load(u"icone"_s);
    const QImage blank = zone.grab().toImage();
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
    QVERIFY(zone.grab().toImage() != blank);
}

TEST(TestControls, TheKeyboardsPlace) {
    const Theme& theme = CurrentTheme();
    ClickZone button(u"botao"_s, {}, &window_);
    button.setGeometry(200, 0, 60, 30);
    ClickZone tick(u"caixa"_s, {}, &window_);
    tick.setGeometry(270, 0, 60, 30);
    tick.SetTicked(true);
    ScrollBar bar(u"barra"_s, Qt::Horizontal, &window_);
    bar.setGeometry(340, 0, 200, 17);
    bar.SetMin(1);
    bar.SetMax(5);
    Show();
    for (QWidget* control : std::initializer_list<QWidget*>{&button, &tick, &bar}) {
        QVERIFY(Shows(*control, theme.focus).isNull());
        control->setFocus();
        const QRect line(0, control->height() - 2, control->width(), 2);
        QCOMPARE(Shows(*control, theme.focus), control == &button ? button.rect() : line);
        QVERIFY(Shows(*control, theme.focus, {10, 10, 20, 5}).isNull());
        QCOMPARE(Shows(*control, theme.base).isValid(), control == &button);  // on a dark drawing
    }
    QVERIFY(Shows(bar, theme.scrollHandle).isValid());
    // An arrow that leads nowhere is pale.
    for (const int value : {1, 3, 5}) {
        bar.SetValue(value);
        QCOMPARE(Shows(bar, theme.text, {0, 0, 17, 15}).isValid(), value > 1);
        QCOMPARE(Shows(bar, theme.text, {183, 0, 17, 15}).isValid(), value < 5);
    }
    // A list without a choice says what there is to choose, in the place of what will be chosen.
    const QRect text(4, 2, 130, 17);
    QVERIFY(Shows(combo_, theme.text, text).isNull());
    const QRect hint = Shows(combo_, theme.disabledText, text);
    combo_.AddItem(u"Tipo"_s);
    combo_.SetListIndex(0);
    QVERIFY(Shows(combo_, theme.disabledText, text).isNull());
    QCOMPARE(Shows(combo_, theme.text, text), hint);
    QCOMPARE(QRectF(Ink(combo_, theme.button, {144, 2, 15, 17})).center(), QPointF(7.5, 9));
    for (const QRect& arrow : {QRect(1, 1, 15, 14), QRect(184, 1, 15, 14)}) {
        const QRect ink = Ink(bar, theme.button, arrow);
        QVERIFY(ink.height() > ink.width());
    }
    QCOMPARE(Shows(combo_, theme.border), combo_.rect());
    combo_.AddItem(QString(99, u'H'));
    combo_.SetListIndex(1);
    const int end = Ink(combo_, theme.base, {2, 2, 140, 17}).right();
    QVERIFY(end > 120 && end < 137);  // not under the arrow
}
