#pragma once

#include <QApplication>

#include <functional>

namespace forms {

// The title of all screens and boxes, as the application object was given it.
QString ProgramTitle();

// The process's application object. An Erro that no handler trapped ends here: the box is shown,
// the emergency exit runs (the session closes the catalogue there) and the program ends with
// status 1. Constructing it also sets the scale: the 800 by 600 picture is enlarged evenly to each
// screen, and again when a screen changes.
class Application : public QApplication {
    Q_OBJECT

public:
    Application(int& argc, char** argv, const QString& title);

    // What must be put in order before the program ends on an untrapped error. Errors in it are
    // ignored.
    void SetEmergencyExit(std::function<void()> exit) { emergencyExit_ = std::move(exit); }

    // What an untrapped error's box says for its description; without one, the description.
    using Describer = std::function<QString(const QString& number, const QString& description)>;
    void SetDescriber(Describer describe) { describe_ = std::move(describe); }

    // Runs `start` as the first event and then the event loop until exit(); the status to return
    // from main. The program ends by exit() only, never because no window is left.
    int Run(std::function<void()> start);

    bool notify(QObject* receiver, QEvent* event) override;

private:
    void Fail(const QString& number, const QString& description);
    std::function<void()> emergencyExit_;
    Describer describe_;
    bool failing_ = false;
};

// Whether there is a screen to show a window on.
bool HasScreen();

// The text of the error box: number, line break, description.
QString ErrorText(const QString& number, const QString& description);

// Lets pending events run (paint, timers, input): the "let events through" of long work.
void DoEvents();

// The same without mouse and keys: those keep their order behind the event under way.
void DoEventsButInput();

// DoEvents for work that consists of very many small pieces, to be called after each of them: the
// events have their turn every ten milliseconds, which no eye and no hand can tell from always.
void DoEventsInTime();

// The mouse pointer of all screens.
inline constexpr int vbDefault = 0;
inline constexpr int vbHourglass = 11;
void SetMousePointer(int pointer);
int MousePointer();

// The pointer is another one while this lives; at its end, an error's included, it is what it was.
class PointerGuard {
public:
    explicit PointerGuard(int pointer) : before_(MousePointer()) { SetMousePointer(pointer); }
    ~PointerGuard() { SetMousePointer(before_); }
    Q_DISABLE_COPY_MOVE(PointerGuard)

private:
    int before_;
};

// The hourglass. Whoever opens a modal screen under it need not end it first: the screen's first
// activation puts the normal pointer back, and the end after its unload finds nothing to change.
struct Busy : PointerGuard {
    Busy() : PointerGuard(vbHourglass) {}
};

// The normal pointer amid busy work, for as long as the program waits for the user.
struct AwaitingUser : PointerGuard {
    AwaitingUser() : PointerGuard(vbDefault) {}
};

}  // namespace forms
