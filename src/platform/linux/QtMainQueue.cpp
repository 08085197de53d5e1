#include "QtMainQueue.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tirlo {

QtMainQueue::QtMainQueue()
{
    m_clock.start();
}

double QtMainQueue::mediaTime() const
{
    return double(m_clock.nsecsElapsed()) * 1e-9;
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
