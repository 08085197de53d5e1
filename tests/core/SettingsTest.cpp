#include "core/AppState.h"

#include "support/ManualQueue.h"
#include "support/MemoryStore.h"

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

class SettingsTest : public testing::Test
{
protected:
    MemoryStore store;
    ManualQueue queue;
    std::optional<AppState> state;

    AppState &start() { return state.emplace(store, queue); }
};

TEST_F(SettingsTest, StoredValuesAreTakenAndThoseOfAWrongTypeLeaveTheDefault)
{
    const auto expect = [this](const char *key, StoredValue right, StoredValue wrong,
                               auto AppState::*field, auto fallback) {
        store.values = {{key, right}};
        EXPECT_FALSE(start().*field == fallback) << key;
        store.values = {{key, wrong}};
        store.writes = 0;
        EXPECT_TRUE(start().*field == fallback) << key;
        EXPECT_EQ(store.writes, 0) << key << ": a start writes nothing";
    };
    const auto text = [](const char *latin) { return QString::fromLatin1(latin); };
    expect("soundEnabled", false, std::int64_t(0), &AppState::soundEnabled, true);
    expect("soundVolume", 0.5, text("0.5"), &AppState::soundVolume, 0.12);
    expect("claudeModel", text(" opus "), text("  "), &AppState::claudeModel,
           text("claude-sonnet-4-6"));
    expect("chatProvider", text("openai"), text("nobody"), &AppState::chatProvider,
           ChatProvider::anthropic);
    expect("autoCloseInterval", std::int64_t(61), true, &AppState::autoCloseInterval, 15.0);
    expect("hotkeyFlags", std::int64_t(0x100000), std::int64_t(-1), &AppState::hotkeyFlags,
           0x120000u);
    expect("hotkeyCode", std::int64_t(65535), std::int64_t(65536), &AppState::hotkeyCode, 45);
    expect("anyTerminal", true, std::int64_t(1), &AppState::anyTerminal, false);
    expect("islandPosition", text("belowPanel"), text("moon"), &AppState::islandPosition,
           IslandPosition::automatic);
    expect("islandScreen", text("pointer"), std::int64_t(1), &AppState::islandScreen,
           IslandScreen::automatic);
    expect("requestsOverFullscreen", false, text("no"), &AppState::requestsOverFullscreen, true);
    expect("vercelProjectFilter", QByteArray(R"(["a","b"])"), QByteArray("[1]"),
           &AppState::vercelProjectFilter, QSet<QString>());
    expect("activeIntegrations", QByteArray(R"(["ai_google"])"), QByteArray("{"),
           &AppState::activeIntegrations, QSet<QString>());
    expect("mainPill", text("agent_codex"), text("integration_stripe"), &AppState::mainPillId,
           text("integration_claude"));

    // An old minute of auto-close never survives a start.
    for (const double kept : {59.0, 61.0, -3.0}) {
        store.values = {{"autoCloseInterval", kept}};
        EXPECT_EQ(start().autoCloseInterval, kept);
    }
    store.values = {{"autoCloseInterval", 60.0}};
    EXPECT_EQ(start().autoCloseInterval, 15.0);
    EXPECT_EQ(store.real("autoCloseInterval"), 15.0);
}

TEST_F(SettingsTest, EachChangeIsWrittenOnceAndAtOnce)
{
    AppState &written = start();
    written.soundEnabled = false;
    written.soundVolume = 0.3;
    written.chatProvider = ChatProvider::google;
    written.autoCloseInterval = 60;
    written.vercelProjectFilter = QSet<QString>{"b", "a"};
    written.mainPillId = "agent_cursor";
    EXPECT_EQ(store.writes, 6);
    written.soundVolume = 0.3;
    EXPECT_EQ(store.writes, 6);
    written.setHotkey(0x20000, 0);
    written.setAbsenceInterval(60);

    EXPECT_EQ(store.boolean("soundEnabled"), false);
    EXPECT_EQ(store.real("soundVolume"), 0.3);
    EXPECT_EQ(store.text("chatProvider"), "google");
    EXPECT_EQ(store.real("autoCloseInterval"), 60.0);
    EXPECT_EQ(store.bytes("vercelProjectFilter"), R"(["a","b"])");
    EXPECT_EQ(store.text("mainPill"), "agent_cursor");
    EXPECT_EQ(store.integer("hotkeyFlags"), 0x20000);
    EXPECT_EQ(store.integer("hotkeyCode"), 0);
    EXPECT_EQ(store.real("absenceInterval"), 60.0);
}

} // namespace
