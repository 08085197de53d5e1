#include "HookEntries.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tirlo::HookEntries {

namespace {

bool runsQvHook(const JsonObject &entry)
{
    return commandOf(entry).contains(u"qv-hook"_s);
}

bool anyObject(const JsonNode *list, const Test &test)
{
    return list && list->array() && std::ranges::any_of(*list->array(), [&](const JsonNode &node) {
               return node.object() && test(*node.object());
           });
}

} // namespace

const JsonObject *hooksOf(const JsonObject &settings)
{
    const JsonNode *hooks = member(settings, hooksKey);
    return hooks ? hooks->object() : nullptr;
}

QString commandOf(const JsonObject &entry)
{
    return textMember(entry, u"command"_s);
}

bool groupHas(const JsonObject &group, const Test &entryTest)
{
    return anyObject(member(group, hooksKey), entryTest);
}

bool anyHas(const JsonObject &hooks, const Test &groupTest)
{
    return std::ranges::any_of(hooks,
                               [&](const JsonNode &list) { return anyObject(&list, groupTest); });
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
