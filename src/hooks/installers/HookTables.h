#pragma once

#include "core/json/JsonNode.h"

#include <QString>

#include <span>
#include <vector>

namespace tirlo {

/// Our hook under one event of an agent's settings; "" stands for what the agent has no use for.
struct HookRow
{
    /// The event as the agent names it.
    const char *key;
    /// In the agent's own unit.
    int timeout;
    /// What the command line tells the script of the event.
    const char *argument = "";
    const char *matcher = "";
    const char *statusMessage = "";
};

/// What wires one agent to the hook script.
struct HookTable
{
    /// What the command lines tell the script of the agent; "" when they are the script alone.
    const char *tag;
    std::span<const HookRow> rows;
};

/// A list of hooks under one event of an agent's settings.
struct HookGroup
{
    QString key;
    /// What stands in the event's list.
    JsonObject group;
};

/// The tables of all agents.
namespace HookTables {

extern const HookTable claude;
extern const HookTable gemini;
extern const HookTable antigravity;
extern const HookTable codex;

/// The groups of a table, one an event, which run the script of that path.
[[nodiscard]] std::vector<HookGroup> groupsOf(const HookTable &table, const QString &scriptPath);

} // namespace HookTables

} // namespace tirlo
