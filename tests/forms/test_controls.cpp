#include "platform/forms/controls.h"
#include "platform/forms/theme.h"
#include "support/test.h"
#include "support/windows.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QClipboard>
#include <QDialog>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextDocument>
#include <QToolTip>

using namespace forms;

struct TestControls : Fixture {};

TEST(TestControls, ComboAnnouncesWhatWasChosen) {
    QWidget window;
    ComboList combo(u"cboTipo"_s, u"Tipo"_s, &window);
    QList<int> clicks;
    connect(&combo, &ComboList::Click, [&] { clicks.append(combo.ListIndex()); });
    for (int i = 0; i < 300; ++i) {
        combo.AddItem(u"Linha %1"_s.arg(i), i * 10 - 5);
    }
    QCOMPARE(combo.ListIndex(), -1);
    QCOMPARE(ErrorOf([&] { combo.SelectedItemData(); }), 9);
    combo.SetListIndex(0);
    combo.SetListIndex(0);
    combo.SetListIndex(7);
    QCOMPARE(combo.SelectedItemData(), 65);
    combo.SetListIndex(-1);
    QCOMPARE(clicks, (QList{0, 7}));
    QCOMPARE(ErrorOf([&] { combo.SetListIndex(300); }), 9);
    QCOMPARE(ErrorOf([&] { combo.ItemData(-1); }), 9);

    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    combo.setFocus();
    const auto pick = [&](std::initializer_list<Qt::Key> keys) {
        clicks.clear();
        combo.showPopup();
        for (const Qt::Key key : keys) {
            QTest::keyClick(combo.view(), key);
        }
    };
    combo.SetListIndex(3);
    pick({Qt::Key_Down, Qt::Key_Return});
    QCOMPARE(clicks, QList{4});
    pick({Qt::Key_Return});  // the same again
    QCOMPARE(clicks, QList{4});
    combo.SetListIndex(9);
    pick({Qt::Key_Return});  // the same that the program chose
    QCOMPARE(clicks, QList{9});
    pick({Qt::Key_Down, Qt::Key_Escape});
    QCOMPARE(clicks, QList<int>());
    QTest::keyClick(&combo, Qt::Key_Down);
    QCOMPARE(clicks, QList{10});
}

// A list of more rows than it shows says so, and gives them to the mouse. The wheel over one
// that does not have the keyboard changes nothing.
TEST(TestControls, ComboUnderTheMouse) {
    QApplication::setDoubleClickInterval(1);  // for so long a list ignores what opened it
    QWidget window;
    window.setGeometry(40, 40, 300, 60);  // the list has room below
    ComboList combo(u"cboTipo"_s, u"Tipo"_s, &window);
    combo.setGeometry(0, 0, 160, 21);
    TextBox box(u"txtTipo"_s, u"Tipo"_s, &window);
    box.move(0, 30);
    for (int i = 0; i < 28; ++i) {
        combo.AddItem(u"Cliente %1"_s.arg(i), i);
    }
    combo.SetListIndex(3);
    QList<int> clicks;
    connect(&combo, &ComboList::Click, [&] { clicks.append(combo.ListIndex()); });
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    box.setFocus();
    Wheel(combo, -1);
    QVERIFY(box.hasFocus());
    QCOMPARE(clicks, QList<int>());

    QTest::mouseClick(&combo, Qt::LeftButton, {}, {150, 10});
    QAbstractItemView* list = combo.view();
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
    QCOMPARE(clicks, QList{27});
    Wheel(combo, 1);  // now it has the keyboard
    QCOMPARE(clicks, (QList{27, 26}));

    for (combo.SetListIndex(-1); combo.count() > 14;) {
        combo.removeItem(14);
    }
    // As wide as its longest row, to some extent.
    for (const int letters : {30, 300}) {
        combo.setItemText(0, QString(letters, u'x'));
        combo.showPopup();
        QVERIFY(!list->verticalScrollBar()->isVisible());
        const int needed = combo.fontMetrics().horizontalAdvance(combo.itemText(0)) + 34;
        QCOMPARE(list->width(), std::min(needed, 480));
        combo.hidePopup();
    }
    QCOMPARE(combo.sizeHint().height(), CurrentTheme().boxPixels);
    QCOMPARE(combo.accessibleDescription(), u"Tipo"_s);
}

