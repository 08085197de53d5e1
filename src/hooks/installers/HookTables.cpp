#include "HookTables.h"

#include "core/Paths.h"

using namespace Qt::StringLiterals;

namespace tirlo {

namespace {

struct Entry
{
    QString command;
    /// In the agent's own unit.
    int timeout;
    QString matcher = {};
    QString statusMessage = {};
};

HookGroup hookGroup(const char *key, const Entry &entry)
{
    JsonObject hook{{u"type"_s, {u"command"_s}},
                    {u"command"_s, {entry.command}},
                    {u"timeout"_s, {JsonNumber{QString::number(entry.timeout)}}}};
    if (!entry.statusMessage.isEmpty())
        hook.insert(u"statusMessage"_s, {entry.statusMessage});
    JsonObject group{{u"hooks"_s, arrayOf({hook})}};
    if (!entry.matcher.isEmpty())
        group.insert(u"matcher"_s, {entry.matcher});
    return {QString::fromLatin1(key), group};
}

/// The script's path as one word of a shell's command line, whatever the home is called.
QString quotedScript(const Paths &paths)
{
    QString quoted;
    for (const QChar character : paths.hookScriptPath()) {
        if (u"\"\\$`"_s.contains(character))
            quoted += u'\\';
        quoted += character;
    }
    return u'"' + quoted + u'"';
}

/// The command line for one agent, which the script is told the name of.
QString taggedCommand(const Paths &paths, const QString &agent)
{
    return u"/bin/sh "_s + quotedScript(paths) + u" --agent "_s + agent;
}

} // namespace

std::vector<HookGroup> HookTables::claude(const Paths &paths)
{
    std::vector<HookGroup> groups;
    const auto add = [&](const char *event, int timeout = 10) {
        groups.push_back(hookGroup(event, {.command = quotedScript(paths), .timeout = timeout}));
    };
    for (const char *event : {"SessionStart", "SessionEnd", "UserPromptSubmit", "PreToolUse",
                              "PostToolUse", "PostToolUseFailure"})
        add(event);
    // The user may take a while to answer.
    add("PermissionRequest", 120);
    for (const char *event :
         {"Notification", "Stop", "StopFailure", "SubagentStart", "SubagentStop"})
        add(event);
    return groups;
}

std::vector<HookGroup> HookTables::gemini(const Paths &paths)
{
    struct Row
    {
        const char *key;
        const char *canonicalName;
        int milliseconds;
    };
    static constexpr Row rows[]{
        {"SessionStart", "SessionStart", 10000},   {"SessionEnd", "SessionEnd", 10000},
        {"BeforeTool", "PreToolUse", 5000},        {"AfterTool", "PostToolUse", 5000},
        {"BeforeAgent", "UserPromptSubmit", 5000}, {"AfterAgent", "Stop", 5000},
    };
    std::vector<HookGroup> groups;
    for (const Row &row : rows)
        groups.push_back(hookGroup(row.key,
                                   {.command = taggedCommand(paths, u"gemini"_s) + u' '
                                        + QString::fromLatin1(row.canonicalName),
                                    .timeout = row.milliseconds,
                                    .matcher = u"*"_s}));
    return groups;
}

std::vector<HookGroup> HookTables::antigravity(const Paths &paths)
{
    std::vector<HookGroup> groups;
    const auto add = [&](const char *key, const QString &matcher = {}) {
        groups.push_back(hookGroup(
            key,
            {.command = taggedCommand(paths, u"antigravity"_s) + u' ' + QString::fromLatin1(key),
             .timeout = 10,
             .matcher = matcher}));
    };
    add("PreToolUse", u"*"_s);
    add("PostToolUse", u"*"_s);
    for (const char *key : {"PreInvocation", "PostInvocation", "Stop"})
        add(key);
    return groups;
}

std::vector<HookGroup> HookTables::codex(const Paths &paths)
{
    std::vector<HookGroup> groups;
    const auto add = [&](const char *key, int timeout, const QString &statusMessage = {}) {
        groups.push_back(hookGroup(key,
                                   {.command = taggedCommand(paths, u"codex"_s),
                                    .timeout = timeout,
                                    .statusMessage = statusMessage}));
    };
    for (const char *key : {"SessionStart", "UserPromptSubmit", "PreToolUse"})
        add(key, 10);
    add("PermissionRequest", 120, u"Waiting for your answer in the notch (Tirlo)"_s);
    for (const char *key : {"PostToolUse", "Stop", "SubagentStart", "SubagentStop"})
        add(key, 10);
    add("Interrupt", 3);
    add("SessionEnd", 3);
    return groups;
}

} // namespace tirlo
