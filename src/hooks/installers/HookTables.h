#pragma once

#include "JsonNode.h"

#include <QString>

#include <vector>

namespace tirlo {

class Paths;

/// A list of hooks under one event of an agent's settings.
struct HookGroup
{
    /// The event as the agent names it.
    QString key;
    /// What stands in the event's list.
    JsonObject group;
};

/// The groups that wire each agent to the hook script, one an event.
namespace HookTables {

[[nodiscard]] std::vector<HookGroup> claude(const Paths &paths);
[[nodiscard]] std::vector<HookGroup> gemini(const Paths &paths);
[[nodiscard]] std::vector<HookGroup> antigravity(const Paths &paths);
[[nodiscard]] std::vector<HookGroup> codex(const Paths &paths);

} // namespace HookTables

} // namespace tirlo
