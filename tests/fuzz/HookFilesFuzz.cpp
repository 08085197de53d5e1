#include "Fuzz.h"
#include "core/Paths.h"
#include "hooks/installers/HookError.h"
#include "hooks/installers/HookInstallers.h"
#include "support/ManualQueue.h"

#include <QFileInfo>

#include <algorithm>

namespace tirlo {

namespace {

const QString hooksKey = "hooks";

/// What no operation may touch: the foreign groups that hold something, in their order.
JsonArray foreignGroups(const JsonNode *list)
{
    JsonArray kept;
    for (const JsonNode &group : list && list->array() ? *list->array() : JsonArray()) {
        const JsonNode *entries = group.object() ? member(*group.object(), hooksKey) : nullptr;
        const bool isHollow = entries && entries->array() && entries->array()->isEmpty();
        const QByteArray text = writeJson(group, JsonSlashes::plain);
        if (!isHollow && !text.contains("qv-hook") && !text.contains("Skerry")
            && !text.contains("tirlo"))
            kept.append(group);
    }
    return kept;
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
void checkForeign(JsonObject before, JsonObject after, bool isGuarded)
{
    const JsonObject hooksBefore = hooksOf(before);
    const JsonObject hooksAfter = hooksOf(after);
    for (auto it = hooksBefore.begin(); it != hooksBefore.end(); ++it) {
        // One that is not understood is replaced for the one agent whose file is not guarded.
        if (!isGuarded && !listOfObjects(hooksBefore, it.key()))
            continue;
        const JsonArray left = foreignGroups(member(hooksAfter, it.key()));
        auto next = left.begin();
        for (const JsonNode &group : foreignGroups(&*it)) {
            next = std::find(next, left.end(), group);
            REQUIRE(next != left.end());
            ++next;
        }
        REQUIRE(it->array() || *it == hooksAfter.value(it.key()));
    }
    for (JsonObject *settings : {&before, &after}) {
        settings->remove(hooksKey);
        settings->remove("tirlo");
    }
    REQUIRE(before == after);
}

void checkNode(const JsonNode &node)
{
    for (const JsonSlashes slashes : {JsonSlashes::escaped, JsonSlashes::plain}) {
        const QByteArray text = writeJson(node, slashes);
        const auto again = readJson(text);
        REQUIRE(again && *again == node && writeJson(*again, slashes) == text);
    }
}

} // namespace

/// The agent by the first byte, and the settings file that the user has.
void fuzz(const QByteArray &input)
{
    static const Paths paths(scratchHome());
    ManualQueue queue;
    HookInstallers all(paths, queue);
    const std::size_t pick
        = input.isEmpty() ? 0 : std::uint8_t(input.front()) % (all.guarded.size() + 1);
    GuardedHooks *guarded = pick > 0 ? all.guarded[pick - 1].get() : nullptr;
    HookInstaller &installer = guarded ? static_cast<HookInstaller &>(*guarded) : all.claude;
    const auto preview = [&](bool install) {
        return guarded ? guarded->previewHooks(install) : all.claude.buildHooksData();
    };
    const auto apply = [&](bool install) {
        try {
            if (!guarded && !install) {
                all.claude.uninstallHooks();
                return true;
            }
            static_cast<void>(preview(install));
            installer.writeHooks();
            return true;
        } catch (const HookError &error) {
            REQUIRE(!error.message().isEmpty());
            return false;
        }
    };

    const QString path = paths.agentSettingsPath(installer.agent());
    const QDir folder = QFileInfo(path).dir();
    QDir(folder).removeRecursively();
    QDir().mkpath(folder.path());
    const QByteArray original = input.mid(1);
    put(path, original);
    const auto node = readJson(original);
    if (node)
        checkNode(*node);
    const bool isInstalled = apply(true);
    queue.advance(100); // a backup has the name of its minute
    if (!isInstalled) {
        REQUIRE(guarded && bytesOf(path) == original);
        return;
    }
    REQUIRE(!guarded || (node && node->object()));
    const QByteArray installed = bytesOf(path);
    const JsonObject before = node && node->object() ? *node->object() : JsonObject();
    checkForeign(before, objectIn(installed), guarded);
    REQUIRE(installer.hooksInstalled() && !all.claude.hooksNeedUpdate());
    const HookChange repeated = preview(true);
    REQUIRE(repeated.presentText.toUtf8() == installed && !repeated.laysOutAnew);
    // The user's file is beside it as it was.
    const QStringList backups = folder.entryList({"*.bak-*"});
    REQUIRE(backups.size() == 1 && bytesOf(folder.filePath(backups.first())) == original);

    REQUIRE(apply(true) && bytesOf(path) == installed);
    queue.advance(100);
    REQUIRE(apply(false) && !installer.hooksInstalled());
    checkForeign(before, objectIn(bytesOf(path)), guarded);
}

} // namespace tirlo
