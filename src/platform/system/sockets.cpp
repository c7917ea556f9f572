#include "platform/system/sockets.h"

#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>

namespace sys {

void WaitForSockets(const std::vector<Socket>& reading, const std::vector<Socket>& writing,
                    std::chrono::milliseconds longest) {
    QEventLoop loop;
    std::vector<std::unique_ptr<QSocketNotifier>> notifiers;
    const auto watch = [&](const std::vector<Socket>& sockets, QSocketNotifier::Type type) {
        for (const Socket socket : sockets) {
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
