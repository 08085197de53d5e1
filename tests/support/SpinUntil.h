#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace tirlo {

/// Runs the event loop until the condition holds; false when it does not in half a minute.
///
/// It never sleeps while there are events, so that a long upload goes at its full speed.
template<typename Condition>
[[nodiscard]] bool spinUntil(Condition condition)
{
    const QDeadlineTimer deadline(30'000);
    QTimer wake;
    wake.start(5);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace tirlo