// What is cut stands in the tip as it is written.
TEST(TestControls, TipsShowTheWholeText) {
    for (const auto& [text] : Each<QString>{
             {"signs of a markup", "Anel \"O\" <12> & mola com um nome que não cabe"},
             {"blanks", "Válvula de descarga rápida        Nº Tarvo: 12002"},
         }) {
        QWidget window;
        Label label(u"lblInf"_s, &window);
        label.resize(100, 15);
        label.SetText(text);
        ComboList combo(u"cboTipo"_s, u"Tipo"_s, &window);
        combo.resize(100, 21);
        combo.AddItem(text);
        combo.SetListIndex(0);
        Label lines(u"lblInf"_s, &window);
        lines.SetWordWrap(true);
        lines.SetText(text);
        lines.resize(100, 2 * lines.fontMetrics().lineSpacing());  // it takes three
        for (QWidget* widget : std::initializer_list<QWidget*>{&label, &combo, &lines}) {
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
             {"plain", "Válvula 4 vias", "Válvula 4 vias"},
             {"copied cell", "81.50410\r\n", "81.50410"},
             {"lines", "a\r\nb\nc\td", "a b c d"},
             {"control", u"a\u0000b\u0007c\u009fd"_s, "abcd"},
             {"separators", "a\u2028b\u2029", "a b"},
             {"emoji", "🔧 peça 👩‍🔧", "🔧 peça 👩‍🔧"},
             {"right to left", "\u05d0\u05d1 123 \u0645", "\u05d0\u05d1 123 \u0645"},
             {"only control", u"\u0001\n"_s, ""},
             {"long", u"ã'"_s.repeated(5000), u"ã'"_s.repeated(5000)},
             {"too long", QString(40000, u'x'), QString(32767, u'x')},
         }) {
        TextBox box(u"txtDescricao"_s, u"Descrição"_s, nullptr);
        QStringList heard;
        connect(&box, &TextBox::Change, [&] { heard.append(box.text()); });
        QGuiApplication::clipboard()->setText(pasted);
        box.paste();
        QCOMPARE(box.text(), text);
        QVERIFY(heard.size() <= 1);
        box.clear();
        heard.clear();
        box.setText(u"x"_s + text);
        box.setText(u"x"_s + text);
        QCOMPARE(heard.size(), 1);
    }
}

