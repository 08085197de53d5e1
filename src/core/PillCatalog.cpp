#include "PillCatalog.h"

#include <algorithm>

namespace tirlo::PillCatalog {

namespace {

PillDefinition row(const char *id, const char *name, const char *color, PillCategory category,
                   const char *subtitle, AgentSource source, bool githubOnly = false)
{
    return {.id = QString::fromLatin1(id),
            .name = QString::fromLatin1(name),
            .color = QString::fromLatin1(color),
            .category = category,
            .subtitle = QString::fromLatin1(subtitle),
            .source = source,
            .comingSoon = false,
            .githubOnly = githubOnly};
}

} // namespace

const std::array<PillDefinition, 15> &all()
{
    using enum PillCategory;
    using Source = AgentSource;
    static const std::array<PillDefinition, 15> rows{
        row("integration_claude", "VS Code", "#F5F6F8", workspace, "Integration",
            Source::claudeCode),
        row("agent_cursor", "Cursor", "#C0C4CC", workspace, "Integration", Source::agent),
        row("agent_antigravity", "Antigravity", "#E879F9", workspace, "Integration", Source::agent,
            true),
        row("agent_codex", "Codex", "#2DD4BF", workspace, "Integration", Source::agent, true),
        row("agent_gemini", "Gemini CLI", "#8AB4F8", agent, "Agent", Source::agent, true),
        row("ai_anthropic", "Anthropic", "#E07950", ai, "Chat", Source::n8n),
        row("ai_google", "Google AI", "#4285F4", ai, "Chat", Source::n8n),
        row("ai_openai", "OpenAI", "#10A37F", ai, "Chat", Source::n8n),
        row("integration_resend", "Resend", "#22C55E", service, "Integration", Source::n8n),
        row("integration_n8n", "n8n", "#F29B38", service, "Integration", Source::n8n),
        row("integration_vercel", "Vercel", "#7C5CFF", service, "Integration", Source::n8n),
        row("integration_github", "GitHub", "#F4505E", service, "Integration", Source::n8n),
        row("integration_notion", "Notion", "#8C8C8C", service, "Integration", Source::n8n),
        row("integration_calcom", "Cal.com", "#C9956A", service, "Integration", Source::n8n),
        row("integration_stripe", "Stripe", "#0570DE", service, "Integration", Source::n8n),
    };
    return rows;
}

const PillDefinition *definition(const QString &id)
{
    const auto &rows = all();
    const auto found = std::ranges::find(rows, id, &PillDefinition::id);
    return found == rows.end() ? nullptr : &*found;
}

bool canBeMainPill(const QString &id)
{
    const PillDefinition *found = definition(id);
    return found && found->category == PillCategory::workspace && !found->comingSoon;
}

} // namespace tirlo::PillCatalog
