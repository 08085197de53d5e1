#include "ClaudeHooks.h"

#include "HookEntries.h"
#include "HookError.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tirlo {

using namespace HookEntries;

namespace {

/// Seconds that the user has for an answer; an older installation gave less.
constexpr qint64 answerTimeout = 120;

bool isOurs(const JsonObject &entry)
{
    const QString command = commandOf(entry);
    return command.contains(u"Skerry"_s) || command.contains(u"tirlo"_s);
}

bool holdsOurs(const JsonObject &group)
{
    return groupHas(group, isOurs);
}

/// The groups without those that hold a hook of ours.
QList<JsonObject> foreignGroups(QList<JsonObject> groups)
{
    groups.removeIf(holdsOurs);
    return groups;
}

bool givesUpEarly(const JsonObject &entry)
{
    const JsonNode *timeout = member(entry, u"timeout"_s);
    return isOurs(entry) && timeout && timeout->integer().value_or(answerTimeout) < answerTimeout;
}

} // namespace

ClaudeHooks::ClaudeHooks(const Paths &paths, const MainQueue &clock)
    : HookInstaller(paths, HookTables::of(AgentId::claudeCode), JsonSlashes::escaped, clock)
{
}

HookChange ClaudeHooks::buildHooksData()
{
    cancel();
    const AgentFile::Contents present = file().contents();
    JsonObject settings = present.object.value_or(JsonObject());
    const JsonObject *found = hooksOf(settings);
    JsonObject hooks = found ? *found : JsonObject();
    for (const HookGroup &ours : groups()) {
        const auto list = listOfObjects(hooks, ours.key).value_or(QList<JsonObject>());
        hooks.insert(ours.key, arrayOf(foreignGroups(list) << ours.group));
    }
    settings.insert(hooksKey, {hooks});
    return keepPending(present, settings);
}

void ClaudeHooks::uninstallHooks()
{
    auto settings = file().readLeniently();
    const JsonObject *hooks = settings ? hooksOf(*settings) : nullptr;
    if (!hooks)
        return;
    JsonObject foreign = *hooks;
    changeLists(foreign, foreignGroups);
    // A file without our hooks is not laid out anew for nothing.
    if (foreign == *hooks)
        return;
    settings->insert(hooksKey, {foreign});
    file().write(serialised(*settings));
}

bool ClaudeHooks::hooksNeedUpdate() const
{
    const auto settings = file().readLeniently();
    const JsonObject *hooks = settings ? hooksOf(*settings) : nullptr;
    const auto requests = hooks ? listOfObjects(*hooks, u"PermissionRequest"_s) : std::nullopt;
    return requests && std::ranges::any_of(*requests, [](const JsonObject &group) {
               return groupHas(group, givesUpEarly);
           });
}

bool ClaudeHooks::holdsHooks(const JsonObject &settings) const
{
    const JsonObject *hooks = hooksOf(settings);
    return hooks && anyHas(*hooks, holdsOurs);
}

QString ClaudeHooks::backUp(const QByteArray &) const
{
    const QByteArray present = file().contents().bytes;
    if (!file().exists())
        return {};
    // The name of this minute may be taken by what stood in the file before.
    for (const QString &format : {u"yyyyMMdd-HHmm"_s, u"yyyyMMdd-HHmmss"_s}) {
        try {
            return file().backUp(present, stamp(format));
        } catch (const HookError &) {
            // This agent's file is written without a backup rather than not at all.
        }
    }
    return {};
}

} // namespace tirlo
