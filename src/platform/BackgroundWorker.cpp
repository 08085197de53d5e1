#include "BackgroundWorker.h"

#include <utility>

namespace tirlo {

BackgroundWorker::~BackgroundWorker()
{
    {
        const std::lock_guard guard(m_lock);
        m_ends = true;
    }
    m_changed.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

void BackgroundWorker::post(std::function<void()> work)
{
    {
        const std::lock_guard guard(m_lock);
        m_work.push_back(std::move(work));
        if (!m_thread.joinable())
            m_thread = std::thread([this] { run(); });
    }
    m_changed.notify_one();
}

void BackgroundWorker::run()
{
    std::unique_lock guard(m_lock);
    for (;;) {
        m_changed.wait(guard, [this] { return m_ends || !m_work.empty(); });
        if (m_work.empty())
            return;
        auto work = std::move(m_work.front());
        m_work.pop_front();
        guard.unlock();
        work();
        work = nullptr;
        guard.lock();
    }
}

} // namespace tirlo
