#pragma once

#include "hooks/Peer.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>

namespace tirlo::soak {

/// One event of an agent as its relay sends it; `tag` is what the relay was told with --agent.
inline QByteArray eventLine(const char *event, const char *tag, const char *session,
                            const char *bundle = "")
{
    const QJsonObject payload{
        {"hook_event_name", event},
        {"session_id", session},
        {"cwd", QString("/src/lighthouse-") + tag},
        {"tirlo_agent", tag},
        {"term_program", "vscode"},
        {"bundle_id", bundle},
        {"tool_name", "Bash"},
        {"tool_input", QJsonObject{{"command", "make -C lamp release"}}},
        {"prompt", "Light the lamp, and see to it that it turns"},
        {"message", "Shall the fog horn sound as well?"},
    };
    return QJsonDocument(payload).toJson(QJsonDocument::Compact) + '\n';
}

/// Eight agents that send 200 events a second straight to the socket, as their relays do.
///
/// The load begins at once and ends with stop(); a thread of its own makes it.
class EventLoad
{
public:
    EventLoad(QString socketPath, unsigned seed)
        : m_socketPath(std::move(socketPath))
        , m_random(seed)
    {
    }
    ~EventLoad() { stop(); }

    void stop()
    {
        m_stops = true;
        if (m_thread.joinable())
            m_thread.join();
    }

    // What came of it; for use after stop().
    int answered = 0;
    /// Of the answered ones, those that took more than 0.3 seconds.
    int late = 0;
    int unanswered = 0;

private:
    void run()
    {
        for (auto next = std::chrono::steady_clock::now(); !m_stops;
             std::this_thread::sleep_until(next)) {
            sendOne();
            next += std::chrono::milliseconds(5);
        }
    }

    void sendOne()
    {
        // Two of the island's own and six from outside.
        constexpr const char *tags[]
            = {"", "codex", "gemini", "antigravity", "heron", "otter", "plover", "seal"};
        // Tools run most of the time, sessions come and go seldom.
        constexpr const char *events[] = {"SubagentStart", "PostToolUseFailure", "SubagentStop",
                                          "Notification",  "UserPromptSubmit",   "Stop",
                                          "SessionStart",  "StopFailure",        "Interrupt",
                                          "SessionEnd"};
        const std::size_t pick = m_random() % 20;
        const char *event = pick < std::size(events) ? events[pick]
            : pick % 2                               ? "PostToolUse"
                                                     : "PreToolUse";
        const QByteArray line = eventLine(event, tags[m_random() % std::size(tags)], "busy");
        QElapsedTimer clock;
        clock.start();
        const bool isAnswered
            = Peer::connectedTo(m_socketPath).send(line).receiveAll(5000) == "{\"ok\":true}\n";
        ++(isAnswered ? answered : unanswered);
        late += isAnswered && clock.elapsed() > 300 ? 1 : 0;
    }

    const QString m_socketPath;
    std::mt19937 m_random;
    std::atomic<bool> m_stops = false;
    std::thread m_thread{[this] { run(); }};
};

} // namespace tirlo::soak
