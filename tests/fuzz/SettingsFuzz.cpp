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
void runWith(const QString &path, Change change)
{
    ManualQueue queue;
    FileKeyValueStore store(path, queue);
    AppState state(store, queue);
    checkRules(state);
    change(state);
    checkRules(state);
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

    runWith(path, [](AppState &) {});
    const QStringList asides = QDir(folder).entryList({"*.corrupt-*"});
    REQUIRE(asides.isEmpty() == before.isObject());
    for (const QString &aside : asides)
        REQUIRE(bytesOf(folder + u'/' + aside) == input);

    // Each write goes down to the disk, so most inputs are only read.
    const std::uint8_t last = input.isEmpty() ? 0 : std::uint8_t(input.back());
    if (last % 4 != 0)
        return;
    const QString text = QString::fromUtf8(input.left(200));
    const QString id = PillCatalog::all()[last % PillCatalog::all().size()].id;
    bool isActive = false;
    runWith(path, [&](AppState &state) {
        state.claudeModel = u'x' + text;
        state.vercelProjectFilter = {text, text + u'1'};
        state.setAbsenceInterval(last * 1e10);
        state.toggleIntegration(id);
        isActive = state.activeIntegrations.value().contains(id);
    });
    runWith(path, [&](AppState &state) {
        REQUIRE(state.claudeModel.value() == u'x' + text && state.absenceInterval == last * 1e10);
        REQUIRE(state.vercelProjectFilter.value().contains(text));
        REQUIRE(state.activeIntegrations.value().contains(id) == isActive);
    });

    // What the program does not know stays.
    const QJsonObject after = QJsonDocument::fromJson(bytesOf(path)).object();
    const QString foreign = "foreign";
    REQUIRE(after.value(foreign) == before.object().value(foreign));
}

} // namespace tirlo
