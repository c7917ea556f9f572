#pragma once

#include "platform/forms/application.h"
#include "report.h"

#include <QStringList>

#include <functional>

namespace bench {

// Notes when controls have been painted and how long single events took.
class WatchfulApplication : public forms::Application {
public:
    using Application::Application;

    // From now on; a control is known by its object name, a grid's rows by the grid's.
    void Watch(const QStringList& painted);
    // Each of them has been painted, and the picture is on the window.
    bool WasPainted() const { return missing_.isEmpty(); }
    double LongestEventMs() const { return longestMs_; }

    // From the act to the paint; throws std::runtime_error when it never comes.
    double TimeToPaint(const QStringList& painted, const std::function<void()>& act);

    bool notify(QObject* receiver, QEvent* event) override;

private:
    QStringList missing_;
    QStringList inside_;
    double longestMs_ = 0;
    int depth_ = 0;
};

}  // namespace bench
