#pragma once

#include "PillCatalog.h"

#include <array>
#include <cstddef>

namespace tirlo {

/// The agents that the program knows by name, in the order of their pills.
enum class AgentId { claudeCode, cursor, antigravity, codex, gemini };

/// All that sets one agent apart from the others.
struct AgentDefinition
{
    AgentId id = {};
    /// The agent's own name; its pill bears the name of where it is met.
    QLatin1String name;
    PillDefinition pill;

    /// What its hooks tell the relay with --agent; "" for hooks that are known by their host.
    QLatin1String tag = {};
    /// A word, in lower case, by which the terminal or the host of such hooks gives it away.
    QLatin1String hostWord = {};

    /// Its requests get a card, and its pill shows the project. Any other asks by itself and is
    /// shown as an agent from outside.
    bool answersOnIsland = false;
    /// It fires no hook for some ends of a turn, which its user broke off or its service refused.
    /// Its own account of the session tells them.
    bool endsInSilence = false;
    /// It can take an approval as a standing one.
    bool keepsStandingApprovals = false;

    /// Its settings file under the home directory, for our hooks; "" for an agent without.
    QLatin1String settingsPath = {};
    /// New hooks only run once the user has trusted them in the agent.
    bool wantsTrustInHooks = false;

    /// Bundle identifier of the application it lives in; "" for one that lives in a terminal.
    QLatin1String application = {};
};

/// One row an agent: whatever differs between agents stands here.
namespace AgentCatalog {

inline constexpr std::array all{
    AgentDefinition{
        .id = AgentId::claudeCode,
        .name = QLatin1String("Claude Code"),
        .pill = {.id = QLatin1String("integration_claude"),
                 .name = QLatin1String("VS Code"),
                 .color = QLatin1String("#F5F6F8"),
                 .category = PillCategory::workspace,
                 .subtitle = QLatin1String("Integration"),
                 .source = AgentSource::claudeCode},
        .hostWord = QLatin1String("vscode"),
        .answersOnIsland = true,
        .endsInSilence = true,
        .keepsStandingApprovals = true,
        .settingsPath = QLatin1String(".claude/settings.json"),
        .application = QLatin1String("com.microsoft.VSCode"),
    },
    AgentDefinition{
        .id = AgentId::cursor,
        .name = QLatin1String("Cursor"),
        .pill = {.id = QLatin1String("agent_cursor"),
                 .name = QLatin1String("Cursor"),
                 .color = QLatin1String("#C0C4CC"),
                 .category = PillCategory::workspace,
                 .subtitle = QLatin1String("Integration")},
        .answersOnIsland = true,
        .endsInSilence = true,
        .keepsStandingApprovals = true,
        .application = QLatin1String("com.todesktop.230313mzl4w4u92"),
    },
    AgentDefinition{
        .id = AgentId::antigravity,
        .name = QLatin1String("Antigravity"),
        .pill = {.id = QLatin1String("agent_antigravity"),
                 .name = QLatin1String("Antigravity"),
                 .color = QLatin1String("#E879F9"),
                 .category = PillCategory::workspace,
                 .subtitle = QLatin1String("Integration"),
                 .githubOnly = true},
        .tag = QLatin1String("antigravity"),
        .settingsPath = QLatin1String(".gemini/config/hooks.json"),
    },
    AgentDefinition{
        .id = AgentId::codex,
        .name = QLatin1String("Codex"),
        .pill = {.id = QLatin1String("agent_codex"),
                 .name = QLatin1String("Codex"),
                 .color = QLatin1String("#2DD4BF"),
                 .category = PillCategory::workspace,
                 .subtitle = QLatin1String("Integration"),
                 .githubOnly = true},
        .tag = QLatin1String("codex"),
        .answersOnIsland = true,
        .endsInSilence = true,
        .settingsPath = QLatin1String(".codex/hooks.json"),
        .wantsTrustInHooks = true,
        .application = QLatin1String("com.openai.codex"),
    },
    AgentDefinition{
        .id = AgentId::gemini,
        .name = QLatin1String("Gemini CLI"),
        .pill = {.id = QLatin1String("agent_gemini"),
                 .name = QLatin1String("Gemini CLI"),
                 .color = QLatin1String("#8AB4F8"),
                 .category = PillCategory::agent,
                 .subtitle = QLatin1String("Agent"),
                 .githubOnly = true},
        .tag = QLatin1String("gemini"),
        .endsInSilence = true,
        .settingsPath = QLatin1String(".gemini/settings.json"),
    },
};

/// The row of that agent.
[[nodiscard]] constexpr const AgentDefinition &definition(AgentId id)
{
    return all[std::size_t(id)];
}

/// The id of that agent's pill.
[[nodiscard]] constexpr QLatin1String pillId(AgentId id)
{
    return definition(id).pill.id;
}

/// The agent whose pill this is, or null.
[[nodiscard]] const AgentDefinition *ofPill(const QString &pillId);

/// The agent whose hooks have this tag, or null.
[[nodiscard]] const AgentDefinition *ofTag(const QString &tag);

} // namespace AgentCatalog

} // namespace tirlo
