#include "ListedHooks.h"

#include "HookEntries.h"
#include "HookError.h"
#include "core/Paths.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tirlo {

namespace {

const QString hooksKey = u"hooks"_s;

} // namespace

ListedHooks ListedHooks::gemini(const Paths &paths, const MainQueue &clock)
{
    return {u"Gemini CLI"_s, u"gemini"_s, AgentFile(paths, paths.geminiSettingsPath()),
            HookTables::gemini(paths), clock};
}

ListedHooks ListedHooks::codex(const Paths &paths, const MainQueue &clock)
{
    return {u"Codex"_s, u"codex"_s, AgentFile(paths, paths.codexHooksPath()),
            HookTables::codex(paths), clock};
}

ListedHooks::ListedHooks(const QString &name, QString tag, const AgentFile &file,
                         std::vector<HookGroup> groups, const MainQueue &clock)
    : GuardedHooks(name, file, std::move(groups), clock)
    , m_tag(std::move(tag))
{
}

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
    const JsonNode *hooks = member(settings, hooksKey);
    return hooks && hooks->object()
        && HookEntries::anyHas(*hooks->object(), [this](const QString &command) {
               return command.contains(u"qv-hook"_s) && command.contains(u"--agent "_s + m_tag);
           });
}

JsonObject ListedHooks::hooksOf(const JsonObject &settings) const
{
    const JsonNode *hooks = member(settings, hooksKey);
    if (!hooks)
        return {};
    if (!hooks->object())
        throwUnexpectedType(u"\"hooks\""_s);
    return *hooks->object();
}

void ListedHooks::throwUnexpectedType(const QString &member) const
{
    throw HookError(file().label() + u": "_s + member
                    + u" has an unexpected type — Tirlo has not touched it."_s);
}

} // namespace tirlo
