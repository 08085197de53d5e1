#pragma once

#include "core/AgentCatalog.h"
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

/// How an agent's file keeps hooks.
enum class HookForm {
    /// Lists by event under "hooks", in a file that is replaced when it's broken.
    unguardedLists,
    /// The same in a file that is left alone when it's not understood.
    lists,
    /// All that is ours in one block of its own.
    block,
};

/// What wires one agent to the hook script.
struct HookTable
{
    AgentId agent;
    HookForm form;
    std::span<const HookRow> rows;
};

/// A list of hooks under one event of an agent's settings.
struct HookGroup
{
    QString key;
    /// What stands in the event's list.
    JsonObject group;
};

/// The tables of all agents that have a settings file.
namespace HookTables {

/// All tables, in the order in which the agents are offered.
[[nodiscard]] std::span<const HookTable> all();

/// The table of an agent that has a settings file.
[[nodiscard]] const HookTable &of(AgentId agent);

/// The groups of a table, one an event; they run the script that the word of a command line names.
[[nodiscard]] std::vector<HookGroup> groupsOf(const HookTable &table, const QString &scriptWord);

} // namespace HookTables

} // namespace tirlo
