#include "BackgroundWorker.h"

#include <utility>

namespace tirlo {

BackgroundWorker::~BackgroundWorker()
{
    if (m_thread.joinable())
        m_thread.join();
}

void BackgroundWorker::post(std::function<void()> work)
{
    const std::lock_guard guard(m_lock);
    m_work.push_back(std::move(work));
    if (std::exchange(m_runs, true))
        return;
    // One that has run out of work is only left to be cleared away.
    if (m_thread.joinable())
        m_thread.join();
    m_thread = std::thread([this] { run(); });
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
