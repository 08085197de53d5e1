#pragma once

#include "JsonNode.h"

#include <functional>

/// Finding and removing our entries in the lists of hooks of an agent's settings.
namespace tirlo::HookEntries {

/// Decides on the command line of an entry.
using CommandTest = std::function<bool(const QString &command)>;

/// True when a hook of the group has such a command.
[[nodiscard]] bool groupHas(const JsonObject &group, const CommandTest &test);

/// True when some hook under any event has such a command.
[[nodiscard]] bool anyHas(const JsonObject &hooks, const CommandTest &test);

/// Changes every list of groups, whatever its event; a list that is empty then goes.
void changeLists(JsonObject &hooks,
                 const std::function<QList<JsonObject>(const QList<JsonObject> &)> &change);

/// The groups without the entries that run the hook script, and without groups left empty by that.
///
/// Foreign entries of a shared group stay, and so do groups of an unknown form.
[[nodiscard]] QList<JsonObject> removeQvHookEntries(const QList<JsonObject> &groups);

} // namespace tirlo::HookEntries
