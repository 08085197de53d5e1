#include "EventLoad.h"

#include "hooks/Peer.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <chrono>
#include <utility>

namespace tirlo::soak {

namespace {

constexpr auto pause = std::chrono::microseconds(5000); // 200 a second
constexpr int patience = 5000;

/// Two of the island's own and six from outside.
constexpr std::array tags{"", "codex", "gemini", "antigravity", "heron", "otter", "plover", "seal"};

/// Tools run most of the time, sessions come and go seldom.
constexpr std::array weighted{
    "PreToolUse",   "PostToolUse",   "PreToolUse",         "PostToolUse", "PreToolUse",
    "PostToolUse",  "SubagentStart", "PostToolUseFailure", "PreToolUse",  "SubagentStop",
    "PreToolUse",   "Notification",  "UserPromptSubmit",   "PostToolUse", "Stop",
    "SessionStart", "StopFailure",   "Interrupt",          "SessionEnd",  "PreToolUse",
};

} // namespace

QByteArray eventLine(const char *event, const char *tag, const char *session, const char *bundle)
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

EventLoad::EventLoad(QString socketPath, unsigned seed)
    : m_socketPath(std::move(socketPath))
    , m_random(seed)
    , m_thread([this] { run(); })
{
}

void EventLoad::stop()
{
    m_stops = true;
    if (m_thread.joinable())
        m_thread.join();
}

void EventLoad::run()
{
    auto next = std::chrono::steady_clock::now();
    while (!m_stops) {
        sendOne();
        next += pause;
        std::this_thread::sleep_until(next);
    }
}

void EventLoad::sendOne()
{
    const QByteArray line
        = eventLine(weighted[m_random() % weighted.size()], tags[m_random() % tags.size()], "busy");
    QElapsedTimer clock;
    clock.start();
    if (Peer::connectedTo(m_socketPath).send(line).receiveAll(patience) == "{\"ok\":true}\n")
        m_replySeconds.push_back(double(clock.nsecsElapsed()) * 1e-9);
    else
        ++m_unanswered;
}

} // namespace tirlo::soak
