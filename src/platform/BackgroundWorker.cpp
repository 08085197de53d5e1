#include "BackgroundWorker.h"

#include <future>

namespace tirlo {

BackgroundWorker::BackgroundWorker(AtEnd atEnd)
    : m_atEnd(atEnd)
{
}

BackgroundWorker::~BackgroundWorker()
{
    std::deque<std::function<void()>> dropped;
    if (m_atEnd == AtEnd::drop) {
        // Before the work under way is told, or it might end and the next begin.
        const std::lock_guard guard(m_lock);
        m_takesWork = false;
        dropped.swap(m_work);
    }
    m_end.request_stop();
    if (m_thread.joinable())
        m_thread.join();
}

void BackgroundWorker::post(std::function<void()> work)
{
    const std::lock_guard guard(m_lock);
    if (!m_takesWork)
        return;
    m_work.push_back(std::move(work));
    if (std::exchange(m_runs, true))
        return;
    // One that has run out of work is only left to be cleared away.
    if (m_thread.joinable())
        m_thread.join();
    m_thread = std::thread([this] { run(); });
}

void BackgroundWorker::wait()
{
    std::promise<void> done;
    post([&done] { done.set_value(); });
    done.get_future().wait();
}

void BackgroundWorker::run()
{
    std::unique_lock guard(m_lock);
    while (!m_work.empty()) {
        auto work = std::move(m_work.front());
        m_work.pop_front();
        guard.unlock();
        work();
        work = nullptr;
        guard.lock();
    }
    m_runs = false;
}

} // namespace tirlo
