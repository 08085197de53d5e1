#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace tirlo {

/// Does pieces of work one after the other on a thread, which is there only while there is work.
class BackgroundWorker
{
public:
    BackgroundWorker() = default;
    BackgroundWorker(const BackgroundWorker &) = delete;
    BackgroundWorker &operator=(const BackgroundWorker &) = delete;
    /// Waits until all work is done.
    ~BackgroundWorker();

    /// Does the work after all that was given before; callable from any thread.
    void post(std::function<void()> work);

private:
    void run();

    std::mutex m_lock;
    std::deque<std::function<void()>> m_work;
    /// True while the thread still looks for work.
    bool m_runs = false;
    std::thread m_thread;
};

} // namespace tirlo
