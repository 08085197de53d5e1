#pragma once

#include "platform/MainQueue.h"

#include <mutex>
#include <vector>

namespace tirlo {

/// A main queue whose time stands still until a test moves it; it makes no use of slack.
class ManualQueue final : public MainQueue
{
public:
    [[nodiscard]] double mediaTime() const override { return m_now; }
    [[nodiscard]] double timeAsleep() const override { return m_asleep; }
    [[nodiscard]] QDateTime wallClock() const override;
    void post(std::function<void()> work) override;

    /// Moves time on and runs all that falls due, in the order of time; posted work runs first.
    void advance(double seconds);

    /// Lets the machine sleep: the date goes on, while media time and what waits for it stand
    /// still.
    void sleep(double seconds) { m_asleep += seconds; }

    /// Runs what was posted, and what that posts, without moving time.
    void drain();

    /// Sets what wallClock() says at media time 0.
    void setWallClock(const QDateTime &time) { m_epoch = time; }

protected:
    void schedule(double seconds, double slack, std::function<void()> fire) override;

private:
    struct Due
    {
        double time;
        std::function<void()> fire;
    };

    double m_now = 0;
    double m_asleep = 0;
    QDateTime m_epoch{QDate(2026, 3, 14), QTime(9, 26, 53)};
    std::vector<Due> m_due;
    std::mutex m_lock;
    std::vector<std::function<void()>> m_posted;
};

} // namespace tirlo
