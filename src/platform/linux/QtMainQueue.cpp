#include "QtMainQueue.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <utility>

namespace tirlo {

namespace {

double secondsOf(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

} // namespace

double QtMainQueue::mediaTime() const
{
    return secondsOf(CLOCK_MONOTONIC);
}

double QtMainQueue::timeAsleep() const
{
    return secondsOf(CLOCK_BOOTTIME) - secondsOf(CLOCK_MONOTONIC);
}

QDateTime QtMainQueue::wallClock() const
{
    return QDateTime::currentDateTime();
}

void QtMainQueue::post(std::function<void()> work)
{
    QMetaObject::invokeMethod(&m_context, std::move(work), Qt::QueuedConnection);
}

void QtMainQueue::schedule(double seconds, double slack, std::function<void()> fire)
{
    double wait = std::max(0.0, seconds);
    if (slack > 0) {
        // Everybody with the same slack, or a multiple of it, wakes on the same grid of time.
        const double now = mediaTime();
        wait = std::ceil((now + wait) / slack) * slack - now;
    }
    const auto milliseconds = std::chrono::milliseconds(std::llround(wait * 1000));
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &m_context, std::move(fire));
}

} // namespace tirlo
