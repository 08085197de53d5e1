#include "ClaudeHooks.h"

#include "HookEntries.h"
#include "HookError.h"
#include "core/Paths.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tirlo {

namespace {

const QString hooksKey = u"hooks"_s;

/// Seconds that the user has for an answer; an older installation gave less.
constexpr qint64 answerTimeout = 120;

bool isOurs(const QString &command)
{
    return command.contains(u"Skerry"_s) || command.contains(u"tirlo"_s);
}

/// The groups without those that hold a hook of ours.
QList<JsonObject> foreignGroups(QList<JsonObject> groups)
{
    groups.removeIf([](const JsonObject &group) { return HookEntries::groupHas(group, isOurs); });
    return groups;
}

/// The object under "hooks"; none when there is anything else.
std::optional<JsonObject> hooksOf(const JsonObject &settings)
{
    const JsonNode *hooks = member(settings, hooksKey);
    return hooks && hooks->object() ? std::optional(*hooks->object()) : std::nullopt;
}

bool givesUpEarly(const JsonNode &entry)
{
    const JsonObject *hook = entry.object();
    if (!hook || !isOurs(textMember(*hook, u"command"_s)))
        return false;
    const JsonNode *timeout = member(*hook, u"timeout"_s);
    return timeout && timeout->integer().value_or(answerTimeout) < answerTimeout;
}

} // namespace

ClaudeHooks::ClaudeHooks(const Paths &paths, const MainQueue &clock)
    : HookInstaller(AgentFile(paths, paths.claudeSettingsPath()), HookTables::claude(paths),
                    JsonSlashes::escaped, clock)
{
}

QByteArray ClaudeHooks::buildHooksData()
{
    JsonObject settings = file().readLeniently().value_or(JsonObject());
    JsonObject hooks = hooksOf(settings).value_or(JsonObject());
    for (const HookGroup &ours : groups()) {
        const auto present = listOfObjects(hooks, ours.key).value_or(QList<JsonObject>());
        hooks.insert(ours.key, arrayOf(foreignGroups(present) << ours.group));
    }
    settings.insert(hooksKey, {hooks});
    m_pendingHooksData = serialised(settings);
    return *m_pendingHooksData;
}

void ClaudeHooks::writeHooks()
{
    if (!m_pendingHooksData)
        return;
    try {
        file().backUp(stamp(u"yyyyMMdd-HHmm"_s));
    } catch (const HookError &) {
        // The most common cause is that there is no file yet, and the next that there is a backup
        // of this very minute.
    }
    file().write(*m_pendingHooksData);
    m_pendingHooksData.reset();
}

void ClaudeHooks::uninstallHooks()
{
    auto settings = file().readLeniently();
    const auto hooks = settings ? hooksOf(*settings) : std::nullopt;
    if (!hooks)
        return;
    JsonObject foreign = *hooks;
    HookEntries::changeLists(foreign, foreignGroups);
    if (foreign == *hooks)
        return;
    settings->insert(hooksKey, {foreign});
    file().write(serialised(*settings));
}

bool ClaudeHooks::hooksNeedUpdate() const
{
    const auto settings = file().readLeniently();
    const auto hooks = settings ? hooksOf(*settings) : std::nullopt;
    if (!hooks)
        return false;
    const auto requests = listOfObjects(*hooks, u"PermissionRequest"_s);
    return requests && std::ranges::any_of(*requests, [](const JsonObject &group) {
               const JsonNode *entries = member(group, hooksKey);
               return entries && entries->array()
                   && std::ranges::any_of(*entries->array(), givesUpEarly);
           });
}

bool ClaudeHooks::holdsHooks(const JsonObject &settings) const
{
    const auto hooks = hooksOf(settings);
    return hooks && HookEntries::anyHas(*hooks, isOurs);
}

} // namespace tirlo
