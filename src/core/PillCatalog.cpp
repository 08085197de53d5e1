#include "PillCatalog.h"

#include "AgentCatalog.h"

#include <algorithm>

namespace tirlo::PillCatalog {

namespace {

constexpr PillDefinition provider(const char *id, const char *name, const char *color)
{
    return {.id = QLatin1String(id),
            .name = QLatin1String(name),
            .color = QLatin1String(color),
            .category = PillCategory::ai,
            .subtitle = QLatin1String("Chat"),
            .source = AgentSource::n8n};
}

constexpr PillDefinition service(const char *id, const char *name, const char *color)
{
    return {.id = QLatin1String(id),
            .name = QLatin1String(name),
            .color = QLatin1String(color),
            .category = PillCategory::service,
            .subtitle = QLatin1String("Integration"),
            .source = AgentSource::n8n};
}

constexpr std::array others{
    provider("ai_anthropic", "Anthropic", "#E07950"),
    provider("ai_google", "Google AI", "#4285F4"),
    provider("ai_openai", "OpenAI", "#10A37F"),
    service("integration_resend", "Resend", "#22C55E"),
    service("integration_n8n", "n8n", "#F29B38"),
    service("integration_vercel", "Vercel", "#7C5CFF"),
    service("integration_github", "GitHub", "#F4505E"),
    service("integration_notion", "Notion", "#8C8C8C"),
    service("integration_calcom", "Cal.com", "#C9956A"),
    service("integration_stripe", "Stripe", "#0570DE"),
};

constexpr auto rows = [] {
    std::array<PillDefinition, AgentCatalog::all.size() + others.size()> joined;
    const auto next
        = std::ranges::transform(AgentCatalog::all, joined.begin(), &AgentDefinition::pill).out;
    std::ranges::copy(others, next);
    return joined;
}();

} // namespace

std::span<const PillDefinition> all()
{
    return rows;
}

const PillDefinition *definition(const QString &id)
{
    const auto found
        = std::ranges::find_if(rows, [&id](const PillDefinition &row) { return row.id == id; });
    return found == rows.end() ? nullptr : &*found;
}

bool canBeMainPill(const QString &id)
{
    const PillDefinition *found = definition(id);
    return found && found->category == PillCategory::workspace && !found->comingSoon;
}

} // namespace tirlo::PillCatalog
