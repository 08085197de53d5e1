#include "ThreadGroup.h"

#include <system_error>
#include <thread>
#include <utility>

namespace tirlo {

ThreadGroup::~ThreadGroup()
{
    wait();
}

void ThreadGroup::start(std::function<void()> work)
{
    {
        const std::lock_guard guard(m_lock);
        ++m_count;
    }
    try {
        std::thread([this, work]() mutable { run(std::move(work)); }).detach();
    } catch (const std::system_error &) {
        run(std::move(work));
    }
}

void ThreadGroup::wait()
{
    std::unique_lock guard(m_lock);
    m_ended.wait(guard, [this] { return m_count == 0; });
}

void ThreadGroup::run(std::function<void()> work)
{
    work();
    work = nullptr;

    // Told while the lock is held: once it is free the group may be gone.
    const std::lock_guard guard(m_lock);
    --m_count;
    m_ended.notify_all();
}

} // namespace tirlo
