#pragma once

#include "core/json/JsonNode.h"

#include <QString>

#include <functional>

/// Finding and removing our entries in the lists of hooks of an agent's settings.
namespace tirlo::HookEntries {

/// Where the settings keep the lists by event, and a group in such a list its entries.
inline const QString hooksKey = QStringLiteral("hooks");

/// Decides on an entry, or on a group of them.
using Test = std::function<bool(const JsonObject &entry)>;

/// The object under "hooks"; null when there is anything else.
[[nodiscard]] const JsonObject *hooksOf(const JsonObject &settings);

/// The entry's command line; "" when it has none.
[[nodiscard]] QString commandOf(const JsonObject &entry);

/// True when an entry of the group is such a one.
[[nodiscard]] bool groupHas(const JsonObject &group, const Test &entryTest);

/// True when something in the list of any event is such a one.
[[nodiscard]] bool anyHas(const JsonObject &hooks, const Test &groupTest);

/// Changes every list of groups, whatever its event; a list that is empty then goes.
void changeLists(JsonObject &hooks,
                 const std::function<QList<JsonObject>(const QList<JsonObject> &)> &change);

/// The groups without the entries that run the hook script, and without groups left empty by that.
///
/// Foreign entries of a shared group stay, and so do groups of an unknown form.
[[nodiscard]] QList<JsonObject> removeQvHookEntries(const QList<JsonObject> &groups);

} // namespace tirlo::HookEntries
