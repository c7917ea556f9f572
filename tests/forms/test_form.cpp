#include "platform/forms/owner.h"
#include "platform/forms/theme.h"
#include "support/cases.h"
#include "support/windows.h"

#include <QAccessible>
#include <QScrollArea>
#include <QWindow>

using forms::ClickZone;
using forms::Form;

namespace {

QStringList history;

struct Screen : Form {
    explicit Screen(const QString& name, Kind kind = Kind::Screen)
        : Form(name, kind, kind == Kind::Screen ? QSize(800, 600) : QSize(300, 200), {}) {}

    using Form::SetSurround;
    QHash<QString, std::function<void()>> then;  // what it does when it is told that

protected:
    void Load() override { Note(u"load"_s); }
    void Activate() override { Note(u"activate"_s); }
    void Unloading() override { Note(u"unloading"_s); }

private:
    void Note(const QString& what) {
        history += Name() + u' ' + what;
        then.value(what, [] {})();
    }
};

void LeaveOverTo(QWidget& widget) {
    widget.activateWindow();
    [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(&widget, 300);
    Settle();
}

// What happens to a screen.
const QHash<QString, std::function<void(Screen& it)>> Steps = {
    {u"show"_s, [](Screen& it) { it.Show(); }},
    {u"hide"_s, [](Screen& it) { it.SetVisible(false); }},
    {u"reveal"_s, [](Screen& it) { it.SetVisible(true); }},
    {u"unload"_s, [](Screen& it) { it.Unload(); }},
    {u"minimise"_s, [](Screen& it) { it.Minimize(); }},
    {u"restore"_s, [](Screen& it) { it.setWindowState(Qt::WindowNoState); }},
    {u"front"_s, [](Screen& it) { LeaveOverTo(it); }},
    {u"settle"_s, [](Screen&) { Settle(); }},
    {u"only-load"_s, [](Screen& it) { it.then[u"load"_s] = [&it] { it.Unload(); }; }},
    {u"then-other"_s,
     [](Screen& it) { it.then[u"unloading"_s] = [] { (new Screen(u"b"_s))->Show(); }; }},
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
    for (const auto& [one] : Cases(TARVO_CASES "/activation.data")) {
        const QPointer<Screen> a(new Screen(u"a"_s));
        const QPointer<Screen> b(new Screen(u"b"_s));
        a->Show();
        Settle();
        QCOMPARE(history, List("a load", "a activate"));
        history.clear();
        for (const QString& step : one.lines.first().split(u", "_s)) {
            QVERIFY2(Steps.contains(step.mid(2)), qPrintable(step));
            Steps.value(step.mid(2))(step.startsWith(u'a') ? *a : *b);
        }
        Settle();
        QCOMPARE(history, one.lines.value(1).split(u", "_s, Qt::SkipEmptyParts));
        QTRY_COMPARE(QApplication::activeWindow(), Form::Active());
        delete b;
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
        const QPoint shift = dialog->geometry().center() - screen_->geometry().center();
        QVERIFY(shift.manhattanLength() < 60);  // a frame's
        QVERIFY(forms::IsBlocked(*screen_) && !forms::IsBlocked(*dialog));
        QCOMPARE(dialog->windowHandle()->transientParent(), screen_->windowHandle());
        QVERIFY(screen_->windowFlags() & Qt::FramelessWindowHint);
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
    screen_->then[u"load"_s] = [] { throw Erro(3021, u"Nenhum registro atual."_s); };
    QVERIFY_THROWS_EXCEPTION(Erro, screen_->Show());
    QVERIFY(!Form::Find(u"screen"_s) && !Form::Active());
    Settle();
    QVERIFY(screen_.isNull());
}

// Whatever stands on a screen keeps the mouse to itself, disabled or not; all but the light over a
// button.
TEST(TestForm, ControlsKeepTheMouse) {
    QWidget* picture = screen_->Picture();
    forms::LitPicture light(u"imgSairSelecionada"_s, forms::Artwork::Load(u"icone"_s), picture);
    // What a click and a move are told as, and whether the click brings the keyboard.
    const std::tuple<QWidget*, QString, bool> controls[] = {
        {Zone(u"imgSair"_s, {}), u"imgSair down click move"_s, false},
        {new forms::Panel(u"pctA"_s, {}, picture), u"pctA down click move"_s, true},
        {new forms::Picture(u"imgA"_s, {}, picture), u"imgA down click move"_s, false},
        {new forms::Label(u"lblA"_s, picture), u"lblA down click move"_s, false},
        {new forms::TextBox(u"txtA"_s, {}, picture), u"txtA move"_s, true},
        {new forms::ComboList(u"cboA"_s, {}, picture), u"cboA"_s, true},
        {new forms::ScrollBar(u"sclA"_s, Qt::Horizontal, picture), u"sclA"_s, false},
    };
    QStringList heard;
    const auto hear = [&](auto* from, auto signal, const QString& what) {
        connect(from, signal, this, [&heard, what] { heard += what; });
    };
    int top = 0;
    for (const auto& [control, told, takes] : controls) {
        control->setGeometry(20, top += 50, 100, 30);
        if (auto* zone = qobject_cast<forms::Zone*>(control)) {
            hear(zone, &forms::Zone::MouseDown, u"down"_s);
            hear(zone, &forms::Zone::Click, u"click"_s);
            hear(zone, &forms::Zone::MouseMove, u"move"_s);
        } else if (auto* box = qobject_cast<forms::TextBox*>(control)) {
            hear(box, &forms::TextBox::MouseMove, u"move"_s);
        }
    }
    light.setGeometry(20, 50, 100, 30);
    light.raise();
    hear(screen_.data(), &Form::Click, u"form"_s);
    hear(screen_.data(), &Form::MouseMove, u"form move"_s);
    screen_->Show();
    QVERIFY(!light.isVisible() &&
            light.grab().toImage() != std::get<0>(controls[1])->grab().toImage());
    Find<forms::LitPicture>(*screen_, "imgSairSelecionada").show();
    for (const auto& [control, told, takes] : controls) {
        const QPoint place = control->geometry().center();
        QWidget& hit = *screen_->childAt(picture->mapTo(screen_, place));
        heard = List(hit.objectName());
        picture->setFocus();
        QTest::mouseClick(&hit, Qt::LeftButton);
        if (QWidget* list = QApplication::activePopupWidget()) {
            list->close();
        }
        MoveTo(*screen_, place);
        heard.removeDuplicates();
        QCOMPARE(heard.join(u' '), told);
        QCOMPARE(control->hasFocus(), takes);
        control->setEnabled(false);
        heard.clear();
        QTest::mouseClick(&hit, Qt::LeftButton);
        QCOMPARE(heard, QStringList());
    }
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
    QTest::mouseRelease(&zone, Qt::LeftButton);
    QCOMPARE(heard, QStringList());

    QTest::mouseMove(&zone);
    MoveTo(*screen_, {400, 300});
    heard.removeDuplicates();
    QCOMPARE(heard, List("zone move", "form move"));
}

// Entering a box or a screen has meaning: it does not come by itself, nor on the way back from
// another window or from a question.
TEST(TestForm, NobodyEntersUnasked) {
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
    WithNextBox([](QDialog& asked) { QTest::keyClick(&asked, Qt::Key_Escape); });
    forms::MsgBox(u"Continuar?"_s, forms::vbYesNo, {});
    LeaveOverTo(*screen_);
    QCOMPARE(heard, List("key", "in"));
    QCOMPARE(history, List("screen load", "screen activate"));
    panel.hide();
    QCOMPARE(heard, List("key", "in", "out"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_X);
    QCOMPARE(box.text(), QString());
    panel.show();
    box.setFocus();
    QCOMPARE(heard.last(), u"in"_s);
}

TEST(TestForm, PictureStandsInTheMiddle) {
    screen_->Show();
    screen_->setWindowState(Qt::WindowNoState);
    screen_->resize(1067, 600);
    QCOMPARE(screen_->Picture()->geometry(), QRect(133, 0, 800, 600));
    QCOMPARE(screen_->grab().toImage().pixelColor(5, 5), forms::CurrentTheme().surround);
    screen_->SetSurround(Qt::red);
    QCOMPARE(screen_->grab().toImage().pixelColor(1060, 5), QColor(Qt::red));
    screen_->resize(640, 480);  // whole, behind scroll bars
    QCOMPARE(screen_->Picture()->geometry(), QRect(0, 0, 800, 600));
    auto* area = screen_->findChild<QScrollArea*>();
    QVERIFY(area->verticalScrollBar()->maximum() >= 120);
    QVERIFY(area->horizontalScrollBar()->maximum() >= 160);
    screen_->Minimize();
    QVERIFY(screen_->isMinimized());
    screen_->Show();
    QVERIFY(!screen_->isMinimized());

    // Each finds its place again where the scale has changed.
    auto* splash = new Screen(u"splash"_s, Form::Kind::Splash);
    splash->Show();
    splash->move(0, 0);
    Form::PlaceAllAnew();
    const QRect whole = screen_->screen()->availableGeometry();
    QVERIFY(screen_->isMaximized());
    QCOMPARE(screen_->geometry(), whole);
    QCOMPARE(splash->size(), QSize(300, 200));
    QVERIFY((splash->geometry().center() - whole.center()).manhattanLength() < 3);
}

TEST(TestForm, LongWorkLetsEventsIn) {
    int ran = 0;
    for (const auto& let : {forms::DoEvents, forms::DoEventsButInput, forms::DoEventsInTime}) {
        QTest::qSleep(20);  // longer than events are let wait
        QTimer::singleShot(0, [&ran] { ++ran; });
        let();
    }
    QCOMPARE(ran, 3);
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
    dialog->then[u"activate"_s] = [] { forms::SetMousePointer(forms::vbDefault); };
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
    ClickZone& zone = *Zone(u"imgOk"_s, {0, 0, 40, 20});
    QStringList heard;
    connect(&zone, &ClickZone::MouseDown, [&] { heard += u"down"_s; });
    connect(&zone, &ClickZone::Click, [&] { heard += u"click"_s; });
    connect(screen_, &Form::KeyDown, [&] { heard += u"key"_s; });
    Open();
    zone.setFocus();
    const auto press = [&](std::initializer_list<Qt::Key> keys) {
        heard.clear();
        for (const Qt::Key key : keys) {
            QTest::keyClick(&zone, key);
        }
        return heard.join(u' ');
    };
    QCOMPARE(press({Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}),
             u"down click down click down click key"_s);

    const QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&zone);
    QCOMPARE(told->role(), QAccessible::Button);
    QVERIFY(!told->state().checkable && !told->state().checked);
    for (const bool ticked : {false, true}) {
        zone.SetTicked(ticked);
        QCOMPARE(told->role(), QAccessible::CheckBox);
        QVERIFY(told->state().checkable && told->state().checked == ticked);
    }
    QCOMPARE(press({Qt::Key_Space, Qt::Key_Return}), u"down click key"_s);
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
