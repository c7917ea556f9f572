#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "support/test.h"

#include <QAccessible>

using forms::ClickZone;
using forms::Form;

// A painted button under the keyboard.
struct TestKeyboard : Fixture {
    Form* screen_ = nullptr;

    ClickZone* Zone(const QString& name, const QRect& place) {
        auto* zone = new ClickZone(name, name, screen_->Picture());
        zone->setGeometry(place);
        zone->setFocusPolicy(Qt::TabFocus);
        return zone;
    }

    void Open() {
        screen_->Show();
        QVERIFY(QTest::qWaitForWindowActive(screen_));
    }

    void init() override {
        screen_ = new Form(u"screen"_s, Form::Kind::Screen, QSize(800, 600), {});
    }
    void cleanup() override { screen_->Unload(); }
};

TEST(TestKeyboard, KeysPressAZone) {
    Each<bool, int, QStringList> row;
    const QStringList pressed = List("down", "click");
    row("button, space", false, Qt::Key_Space, pressed);
    row("button, enter", false, Qt::Key_Return, pressed);
    row("button, enter of the number pad", false, Qt::Key_Enter, pressed);
    row("button, another", false, Qt::Key_Escape, {"key"});
    row("tick box, space", true, Qt::Key_Space, pressed);
    row("tick box, enter", true, Qt::Key_Return, {"key"});
    for (const auto& [tickBox, key, heard] : row) {
        ClickZone* zone = Zone(u"imgOk"_s, {0, 0, 40, 20});
        const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(zone);
        QCOMPARE(told->role(), QAccessible::Button);
        for (int ticked = 0; tickBox && ticked < 2; ++ticked) {
            zone->SetTicked(ticked == 1);
            QCOMPARE(told->role(), QAccessible::CheckBox);
            QVERIFY(told->state().checkable);
            QCOMPARE(int(told->state().checked), ticked);
        }
        QStringList events;
        connect(zone, &ClickZone::MouseDown, [&] { events += u"down"_s; });
        connect(zone, &ClickZone::Click, [&] { events += u"click"_s; });
        connect(screen_, &Form::KeyDown, [&] { events += u"key"_s; });
        Open();
        zone->setFocus();
        QTest::keyClick(zone, Qt::Key(key));
        QCOMPARE(events, heard);
    }
}

// What an open panel covers is not reached, in either direction.
TEST(TestKeyboard, TabPassesOverWhatIsCovered) {
    ClickZone* above = Zone(u"above"_s, {10, 10, 40, 20});
    Zone(u"covered"_s, {10, 110, 40, 20});
    ClickZone* below = Zone(u"below"_s, {10, 310, 40, 20});
    auto* panel = new forms::Panel(u"panel"_s, {}, screen_->Picture());
    panel->setGeometry(0, 100, 800, 162);
    Open();
    const auto after = [](Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        return QApplication::focusWidget();
    };
    QCOMPARE(after(Qt::Key_Tab), above);
    QCOMPARE(after(Qt::Key_Tab), below);
    QCOMPARE(after(Qt::Key_Backtab), above);
    QTest::mouseClick(below, Qt::LeftButton);  // a click leaves the keyboard where it is
    QCOMPARE(QApplication::focusWidget(), above);
    panel->hide();
    QCOMPARE(after(Qt::Key_Tab)->objectName(), u"covered"_s);
}
