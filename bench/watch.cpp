#include "watch.h"

#include <QEvent>

#include <stdexcept>

namespace bench {

constexpr double PatienceMs = 20000;

void WatchfulApplication::Watch(const QStringList& painted) {
    missing_ = painted;
    inside_.clear();
    longestMs_ = 0;
}

double WatchfulApplication::TimeToPaint(const QStringList& painted,
                                        const std::function<void()>& act) {
    Watch(painted);
    const Clock::time_point start = Clock::now();
    act();
    while (!WasPainted()) {
        processEvents();
        if (MillisecondsSince(start) > PatienceMs) {
            throw std::runtime_error("never painted: " + missing_.join(u' ').toStdString());
        }
    }
    return MillisecondsSince(start);
}

bool WatchfulApplication::notify(QObject* receiver, QEvent* event) {
    const Clock::time_point start = Clock::now();
    ++depth_;
    const bool handled = Application::notify(receiver, event);
    --depth_;
    if (event->type() == QEvent::Paint && !missing_.isEmpty()) {
        inside_ << receiver->objectName();
        if (receiver->parent()) {
            inside_ << receiver->parent()->objectName();
        }
    }
    if (depth_ == 0) {
        // A control's paint is part of a bigger event, at whose end the picture is on the window.
        longestMs_ = std::max(longestMs_, MillisecondsSince(start));
        for (const QString& name : std::as_const(inside_)) {
            missing_.removeAll(name);
        }
        inside_.clear();
    }
    return handled;
}

}  // namespace bench
