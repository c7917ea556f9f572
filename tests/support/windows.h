#pragma once

#include "platform/forms/application.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"
#include "support/test.h"

#include <QDialog>
#include <QTimer>

// Driving the program's windows in a test.
// Answers the message boxes that come while it lives, in order; a box without an answer left is
// answered by OK (1) or no (7). Their texts are kept, so that a test can ask what was said.
class BoxAnswers {
public:
    explicit BoxAnswers(QList<int> answers = {});
    ~BoxAnswers();

    struct Shown {
        QString text;
        int flags;
        QString title;
    };
    const QList<Shown>& Boxes() const { return shown_; }
    QStringList Texts() const;
    QStringList FlagsAndTexts() const;  // "16 Erro nº: 5"

private:
    QList<int> answers_;
    QList<Shown> shown_;
};

// Does this with the modal box that comes next, and rejects what is left of it after five seconds:
// a test that fails must end, too.
void WithNextBox(const std::function<void(QDialog& box)>& work);

// Waits until the screen of this name is loaded and active; null after `milliseconds`.
forms::Form* WaitForForm(const AnyText& name, int milliseconds = 5000);

// The mouse at a place of the screen's picture, in design pixels, wherever a control stands there.
void ClickAt(forms::Form& form, QPoint place);
void DoubleClickAt(forms::Form& form, QPoint place);
void MoveTo(forms::Form& form, QPoint place);

// A notch of the wheel over the middle of a control, as the window system reports it; positive is
// away from the hand.
void Wheel(QWidget& control, int notches);

// The control of this object name; the test program ends if there is none.
template <typename Control>
Control& Find(forms::Form& form, const AnyText& name) {
    auto* control = form.findChild<Control*>(name);
    if (!control) {
        qFatal("%s has no %s", qPrintable(form.Name()), qPrintable(name));
    }
    return *control;
}

// Where pixels of the colour are in this part of what the control paints, as it looks by itself.
QRect Shows(QWidget& control, const QColor& colour, const QRect& part = {});

// Counts what is painted of the controls that it is a filter of.
struct Paints : QObject {
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

// Free pixels from the window's edge through these, in their order, to the other edge: "6 6 12 6".
QString Gaps(const QWidget& window, Qt::Orientation along, const QList<const QWidget*>& parts);

// Lets events run until nothing is left that is due, deletions of unloaded forms included.
void Settle();
