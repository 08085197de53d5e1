#pragma once

#include <QJsonDocument>
#include <QJsonObject>

#include <random>

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

/// What eight agents at work send: the event of that number, the same at each run with the seed.
inline QByteArray busyLine(unsigned seed, int number)
{
    // Two of the island's own and six from outside.
    constexpr const char *tags[]
        = {"", "codex", "gemini", "antigravity", "heron", "otter", "plover", "seal"};
    // Tools run most of the time, sessions come and go seldom.
    constexpr const char *events[] = {
        "SubagentStart", "PostToolUseFailure", "SubagentStop", "Notification", "UserPromptSubmit",
        "Stop",          "SessionStart",       "StopFailure",  "Interrupt",    "SessionEnd"};
    std::mt19937 random(seed + unsigned(number));
    const std::size_t pick = random() % 20;
    const char *event = pick < std::size(events) ? events[pick]
        : pick % 2                               ? "PostToolUse"
                                                 : "PreToolUse";
    return eventLine(event, tags[random() % std::size(tags)], "busy");
}

} // namespace tirlo::soak
