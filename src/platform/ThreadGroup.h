#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>

namespace tirlo {

/// Short threads that do one piece of work each and are waited for at the end.
class ThreadGroup
{
public:
    ThreadGroup() = default;
    ThreadGroup(const ThreadGroup &) = delete;
    ThreadGroup &operator=(const ThreadGroup &) = delete;
    /// Waits for all work.
    ~ThreadGroup();

    /// Does the work on a thread of its own; on this one if no other is to be had.
    void start(std::function<void()> work);

    /// Waits until all work that was started is done.
    void wait();

private:
    void run(std::function<void()> work);

    std::mutex m_lock;
    /// Threads that have not ended; guarded by the lock.
    int m_count = 0;
    std::condition_variable m_ended;
};

} // namespace tirlo
