#include "Fuzz.h"
#include "core/AppState.h"
#include "core/Paths.h"
#include "core/PillCatalog.h"
#include "platform/linux/FileKeyValueStore.h"
#include "support/ManualQueue.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace tirlo {

namespace {

/// All settings as a text that compares.
QString summary(const AppState &state)
{
    QString text;
    QDebug out(&text);
    const auto sorted = [](const QSet<QString> &set) {
        QStringList list(set.begin(), set.end());
        list.sort();
        return list;
    };
    out << state.soundEnabled.value() << state.soundVolume.value() << state.claudeModel.value()
        << int(state.chatProvider.value()) << state.googleChatModel.value()
        << state.openAIChatModel.value() << state.mainPillId.value()
        << state.autoCloseInterval.value() << state.absenceInterval << state.greetThresholdSeconds
        << state.hotkeyEnabled.value() << state.hotkeyFlags << state.hotkeyCode
        << sorted(state.vercelProjectFilter) << sorted(state.n8nWorkflowFilter)
        << sorted(state.activeIntegrations) << state.tasks.value().size();
    return text;
}

void checkRules(const AppState &state)
{
    REQUIRE(std::isfinite(state.soundVolume.value()) && std::isfinite(state.absenceInterval)
            && std::isfinite(state.autoCloseInterval.value())
            && std::isfinite(state.greetThresholdSeconds));
    REQUIRE(!state.claudeModel.value().trimmed().isEmpty());
    REQUIRE(!state.googleChatModel.value().isEmpty() && !state.openAIChatModel.value().isEmpty());
    REQUIRE(PillCatalog::canBeMainPill(state.mainPillId));
    REQUIRE(!state.activeIntegrations.value().contains(state.mainPillId));
    REQUIRE(state.tasks.value().size() == state.activeIntegrations.value().size() + 1);
    for (const QString &id : state.activeIntegrations.value())
        REQUIRE(PillCatalog::definition(id) && state.task(id));
}

/// A program that reads the file, and what it then holds; `change` is done in between.
template<typename Change>
QString settingsAfter(const QString &path, Change change)
{
    ManualQueue queue;
    FileKeyValueStore store(path, queue);
    AppState state(store, queue);
    checkRules(state);
    change(state);
    checkRules(state);
    return summary(state);
}

} // namespace

/// The settings file as any hand or fault left it; its bytes are also what is set later.
void fuzz(const QByteArray &input)
{
    const QString folder = scratchHome() + "/settings";
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    const QString path = folder + "/settings.json";
    put(path, input);
    const QJsonDocument before = QJsonDocument::fromJson(input);

    const QString first = settingsAfter(path, [](AppState &) {});
    const QStringList asides = QDir(folder).entryList({"*.corrupt-*"});
    REQUIRE(asides.isEmpty() == before.isObject());
    for (const QString &aside : asides)
        REQUIRE(bytesOf(folder + u'/' + aside) == input);
    REQUIRE(settingsAfter(path, [](AppState &) {}) == first);

    // Each write goes down to the disk, so most inputs are only read.
    const std::uint8_t last = input.isEmpty() ? 0 : std::uint8_t(input.back());
    if (last % 4 != 0)
        return;
    const QString set = settingsAfter(path, [&](AppState &state) {
        const QString text = QString::fromUtf8(input.left(200));
        state.soundEnabled = last % 8 == 0;
        state.soundVolume = last / 255.0;
        state.claudeModel = u'x' + text;
        state.vercelProjectFilter = {text, text + u'1'};
        state.setHotkey(std::uint32_t(last) << 24, std::uint16_t(last) << 8);
        state.setAbsenceInterval(last * 1e10);
        state.toggleIntegration(PillCatalog::all()[last % PillCatalog::all().size()].id);
    });
    REQUIRE(settingsAfter(path, [](AppState &) {}) == set);

    // What the program does not know stays.
    const QJsonObject after = QJsonDocument::fromJson(bytesOf(path)).object();
    const QString foreign = "foreign";
    REQUIRE(after.value(foreign) == before.object().value(foreign));
}

} // namespace tirlo
