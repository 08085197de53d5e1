#pragma once

#include "MainQueue.h"

#include <QPointer>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>
#include <utility>

namespace tirlo {

/// Does pieces of work one after the other on a thread, which is there only while there is work.
class BackgroundWorker
{
public:
    /// What becomes of the work that waits when the worker goes.
    enum class AtEnd { drop, finish };

    explicit BackgroundWorker(AtEnd atEnd = AtEnd::drop);
    BackgroundWorker(const BackgroundWorker &) = delete;
    BackgroundWorker &operator=(const BackgroundWorker &) = delete;
    /// Waits for the piece of work under way, and for all others where they are to be finished.
    ~BackgroundWorker();

    /// Does the work after all that was given before; callable from any thread.
    void post(std::function<void()> work);

    /// Waits until all work that was given before is done.
    void wait();

    /// Does the work and hands its result to `then` on the main thread, unless the owner has gone.
    template<typename Work, typename Then>
    void post(MainQueue &queue, const QObject *owner, Work work, Then then)
    {
        post([&queue, guard = QPointer(owner), work = std::move(work), then = std::move(then)] {
            queue.post([guard, then, result = std::make_shared<decltype(work())>(work())] {
                if (guard)
                    then(*result);
            });
        });
    }

    /// Does the work at once if it reads no more bytes than are read well within the time of a
    /// frame, else in the background; `then` gets the result on the main thread, which calls this.
    template<typename Work, typename Then>
    void postIfLong(MainQueue &queue, const QObject *owner, qsizetype bytes, Work work, Then then)
    {
        if (bytes <= shortInput)
            then(work());
        else
            post(queue, owner, std::move(work), std::move(then));
    }

    /// Tells long work that the worker is going and waits for it.
    [[nodiscard]] std::stop_token stopToken() const { return m_end.get_token(); }

private:
    static constexpr qsizetype shortInput = 128 * 1024;

    void run();

    const AtEnd m_atEnd;
    std::stop_source m_end;
    std::mutex m_lock;
    std::deque<std::function<void()>> m_work;
    bool m_takesWork = true;
    /// True while the thread still looks for work.
    bool m_runs = false;
    std::thread m_thread;
};

} // namespace tirlo
