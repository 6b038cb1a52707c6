#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

#include <functional>

namespace tallyfold::tests {

/// Lets events happen until `condition` holds; false when it does not come to hold.
inline bool waitUntil(const std::function<bool()> &condition)
{
    constexpr qint64 patience = 60'000; // Milliseconds; only a failure takes so long.
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > patience) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

} // namespace tallyfold::tests
