#include "support/windows.h"

#include <qpa/qwindowsysteminterface.h>

namespace {

// The window system hands an event to the lowest widget at its place; so does this.
std::pair<QWidget*, QPoint> At(forms::Form& form, QPoint place) {
    const QPoint inForm = form.Picture()->mapTo(&form, place);
    QWidget* widget = form.childAt(inForm);
    if (!widget) {
        widget = &form;
    }
    return {widget, widget->mapFrom(&form, inForm)};
}

// A window system with a pointer of its own tells of a move a while after it, and after the one
// before.
struct MoveWatch : QObject {
    QPoint place;
    bool told = false;

    explicit MoveWatch(QPoint global) : place(global) { qApp->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        told |= event->type() == QEvent::MouseMove &&
                static_cast<QMouseEvent*>(event)->globalPosition().toPoint() == place;
        return false;
    }
};

}  // namespace

BoxAnswers::BoxAnswers(QList<int> answers) : answers_(std::move(answers)) {
    forms::SetMsgBoxHandler([this](const QString& text, int flags, const QString& title) {
        shown_.append({text, flags, title});
        if (!answers_.isEmpty()) {
            return answers_.takeFirst();
        }
        return flags & forms::vbYesNo ? forms::vbNo : forms::vbOK;
    });
}

BoxAnswers::~BoxAnswers() {
    forms::SetMsgBoxHandler({});
}

QStringList BoxAnswers::Texts() const {
    QStringList texts;
    for (const Shown& box : shown_) {
        texts += box.text;
    }
    return texts;
}

QStringList BoxAnswers::FlagsAndTexts() const {
    QStringList lines;
    for (const Shown& box : shown_) {
        lines += QString::number(box.flags) + u' ' + box.text;
    }
    return lines;
}

void WithNextBox(const std::function<void(QDialog& box)>& work) {
    QTimer::singleShot(1, qApp, [work] {
        auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!box) {
            return WithNextBox(work);
        }
        QTimer::singleShot(5000, box, &QDialog::reject);
        work(*box);
    });
}

forms::Form* WaitForForm(const AnyText& name, int milliseconds) {
    const auto is = [&] {
        const forms::Form* active = forms::Form::Active();
        return active && active->Name() == name;
    };
    return QTest::qWaitFor(is, milliseconds) ? forms::Form::Active() : nullptr;
}

void ClickAt(forms::Form& form, QPoint place) {
    const auto [widget, position] = At(form, place);
    QTest::mouseClick(widget, Qt::LeftButton, {}, position);
}

void DoubleClickAt(forms::Form& form, QPoint place) {
    const auto [widget, position] = At(form, place);
    QTest::mouseClick(widget, Qt::LeftButton, {}, position);
    QTest::mouseDClick(widget, Qt::LeftButton, {}, position);  // its release is not in it
    QTest::mouseRelease(widget, Qt::LeftButton, {}, position);
}

void MoveTo(forms::Form& form, QPoint place) {
    const auto [widget, position] = At(form, place);
    // What brings the pointer into the window, or leaves it where it is, may not be told: aside
    // then, and back.
    for (const QPoint& aside : {QPoint(), QPoint(1, 0), QPoint()}) {
        MoveWatch watch(widget->mapToGlobal(position + aside));
        QTest::mouseMove(widget, position + aside);
        if (QTest::qWaitFor([&] { return watch.told; }, 500) && aside.isNull()) {
            break;
        }
    }
    Settle();
}

void Wheel(QWidget& control, int notches) {
    QWidget* window = control.window();
    const QPoint inWindow = control.mapTo(window, control.rect().center());
    QWindowSystemInterface::handleWheelEvent(window->windowHandle(), inWindow,
                                             window->mapToGlobal(inWindow), QPoint(),
                                             QPoint(0, 120 * notches));
    Settle();
}

QRect Shows(QWidget& control, const QColor& colour, const QRect& part) {
    const QImage image = control.grab(part.isEmpty() ? control.rect() : part).toImage();
    QRect seen;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            seen |= image.pixelColor(x, y) == colour ? QRect(x, y, 1, 1) : QRect();
        }
    }
    return seen;
}

QString Gaps(const QWidget& window, Qt::Orientation along, const QList<const QWidget*>& parts) {
    const auto way = [along](QPoint at) { return along == Qt::Horizontal ? at.x() : at.y(); };
    QStringList gaps;
    QPoint end;
    for (const QWidget* part : parts) {
        const QPoint begin = part->mapTo(&window, QPoint());
        gaps += QString::number(way(begin - end));
        end = begin + QPoint(part->width(), part->height());
    }
    gaps += QString::number(way(QPoint(window.width(), window.height()) - end));
    return gaps.join(u' ');
}

void Settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}
