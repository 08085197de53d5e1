#include "HookTables.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tirlo {

namespace {

/// Seconds for an agent that waits for the user, who may take a while.
constexpr int answerTimeout = 120;

constexpr HookRow claudeRows[]{
    {"SessionStart", 10},
    {"SessionEnd", 10},
    {"UserPromptSubmit", 10},
    {"PreToolUse", 10},
    {"PostToolUse", 10},
    {"PostToolUseFailure", 10},
    {"PermissionRequest", answerTimeout},
    {"Notification", 10},
    {"Stop", 10},
    {"StopFailure", 10},
    {"SubagentStart", 10},
    {"SubagentStop", 10},
    {"PreCompact", 10},
};

/// In milliseconds.
constexpr HookRow geminiRows[]{
    {"SessionStart", 10000, "SessionStart", "*"},   {"SessionEnd", 10000, "SessionEnd", "*"},
    {"BeforeTool", 5000, "PreToolUse", "*"},        {"AfterTool", 5000, "PostToolUse", "*"},
    {"BeforeAgent", 5000, "UserPromptSubmit", "*"}, {"AfterAgent", 5000, "Stop", "*"},
    {"Notification", 5000, "Notification", "*"},
};

constexpr HookRow antigravityRows[]{
    {"PreToolUse", 10, "PreToolUse", "*"},
    {"PostToolUse", 10, "PostToolUse", "*"},
    {"PreInvocation", 10, "PreInvocation"},
    {"PostInvocation", 10, "PostInvocation"},
    {"Stop", 10, "Stop"},
};

constexpr HookRow codexRows[]{
    {"SessionStart", 10},
    {"UserPromptSubmit", 10},
    {"PreToolUse", 10},
    {"PermissionRequest", answerTimeout, "", "", "Waiting for your answer in the notch (Tirlo)"},
    {"PostToolUse", 10},
    {"Stop", 10},
    {"SubagentStart", 10},
    {"SubagentStop", 10},
    {"Interrupt", 3},
    {"SessionEnd", 3},
};

constexpr std::array tables{
    HookTable{AgentId::claudeCode, HookForm::unguardedLists, claudeRows},
    HookTable{AgentId::gemini, HookForm::lists, geminiRows},
    HookTable{AgentId::antigravity, HookForm::block, antigravityRows},
    HookTable{AgentId::codex, HookForm::lists, codexRows},
};

/// True when every agent with a settings file has one table, and no other agent any.
constexpr bool areComplete()
{
    return std::ranges::all_of(AgentCatalog::all, [](const AgentDefinition &agent) {
        return std::ranges::count(tables, agent.id, &HookTable::agent)
            == (agent.settingsPath.isEmpty() ? 0 : 1);
    });
}
static_assert(areComplete());

QString commandOf(const HookTable &table, const HookRow &row, const QString &scriptWord)
{
    const QString tag = AgentCatalog::definition(table.agent).tag;
    if (tag.isEmpty())
        return scriptWord;
    const QString command = u"/bin/sh "_s + scriptWord + u" --agent "_s + tag;
    const QString argument = QString::fromLatin1(row.argument);
    return argument.isEmpty() ? command : command + u' ' + argument;
}

/// Adds the member, unless it has no text.
void insertText(JsonObject &object, const QString &key, const char *text)
{
    if (*text)
        object.insert(key, {QString::fromLatin1(text)});
}

} // namespace

std::span<const HookTable> HookTables::all()
{
    return tables;
}

const HookTable &HookTables::of(AgentId agent)
{
    return *std::ranges::find(tables, agent, &HookTable::agent);
}

std::vector<HookGroup> HookTables::groupsOf(const HookTable &table, const QString &scriptWord)
{
    std::vector<HookGroup> groups;
    for (const HookRow &row : table.rows) {
        JsonObject hook{{u"type"_s, {u"command"_s}},
                        {u"command"_s, {commandOf(table, row, scriptWord)}},
                        {u"timeout"_s, {JsonNumber{QString::number(row.timeout)}}}};
        insertText(hook, u"statusMessage"_s, row.statusMessage);
        JsonObject group{{u"hooks"_s, arrayOf({hook})}};
        insertText(group, u"matcher"_s, row.matcher);
        groups.push_back({QString::fromLatin1(row.key), group});
    }
    return groups;
}

} // namespace tirlo
