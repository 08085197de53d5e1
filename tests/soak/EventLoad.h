#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <random>
#include <thread>
#include <vector>

namespace tirlo::soak {

/// Eight agents that send their events straight to the socket, as their relays do, at a steady rate.
///
/// The load begins at once and ends with stop(); a thread of its own makes it.
class EventLoad
{
public:
    EventLoad(QString socketPath, unsigned seed);
    ~EventLoad() { stop(); }

    void stop();

    /// What came of it; for use after stop().
    [[nodiscard]] const std::vector<double> &replySeconds() const { return m_replySeconds; }
    [[nodiscard]] int unanswered() const { return m_unanswered; }

private:
    void run();
    void sendOne();

    const QString m_socketPath;
    std::mt19937 m_random;
    std::vector<double> m_replySeconds;
    int m_unanswered = 0;
    std::atomic<bool> m_stops = false;
    std::thread m_thread;
};

/// One event of an agent as its relay sends it; `tag` is what the relay was told with --agent.
[[nodiscard]] QByteArray eventLine(const char *event, const char *tag, const char *session,
                                   const char *bundle = "");

} // namespace tirlo::soak