// What is in the middle keeps the cursor behind the pasted piece.
TEST(TestControls, TextBoxPastesAtTheCursor) {
    TextBox box(u"txtDescricao"_s, u"Descrição"_s, nullptr);
    box.setText(u"início fim"_s);
    box.setCursorPosition(7);
    QGuiApplication::clipboard()->setText(u"meio\t\u0002"_s);
    box.paste();
    QCOMPARE(box.text(), u"início meio fim"_s);
    QCOMPARE(box.cursorPosition(), 12);
    int moves = 0;
    connect(&box, &TextBox::MouseMove, [&] { ++moves; });
    QTest::mousePress(&box, Qt::LeftButton, {}, {1, 10});
    QMouseEvent drag(QEvent::MouseMove, QPointF(90, 10), box.mapToGlobal(QPointF(90, 10)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&box, &drag);
    QCOMPARE(moves, 1);
    QVERIFY(box.hasSelectedText());
}

TEST(TestControls, TextBoxMenuIsPortuguese) {
    TextBox box(u"txtDescricao"_s, u"Descrição"_s, nullptr);
    const std::unique_ptr<QMenu> menu(box.createStandardContextMenu());
    QStringList texts;
    for (const QAction* action : menu->actions()) {
        texts += action->text().section(u'\t', 0, 0).remove(u'&');
    }
    texts.removeAll(QString());
    QCOMPARE(texts, List("Desfazer", "Refazer", "Recortar", "Copiar", "Colar", "Excluir",
                         "Selecionar tudo"));
}

// Arrows, track, thumb, wheel and keys, each once; a drag tells its end only.
TEST(TestControls, ScrollBarTellsFinishedChanges) {
    QWidget window;
    ScrollBar bar(u"sclPesquisaFiguras"_s, Qt::Horizontal, &window);
    bar.setGeometry(0, 0, 561, 17);
    bar.SetMin(1);
    bar.SetMax(20);
    bar.SetLargeChange(3);
    TextBox box(u"txtVeiculo"_s, u"Veículo"_s, &window);
    box.move(0, 30);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QList<int> values;
    connect(&bar, &ScrollBar::Change, [&] { values.append(bar.Value()); });
    const auto click = [&](int x) { QTest::mouseClick(&bar, Qt::LeftButton, {}, {x, 8}); };
    box.setFocus();
    click(552);  // the arrow at the end
    click(500);  // the track
    click(8);
    QVERIFY(box.hasFocus());
    QCOMPARE(values, (QList{2, 5, 4}));

    QTest::mousePress(&bar, Qt::LeftButton, {}, {17 + 100, 8});
    QVERIFY(bar.isSliderDown());
    QTest::mouseMove(&bar, {300, 8});
    QTest::mouseMove(&bar, {1000, 8});
    QCOMPARE(values.size(), 3);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, {1000, 8});
    Wheel(bar, 1);
    QTest::keyClick(&box, Qt::Key_Tab);
    QVERIFY(bar.hasFocus());
    for (const Qt::Key key :
         {Qt::Key_Left, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_Right, Qt::Key_End}) {
        QTest::keyClick(&bar, key);
    }
    bar.SetValue(99);
    QCOMPARE(values.mid(3), (QList{20, 17, 16, 13, 1, 2, 20}));
}

TEST(TestControls, ZoneIsAButtonForAssistiveTechnology) {
    QWidget window;
    ClickZone zone(u"imgSair"_s, u"Sair"_s, &window);
    int clicks = 0;
    connect(&zone, &Zone::Click, [&] { ++clicks; });
    QAccessibleInterface* button = QAccessible::queryAccessibleInterface(&zone);
    QCOMPARE(button->role(), QAccessible::Button);
    QCOMPARE(button->text(QAccessible::Name), u"Sair"_s);
    QCOMPARE(button->actionInterface()->actionNames(),
             List(QAccessibleActionInterface::pressAction()));
    QCOMPARE(zone.cursor().shape(), Qt::PointingHandCursor);
    Picture picture(u"imgFigura"_s, u"Figura"_s, &window);
    QCOMPARE(QAccessible::queryAccessibleInterface(&picture)->role(), QAccessible::Graphic);
    const auto press = [&] {
        button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        Settle();
    };
    press();
    QCOMPARE(clicks, 0);  // out of sight
    window.show();
    press();
    QCOMPARE(clicks, 1);
    QDialog box;
    box.setModal(true);
    box.show();
    press();
    QCOMPARE(clicks, 1);  // behind it
    box.close();

    Label label(u"lblEmissao"_s, &window);
    label.SetText(u"Emissão: 01/2024"_s);
    QCOMPARE(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name),
             u"Emissão: 01/2024"_s);
}

TEST(TestControls, PictureKeepsItsProportions) {
    Picture fitted(u"imgFotoPeca"_s, u"Foto"_s, nullptr);
    fitted.resize(250, 195);
    fitted.SetPixmap(QPixmap(500, 100));
    QCOMPARE(fitted.PictureRect(), QRectF(0, 72.5, 250, 50));
    Picture natural(u"imgFigura"_s, u"Figura"_s, nullptr, Picture::Mode::Natural);
    natural.SetPixmap(QPixmap(500, 100));
    QCOMPARE(natural.PictureRect(), QRectF(0, 0, 500, 100));
}
