#include "ListedHooks.h"

#include "HookEntries.h"
#include "HookError.h"

using namespace Qt::StringLiterals;

namespace tirlo {

using HookEntries::hooksKey;

JsonObject ListedHooks::withHooks(JsonObject settings) const
{
    JsonObject hooks = hooksOf(settings);
    for (const HookGroup &ours : groups()) {
        const auto present = listOfObjects(hooks, ours.key);
        if (!present && hooks.contains(ours.key))
            throwUnexpectedType(u"\"hooks\"[\"%1\"]"_s.arg(ours.key));
        const QList<JsonObject> foreign
            = HookEntries::removeQvHookEntries(present.value_or(QList<JsonObject>()));
        hooks.insert(ours.key, arrayOf(QList(foreign) << ours.group));
    }
    settings.insert(hooksKey, {hooks});
    return settings;
}

JsonObject ListedHooks::withoutHooks(JsonObject settings) const
{
    JsonObject hooks = hooksOf(settings);
    HookEntries::changeLists(hooks, HookEntries::removeQvHookEntries);
    if (hooks.isEmpty())
        settings.remove(hooksKey);
    else
        settings.insert(hooksKey, {hooks});
    return settings;
}

bool ListedHooks::holdsHooks(const JsonObject &settings) const
{
    const QString tag = u"--agent "_s + agent().tag;
    const auto isOurs = [&](const JsonObject &entry) {
        const QString command = HookEntries::commandOf(entry);
        return command.contains(u"qv-hook"_s) && command.contains(tag);
    };
    const JsonObject *hooks = HookEntries::hooksOf(settings);
    // An entry may also stand in the list by itself, without a group around it.
    return hooks && HookEntries::anyHas(*hooks, [&](const JsonObject &group) {
               return isOurs(group) || HookEntries::groupHas(group, isOurs);
           });
}

JsonObject ListedHooks::hooksOf(const JsonObject &settings) const
{
    const JsonObject *hooks = HookEntries::hooksOf(settings);
    if (!hooks && settings.contains(hooksKey))
        throwUnexpectedType(u"\"hooks\""_s);
    return hooks ? *hooks : JsonObject();
}

void ListedHooks::throwUnexpectedType(const QString &member) const
{
    throw HookError(file().label() + u": "_s + member
                    + u" has an unexpected type — Tirlo has not touched it."_s);
}

} // namespace tirlo
