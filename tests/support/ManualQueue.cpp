#include "ManualQueue.h"

#include <algorithm>
#include <utility>

namespace tirlo {

QDateTime ManualQueue::wallClock() const
{
    return m_epoch.addMSecs(qint64((m_now + m_asleep) * 1000));
}

void ManualQueue::post(std::function<void()> work)
{
    const std::lock_guard guard(m_lock);
    m_posted.push_back(std::move(work));
}

void ManualQueue::advance(double seconds)
{
    const double end = m_now + seconds;
    drain();
    for (;;) {
        const auto next = std::ranges::min_element(m_due, {}, &Due::time);
        if (next == m_due.end() || next->time > end)
            break;
        m_now = std::max(m_now, next->time);
        const auto fire = std::move(next->fire);
        m_due.erase(next);
        fire();
        drain();
    }
    m_now = end;
}

void ManualQueue::drain()
{
    for (;;) {
        std::vector<std::function<void()>> batch;
        {
            const std::lock_guard guard(m_lock);
            batch.swap(m_posted);
        }
        if (batch.empty())
            return;
        for (const auto &work : batch)
            work();
    }
}

void ManualQueue::schedule(double seconds, double, std::function<void()> fire)
{
    m_due.push_back({m_now + seconds, std::move(fire)});
}

} // namespace tirlo
