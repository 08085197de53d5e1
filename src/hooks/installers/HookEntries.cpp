#include "HookEntries.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tirlo::HookEntries {

namespace {

const QString commandKey = u"command"_s;
const QString hooksKey = u"hooks"_s;

bool runsQvHook(const JsonObject &entry)
{
    return textMember(entry, commandKey).contains(u"qv-hook"_s);
}

} // namespace

bool groupHas(const JsonObject &group, const CommandTest &test)
{
    const JsonNode *hooks = member(group, hooksKey);
    if (!hooks || !hooks->array())
        return false;
    return std::ranges::any_of(*hooks->array(), [&](const JsonNode &entry) {
        return entry.object() && test(textMember(*entry.object(), commandKey));
    });
}

bool anyHas(const JsonObject &hooks, const CommandTest &test)
{
    return std::ranges::any_of(hooks, [&](const JsonNode &list) {
        return list.array() && std::ranges::any_of(*list.array(), [&](const JsonNode &group) {
                   return group.object() && groupHas(*group.object(), test);
               });
    });
}

void changeLists(JsonObject &hooks,
                 const std::function<QList<JsonObject>(const QList<JsonObject> &)> &change)
{
    for (const QString &key : hooks.keys()) {
        const auto groups = listOfObjects(hooks, key);
        if (!groups)
            continue;
        const QList<JsonObject> changed = change(*groups);
        if (changed.isEmpty())
            hooks.remove(key);
        else
            hooks.insert(key, arrayOf(changed));
    }
}

QList<JsonObject> removeQvHookEntries(const QList<JsonObject> &groups)
{
    QList<JsonObject> kept;
    for (JsonObject group : groups) {
        // An entry that stands in the list by itself, without a group around it.
        if (runsQvHook(group))
            continue;
        auto entries = listOfObjects(group, hooksKey);
        if (entries) {
            entries->removeIf(runsQvHook);
            if (entries->isEmpty())
                continue;
            group.insert(hooksKey, arrayOf(*entries));
        }
        kept.append(group);
    }
    return kept;
}

} // namespace tirlo::HookEntries
