#include "platform/forms/owner.h"
#include "platform/forms/theme.h"
#include "support/windows.h"

#include <QAccessible>
#include <QScrollArea>
#include <QWindow>

using forms::ClickZone;
using forms::Form;

namespace {

QStringList history;

class Screen : public Form {
public:
    explicit Screen(const QString& name, Kind kind = Kind::Screen)
        : Form(name, kind, kind == Kind::Screen ? QSize(800, 600) : QSize(300, 200), {}) {}

    using Form::SetSurround;
    std::function<void()> onLoad;
    std::function<void()> onActivate;
    std::function<void()> onUnloading;

protected:
    void Load() override { Note(u"load"_s, onLoad); }
    void Activate() override { Note(u"activate"_s, onActivate); }
    void Unloading() override { Note(u"unloading"_s, onUnloading); }

private:
    void Note(const QString& what, const std::function<void()>& then) {
        history += Name() + u' ' + what;
        if (then) {
            then();
        }
    }
};

void LeaveOverTo(QWidget& widget) {
    widget.activateWindow();
    [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(&widget, 300);
    Settle();
}

// What happens to a screen `it` beside another one.
const QHash<QString, std::function<void(Screen& it, Screen& other)>> Steps = {
    {u"show"_s, [](Screen& it, Screen&) { it.Show(); }},
    {u"hide"_s, [](Screen& it, Screen&) { it.SetVisible(false); }},
    {u"reveal"_s, [](Screen& it, Screen&) { it.SetVisible(true); }},
    {u"unload"_s, [](Screen& it, Screen&) { it.Unload(); }},
    {u"minimise"_s, [](Screen& it, Screen&) { it.Minimize(); }},
    {u"restore"_s, [](Screen& it, Screen&) { it.setWindowState(Qt::WindowNoState); }},
    {u"front"_s, [](Screen& it, Screen&) { LeaveOverTo(it); }},
    {u"settle"_s, [](Screen&, Screen&) { Settle(); }},
    {u"window"_s,
     [](Screen&, Screen&) {
         QWidget window;
         window.show();
         LeaveOverTo(window);
     }},
    {u"box"_s,
     [](Screen&, Screen&) {
         WithNextBox([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
         QCOMPARE(forms::MsgBox(u"Continuar?"_s, forms::vbYesNo + forms::vbQuestion, {}),
                  forms::vbNo);
     }},
    {u"only-load"_s, [](Screen& it, Screen&) { it.onLoad = [&it] { it.Unload(); }; }},
    {u"then-other"_s,
     [](Screen& it, Screen& other) { it.onUnloading = [&other] { other.Show(); }; }},
};

}  // namespace

struct TestForm : Fixture {
    QPointer<Screen> screen_;

    // A painted button.
    ClickZone* Zone(const QString& name, const QRect& place) const {
        auto* zone = new ClickZone(name, name, screen_->Picture());
        zone->setGeometry(place);
        zone->setFocusPolicy(Qt::TabFocus);
        return zone;
    }
    void Open() const {
        screen_->Show();
        QVERIFY(QTest::qWaitForWindowActive(screen_));
    }

    void init() override {
        history.clear();
        screen_ = new Screen(u"screen"_s);
    }
    void cleanup() override {
        for (Form* form : Form::Loaded()) {
            form->Unload();
        }
        Settle();
        delete screen_;
        QVERIFY(Form::Loaded().isEmpty());
    }
};

TEST(TestForm, Activation) {
    for (const auto& [steps, expected] : Each<QString, QStringList>{
             {"next screen, own visibility off", "b show, a hide", List("b load", "b activate")},
             {"there and back", "b show, a hide, a reveal, b unload",
              List("b load", "b activate", "a activate", "b unloading")},
             {"hidden first, then the next", "a hide, b show", List("b load", "b activate")},
             {"the one in front goes", "b show, b unload",
              List("b load", "b activate", "b unloading", "a activate")},
             {"the one in front hides and comes back", "b show, b hide, b reveal",
              List("b load", "b activate", "a activate", "b activate")},
             {"shown again while in front", "a show", List()},
             {"visible already", "b show, a reveal", List("b load", "b activate")},
             {"shown behind another", "b show, b front, a show",
              List("b load", "b activate", "a activate")},
             {"minimised and back", "a minimise, a settle, a restore, a front", List()},
             {"another window that is no screen", "a window, a settle, a front", List()},
             {"the user changes between two of them", "b show, a settle, a front",
              List("b load", "b activate", "a activate")},
             {"message box", "a box, a front", List()},
             {"unloads itself while loading", "b only-load, b show", List("b load", "b unloading")},
             {"next screen from the unload", "a then-other, a unload",
              List("a unloading", "b load", "b activate")},
         }) {
        const QPointer<Screen> a(new Screen(u"a"_s));
        const QPointer<Screen> b(new Screen(u"b"_s));
        a->Show();
        Settle();
        QCOMPARE(history, List("a load", "a activate"));
        history.clear();
        for (const QString& step : steps.split(u", "_s)) {
            const bool ofA = step.startsWith(u'a');
            QVERIFY2(Steps.contains(step.mid(2)), qPrintable(step));
            Steps.value(step.mid(2))(ofA ? *a : *b, ofA ? *b : *a);
        }
        Settle();
        QCOMPARE(history, expected);
        QTRY_COMPARE(QApplication::activeWindow(), Form::Active());
        if (b && !b->IsLoaded()) {
            b->Unload();
        }
    }
}

TEST(TestForm, ModalDialogBlocksAndGivesBack) {
    screen_->Show();
    auto* dialog = new Screen(u"dialog"_s, Form::Kind::Dialog);
    const QPointer<Form> watch(dialog);
    QTimer::singleShot(5000, dialog, &QWidget::close);  // where a check has failed before
    QTimer::singleShot(50, [&] {
        QCOMPARE(Form::Active(), dialog);
        QCOMPARE(dialog->windowTitle(), forms::ProgramTitle());
        QCOMPARE(dialog->size(), QSize(300, 200));
        QCOMPARE(dialog->grab().toImage().pixelColor(5, 5), forms::CurrentTheme().window);
        const QPoint shift = dialog->geometry().center() - screen_->geometry().center();
        QVERIFY(shift.manhattanLength() < 60);  // a frame's
        QVERIFY(forms::IsBlocked(*screen_) && !forms::IsBlocked(*dialog));
        QCOMPARE(dialog->windowHandle()->transientParent(), screen_->windowHandle());
        QVERIFY(screen_->windowFlags() & Qt::FramelessWindowHint);
        QVERIFY(!(dialog->windowFlags() & Qt::FramelessWindowHint));
        QVERIFY(QApplication::activeModalWidget() == dialog);
        dialog->close();
        QVERIFY(!dialog->isVisible() && !Form::Find(u"dialog"_s));
    });
    dialog->ShowModal();
    QCOMPARE(history, List("screen load", "screen activate", "dialog load", "dialog activate",
                           "dialog unloading", "screen activate"));
    Settle();
    QVERIFY(watch.isNull());
}

TEST(TestForm, FailedLoadLeavesNothing) {
    screen_->onLoad = [] { throw Erro(3021, u"Nenhum registro atual."_s); };
    QVERIFY_THROWS_EXCEPTION(Erro, screen_->Show());
    QVERIFY(!Form::Find(u"screen"_s) && !Form::Active());
    Settle();
    QVERIFY(screen_.isNull());
}

TEST(TestForm, ClicksReachWhatTheyHit) {
    QStringList heard;
    ClickZone& zone = *Zone(u"imgSair"_s, {27, 509, 45, 31});
    connect(&zone, &forms::Zone::Click, [&] { heard += u"zone"_s; });
    connect(&zone, &forms::Zone::MouseMove, [&] { heard += u"zone move"_s; });
    forms::Label label(u"lblEmissao"_s, screen_->Picture());
    label.setGeometry(142, 10, 107, 17);
    forms::Picture picture(u"imgFigura(0)"_s, {}, screen_->Picture());
    picture.setGeometry(10, 100, 120, 75);
    connect(&picture, &forms::Zone::Click, [&] { heard += u"picture"_s; });
    connect(&picture, &forms::Zone::DblClick, [&] { heard += u"picture double"_s; });
    connect(screen_, &Form::Click, [&] { heard += u"form"_s; });
    connect(screen_, &Form::MouseMove, [&] { heard += u"form move"_s; });
    screen_->Show();

    ClickAt(*screen_, {28, 510});
    DoubleClickAt(*screen_, {28, 510});
    ClickAt(*screen_, {300, 300});
    ClickAt(*screen_, {150, 15});  // a label keeps the mouse to itself
    DoubleClickAt(*screen_, {20, 110});
    QCOMPARE(heard, List("zone", "zone", "zone", "form", "picture", "picture double"));

    heard.clear();
    QTest::mousePress(&zone, Qt::LeftButton);
    QTest::mouseRelease(&zone, Qt::LeftButton, {}, {-5, -5});
    QTest::mouseClick(&zone, Qt::RightButton);
    // The first half of this double click was spent on the screen before.
    zone.hide();
    zone.show();
    QTest::mouseDClick(&zone, Qt::LeftButton);
    QCOMPARE(heard, QStringList());

    QTest::mouseMove(&zone);
    MoveTo(*screen_, {400, 300});
    heard.removeDuplicates();
    QCOMPARE(heard, List("zone move", "form move"));
}

// Entering a box has meaning on some screens: the toolkit must not do it by itself.
TEST(TestForm, NobodyEntersABoxUnasked) {
    QStringList heard;
    forms::Panel panel(u"pctA"_s, {}, screen_->Picture());
    panel.setGeometry(0, 0, 200, 100);
    forms::TextBox box(u"txtA"_s, u"A"_s, &panel);
    connect(&box, &forms::TextBox::GotFocus, [&] { heard += u"in"_s; });
    connect(&box, &forms::TextBox::LostFocus, [&] { heard += u"out"_s; });
    const forms::TextBox another(u"txtB"_s, u"B"_s, screen_->Picture());
    connect(screen_, &Form::KeyDown, [&] { heard += u"key"_s; });
    Open();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
    box.setFocus();
    QCOMPARE(heard, List("key", "in"));
    QWidget other;
    other.show();
    LeaveOverTo(other);
    other.hide();
    LeaveOverTo(*screen_);
    QCOMPARE(heard, List("key", "in"));
    panel.hide();
    QCOMPARE(heard, List("key", "in", "out"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_X);
    QCOMPARE(box.text(), QString());
}

TEST(TestForm, PictureStandsInTheMiddle) {
    screen_->Show();
    screen_->setWindowState(Qt::WindowNoState);
    screen_->resize(1067, 600);
    QCOMPARE(screen_->Picture()->geometry(), QRect(133, 0, 800, 600));
    QCOMPARE(screen_->grab().toImage().pixelColor(5, 5), forms::CurrentTheme().surround);
    screen_->SetSurround(Qt::red);
    QCOMPARE(screen_->grab().toImage().pixelColor(1060, 5), QColor(Qt::red));
    screen_->resize(800, 600);
    QCOMPARE(screen_->Picture()->geometry(), QRect(0, 0, 800, 600));
    screen_->resize(640, 480);  // whole, behind scroll bars
    QCOMPARE(screen_->Picture()->geometry(), QRect(0, 0, 800, 600));
    auto* area = screen_->findChild<QScrollArea*>();
    QVERIFY(area->verticalScrollBar()->maximum() >= 120);
    QVERIFY(area->horizontalScrollBar()->maximum() >= 160);
}

// An error, an inner piece of work, a box and a modal screen come between begin and end.
TEST(TestForm, HourglassStandsAsLongAsTheWork) {
    const auto work = [](const std::function<void()>& inner) {
        const forms::Busy busy;
        inner();
        return forms::MousePointer();
    };
    QCOMPARE(work([&] { work([] {}); }), forms::vbHourglass);
    QCOMPARE(forms::MousePointer(), forms::vbDefault);
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(ErrorOf([&] { work([] { throw Erro(Erro::InvalidArgument); }); }), 5);
    QCOMPARE(forms::MousePointer(), forms::vbDefault);

    int behind = -1;
    WithNextBox([&](QDialog& box) {
        behind = forms::MousePointer();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    QCOMPARE(work([] { forms::MsgBox(u"Pronto."_s, forms::vbInformation, {}); }),
             forms::vbHourglass);
    QCOMPARE(behind, forms::vbDefault);

    auto* dialog = new Screen(u"dialog"_s, Form::Kind::Dialog);
    dialog->onActivate = [] { forms::SetMousePointer(forms::vbDefault); };
    QTimer::singleShot(50, [&] {
        behind = forms::MousePointer();
        dialog->Unload();
    });
    QCOMPARE(work([&] { dialog->ShowModal(); }), forms::vbDefault);
    QCOMPARE(behind, forms::vbDefault);
}

TEST(TestForm, UntrappedErrorEndsTheProgramInOrder) {
    auto* application = qobject_cast<forms::Application*>(qApp);
    BoxAnswers boxes;
    bool emergency = false;
    application->SetEmergencyExit([&] {
        emergency = true;
        throw Erro(Erro::InternalError);
    });
    forms::SetMousePointer(11);
    const int status = application->Run([] {
        QWidget window;  // the last one to close, which ends nothing
        window.show();
        window.close();
        QTimer::singleShot(20, qApp, [] { throw Erro(3021, u"Nenhum registro atual."_s); });
    });
    application->SetEmergencyExit({});
    QCOMPARE(status, 1);
    QVERIFY(emergency);
    QCOMPARE(forms::MousePointer(), 0);
    QCOMPARE(boxes.FlagsAndTexts(), List("16 Erro nº: 3021\nNenhum registro atual."));
    QCOMPARE(boxes.Boxes().first().title, u"Catálogo TARVO-LINDEN"_s);
}

TEST(TestForm, KeysPressAZone) {
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
TEST(TestForm, TabPassesOverWhatIsCovered) {
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
