#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace tirlo {

/// One thread that does pieces of work in the order they were given; it starts with the first.
class BackgroundWorker
{
public:
    BackgroundWorker() = default;
    BackgroundWorker(const BackgroundWorker &) = delete;
    BackgroundWorker &operator=(const BackgroundWorker &) = delete;
    /// Does what is left and waits for it.
    ~BackgroundWorker();

    /// Does the work on the thread, after all that was given before; callable from any thread.
    void post(std::function<void()> work);

private:
    void run();

    std::mutex m_lock;
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_work;
    bool m_ends = false;
    std::thread m_thread;
};

} // namespace tirlo
