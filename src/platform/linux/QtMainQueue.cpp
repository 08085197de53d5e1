#include "QtMainQueue.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tirlo {

double QtMainQueue::mediaTime() const
{
    const auto sinceBoot = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(sinceBoot).count();
}

QDateTime QtMainQueue::wallClock() const
{
    return QDateTime::currentDateTime();
}

void QtMainQueue::post(std::function<void()> work)
{
    QMetaObject::invokeMethod(&m_context, std::move(work), Qt::QueuedConnection);
}

void QtMainQueue::schedule(double seconds, std::function<void()> fire)
{
    const auto wait = std::chrono::milliseconds(std::int64_t(std::max(0.0, seconds) * 1000 + 0.5));
    QTimer::singleShot(wait, Qt::PreciseTimer, &m_context, std::move(fire));
}

} // namespace tirlo
