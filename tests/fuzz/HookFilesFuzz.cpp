#include "Fuzz.h"
#include "core/Paths.h"
#include "hooks/installers/HookError.h"
#include "hooks/installers/HookInstallers.h"
#include "support/ManualQueue.h"

#include <QFileInfo>

#include <algorithm>
#include <functional>

namespace tirlo {

namespace {

const QString hooksKey = "hooks";
const QString blockKey = "tirlo";

/// The user's file of one agent, with each operation as the user has it: seen first, then written.
struct Agent
{
    QString path;
    HookInstaller *installer;
    /// Previews the installation.
    std::function<HookChange()> build;
    std::function<void()> remove;
    bool isClaude = false;
};

bool isForeign(const JsonNode &node)
{
    const QByteArray text = writeJson(node, JsonSlashes::plain);
    return !text.contains("qv-hook") && !text.contains("Skerry") && !text.contains("tirlo");
}

/// What no operation may touch: the foreign groups that hold something, in their order.
JsonArray foreignGroups(const JsonNode *list)
{
    JsonArray kept;
    for (const JsonNode &group : list && list->array() ? *list->array() : JsonArray()) {
        const JsonNode *entries = group.object() ? member(*group.object(), hooksKey) : nullptr;
        const bool isHollow = entries && entries->array() && entries->array()->isEmpty();
        if (isForeign(group) && !isHollow)
            kept.append(group);
    }
    return kept;
}

/// True when these groups are all there in this order, whatever else is.
bool keeps(const JsonArray &groups, const JsonArray &kept)
{
    auto next = kept.begin();
    for (const JsonNode &group : groups) {
        next = std::find(next, kept.end(), group);
        if (next == kept.end())
            return false;
        ++next;
    }
    return true;
}

JsonObject objectIn(const QByteArray &bytes)
{
    const auto node = readJson(bytes);
    REQUIRE(node && node->object());
    return *node->object();
}

JsonObject hooksOf(const JsonObject &settings)
{
    const JsonNode *hooks = member(settings, hooksKey);
    return hooks && hooks->object() ? *hooks->object() : JsonObject();
}

/// That the user's own things are still there.
void checkForeign(JsonObject before, JsonObject after, bool isClaude)
{
    const JsonObject hooksBefore = hooksOf(before);
    const JsonObject hooksAfter = hooksOf(after);
    for (auto it = hooksBefore.begin(); it != hooksBefore.end(); ++it) {
        // One that is not understood is replaced for the one agent whose file is not guarded.
        if (!isClaude || listOfObjects(hooksBefore, it.key()))
            REQUIRE(keeps(foreignGroups(&*it), foreignGroups(member(hooksAfter, it.key()))));
        if (!it->array() && !isClaude)
            REQUIRE(*it == hooksAfter.value(it.key()));
    }
    for (JsonObject *settings : {&before, &after}) {
        settings->remove(hooksKey);
        settings->remove(blockKey);
    }
    REQUIRE(before == after);
}

/// The settings without lists and objects that hold nothing, which removing may take along.
JsonObject withoutHollow(JsonObject settings)
{
    JsonObject hooks = hooksOf(settings);
    hooks.removeIf(
        [](auto entry) { return entry.value().array() && entry.value().array()->isEmpty(); });
    if (hooks.isEmpty())
        settings.remove(hooksKey);
    else
        settings.insert(hooksKey, {hooks});
    return settings;
}

/// True when every list of hooks is of the plain kind, of which nothing is lost on the way.
bool isPlain(const JsonObject &settings)
{
    if (member(settings, hooksKey) && !member(settings, hooksKey)->object())
        return false;
    const JsonObject hooks = hooksOf(settings);
    for (auto it = hooks.begin(); it != hooks.end(); ++it) {
        if (!listOfObjects(hooks, it.key()) || foreignGroups(&*it).size() != it->array()->size())
            return false;
    }
    return isForeign({settings});
}

void checkNode(const JsonNode &node)
{
    for (const JsonSlashes slashes : {JsonSlashes::escaped, JsonSlashes::plain}) {
        const QByteArray text = writeJson(node, slashes);
        const auto again = readJson(text);
        REQUIRE(again && *again == node && writeJson(*again, slashes) == text);
    }
}

bool tryTo(const Agent &agent, bool install)
{
    try {
        if (install) {
            static_cast<void>(agent.build());
            agent.installer->writeHooks();
        } else {
            agent.remove();
        }
        return true;
    } catch (const HookError &error) {
        REQUIRE(!error.message().isEmpty());
        return false;
    }
}

} // namespace

/// The agent by the first byte, and the settings file that the user has.
void fuzz(const QByteArray &input)
{
    static const Paths paths(scratchHome());
    ManualQueue queue;
    HookInstallers all(paths, queue);
    const auto guarded = [](const QString &path, GuardedHooks &hooks) {
        return Agent{path, &hooks, [&hooks] { return hooks.previewHooks(true); },
                     [&hooks] {
                         static_cast<void>(hooks.previewHooks(false));
                         hooks.writeHooks();
                     }};
    };
    const Agent agents[] = {
        {paths.claudeSettingsPath(), &all.claude, [&] { return all.claude.buildHooksData(); },
         [&] { all.claude.uninstallHooks(); }, true},
        guarded(paths.geminiSettingsPath(), all.gemini),
        guarded(paths.antigravityHooksPath(), all.antigravity),
        guarded(paths.codexHooksPath(), all.codex),
    };
    const Agent &agent = agents[input.isEmpty() ? 0 : std::uint8_t(input.front()) % 4];
    const QByteArray original = input.mid(1);
    const QDir folder = QFileInfo(agent.path).dir();
    QDir(folder).removeRecursively();
    QDir().mkpath(folder.path());
    put(agent.path, original);

    const auto node = readJson(original);
    if (node)
        checkNode(*node);
    const bool isInstalled = tryTo(agent, true);
    queue.advance(100); // a backup has the name of its minute
    if (!isInstalled) {
        REQUIRE(!agent.isClaude && bytesOf(agent.path) == original);
        return;
    }
    REQUIRE(agent.isClaude || (node && node->object()));
    const QByteArray installed = bytesOf(agent.path);
    const JsonObject before = node && node->object() ? *node->object() : JsonObject();
    checkForeign(before, objectIn(installed), agent.isClaude);
    REQUIRE(agent.installer->hooksInstalled() && !all.claude.hooksNeedUpdate());
    const HookChange repeated = agent.build();
    REQUIRE(repeated.presentText.toUtf8() == installed && !repeated.laysOutAnew);
    // The user's file is beside it as it was.
    const QStringList backups = folder.entryList({"*.bak-*"});
    REQUIRE(backups.size() == 1 && bytesOf(folder.filePath(backups.first())) == original);

    REQUIRE(tryTo(agent, true) && bytesOf(agent.path) == installed);
    queue.advance(100);
    REQUIRE(tryTo(agent, false) && !agent.installer->hooksInstalled());
    const JsonObject removed = objectIn(bytesOf(agent.path));
    checkForeign(before, removed, agent.isClaude);
    if (isPlain(before))
        REQUIRE(withoutHollow(removed) == withoutHollow(before));
}

} // namespace tirlo
