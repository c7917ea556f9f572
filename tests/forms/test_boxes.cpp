#include "platform/forms/progressbox.h"
#include "platform/forms/theme.h"
#include "support/windows.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTextDocument>
#include <QTextEdit>

using namespace forms;

struct TestBoxes : Fixture {};

TEST(TestBoxes, AskAndTell) {
    auto* under = new Form(u"frmTeste"_s, Form::Kind::Dialog, {300, 200}, {});
    under->Show();
    under->move(300, 500);
    const Theme& theme = CurrentTheme();
    const int question = vbYesNo + vbQuestion;
    const QColor blue = theme.primary;
    // What is long stands in a box of its own, which breaks it anywhere and scrolls.
    const QString brief = u"<b>Peça</b> & \"aspas\""_s;
    const QString line = u"<b>Peça</b>\n"_s + QString(200, u'x');
    const QString full = u"<b>Peça</b>\n"_s.repeated(300);
    for (const auto& [flags, said, key, answer, ground] : Each<int, QString, int, int, QColor>{
             {"ok", vbInformation, full, int(Qt::Key_Return), vbOK, blue},
             {"ok, escape", vbCritical, line, int(Qt::Key_Escape), vbOK, theme.alert},
             {"warning", vbExclamation, brief, int(Qt::Key_Space), vbOK, theme.lit},
             {"yes by default", question, brief, int(Qt::Key_Return), vbYes, blue},
             {"no by default", question + vbDefaultButton2, full, int(Qt::Key_Return), vbNo, blue},
             {"question, escape", question, line, int(Qt::Key_Escape), vbNo, blue},
             {"the other button", question + vbDefaultButton2, full, int(Qt::Key_S), vbYes, blue},
         }) {
        WithNextBox([&](QDialog& box) {
            QVERIFY(QTest::qWaitForWindowActive(&box) && IsBoxOpen());
            const QPoint aside = box.geometry().center() - under->geometry().center();
            QVERIFY(aside.manhattanLength() < 60);
            QCOMPARE(box.windowTitle() + box.accessibleName(), u"Título"_s + said);
            auto* sign = box.findChild<QLabel*>();
            const QImage drawn = sign->pixmap().toImage();
            QCOMPARE(drawn.pixelColor(4, 20), ground);
            QCOMPARE(drawn.pixelColor(0, 0).alpha(), 0);
            QCOMPARE(Shows(*sign, ground), QRect(2, 2, 36, 36));
            QVERIFY(Shows(*sign, ground == theme.lit ? theme.text : theme.primaryText).isValid());
            const QWidget* text = box.findChildren<QLabel*>().last();
            QSize size(220, 40);
            if (const auto* edit = box.findChild<QTextEdit*>()) {
                const int all = qCeil(edit->document()->size().height()) + 2;
                size = {440 + theme.scrollPixels, std::clamp(all, 40, 320)};
                QCOMPARE(edit->document()->textWidth(), 440);
                text = edit;
            }
            QCOMPARE(text->size(), size);
            const auto* row = box.findChild<QDialogButtonBox*>();
            QCOMPARE(Gaps(box, Qt::Horizontal, {sign, text}), u"18 16 18"_s);
            QCOMPARE(Gaps(box, Qt::Vertical, {text, row}), u"16 16 14"_s);
            QVERIFY(qAbs(row->geometry().center().x() - box.rect().center().x()) <= 1);
            QStringList buttons;
            for (const auto* button : box.findChildren<QPushButton*>()) {
                buttons += button->text();
                QCOMPARE(button->width(), 84);
                QCOMPARE(button->isDefault(),
                         (button->text() == u"&Não"_s) == bool(flags & vbDefaultButton2));
                QCOMPARE(button->hasFocus(), button->isDefault());
            }
            QCOMPARE(buttons, answer == vbOK ? List("OK") : List("&Sim", "&Não"));
            if (auto* edit = box.findChild<QTextEdit*>()) {  // to be read, and left by Tab
                edit->setFocus();
                QTest::keyClick(edit, Qt::Key_X);
                QTest::keyClick(edit, Qt::Key_Tab);
                QVERIFY(!edit->hasFocus());
                QVERIFY(Shows(*edit->viewport(), theme.base).isNull());
            }
            QCOMPARE(text->property(size.width() == 220 ? "text" : "plainText"), said);
            QTest::keyClick(key == Qt::Key_Space ? QApplication::focusWidget() : &box, Qt::Key(key),
                            key == Qt::Key_S ? Qt::AltModifier : Qt::NoModifier);
            QTRY_VERIFY(!box.isVisible());
        });
        QCOMPARE(MsgBox(said, flags, u"Título"_s), answer);
        QVERIFY(!IsBoxOpen());
    }
    under->Unload();
}

TEST(TestBoxes, Progress) {
    ProgressBox early;
    QVERIFY(early.Look(u"Lendo"_s, 1, 4) && !early.isVisible());
    const int before = ProgressBox::SetDelay(0);
    ProgressBox box;
    const auto* label = box.findChild<QLabel*>();
    const auto* bar = box.findChild<QProgressBar*>();
    auto* button = box.findChild<QPushButton*>();
    QPoint place;
    for (const auto& [done, total] : {std::pair(0, 0), std::pair(1, 4), std::pair(1, 1)}) {
        const QString said = u"Lendo %1"_s.arg(done);
        QVERIFY(box.Look(said, done, total) && box.isVisible() && box.isModal());
        QCOMPARE(label->text() + box.accessibleName() + box.windowTitle(),
                 said + said + ProgramTitle());
        QCOMPARE(bar->maximum(), total > 0 ? 1000 : 0);
        QVERIFY(place.isNull() || box.pos() == place);  // stays where it was moved to
        box.move(place = QPoint(50, 60));
        QCOMPARE(std::max(bar->value(), 0), total > 0 ? 1000 * done / total : 0);
    }
    QCOMPARE(Gaps(box, Qt::Vertical, {label, bar, button}), u"16 12 12 14"_s);
    QCOMPARE(Gaps(box, Qt::Horizontal, {bar}), u"18 18"_s);
    QCOMPARE(box.width(), 320);
    QCOMPARE(button->text(), u"Cancelar"_s);
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!box.Look(u"Lendo"_s, 1, 4));
    QCOMPARE(ProgressBox::SetDelay(before), 0);
}
