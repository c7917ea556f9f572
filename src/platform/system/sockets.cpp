#include "platform/system/sockets.h"

#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>

namespace sys {

void WaitForSockets(const std::vector<int>& reading, const std::vector<int>& writing,
                    std::chrono::milliseconds longest) {
    QEventLoop loop;
    std::vector<std::unique_ptr<QSocketNotifier>> notifiers;
    const auto watch = [&](const std::vector<int>& sockets, QSocketNotifier::Type type) {
        for (const int socket : sockets) {
            notifiers.push_back(std::make_unique<QSocketNotifier>(socket, type));
            QObject::connect(notifiers.back().get(), &QSocketNotifier::activated, &loop,
                             &QEventLoop::quit);
        }
    };
    watch(reading, QSocketNotifier::Read);
    watch(writing, QSocketNotifier::Write);
    QTimer::singleShot(longest, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

}  // namespace sys
