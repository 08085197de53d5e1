#pragma once

#include "model/AgentTask.h"
#include "model/RawText.h"

#include <QLatin1String>
#include <QString>

#include <array>
#include <span>

namespace tirlo {

/// The group of a catalogue row in the settings.
enum class PillCategory { workspace, agent, ai, service };

template<>
struct RawTexts<PillCategory>
{
    static constexpr std::array texts{
        QLatin1String("workspace"),
        QLatin1String("agent"),
        QLatin1String("ai"),
        QLatin1String("service"),
    };
};

/// One tool that the program knows by name.
struct PillDefinition
{
    /// The pill's id; also its task's.
    QLatin1String id;
    QLatin1String name;
    /// "#" and six hexadecimal digits.
    QLatin1String color;
    PillCategory category = PillCategory::service;
    /// Secondary line in the settings.
    QLatin1String subtitle;
    AgentSource source = AgentSource::agent;
    /// Not choosable as the main pill.
    bool comingSoon = false;
    bool githubOnly = false;
};

/// The fixed list of tools that can have a pill beside the ad-hoc ones of outside agents: the
/// agents, then the chat's providers and the services.
namespace PillCatalog {

/// All rows; their order is also the order of the pills.
[[nodiscard]] std::span<const PillDefinition> all();

/// The row with this id, or null.
[[nodiscard]] const PillDefinition *definition(const QString &id);

/// True when the id names a row that may be the main pill: a workspace that is not coming soon.
[[nodiscard]] bool canBeMainPill(const QString &id);

} // namespace PillCatalog

} // namespace tirlo
