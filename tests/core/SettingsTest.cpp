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
    struct Row
    {
        const char *key;
        StoredValue right;
        StoredValue wrong;
        std::function<bool()> isDefault;
    };
    const auto is = [this]<typename T>(QProperty<T> AppState::*property, T value) {
        return [=, this] { return ((*state).*property).value() == value; };
    };
    const Row rows[] = {
        {"soundEnabled", false, std::int64_t(0), is(&AppState::soundEnabled, true)},
        {"soundVolume", 0.5, QStringLiteral("0.5"), is(&AppState::soundVolume, 0.12)},
        {"claudeModel", QStringLiteral(" opus "), QStringLiteral("  "),
         is(&AppState::claudeModel, QStringLiteral("claude-sonnet-4-6"))},
        {"chatProvider", QStringLiteral("openai"), QStringLiteral("nobody"),
         is(&AppState::chatProvider, ChatProvider::anthropic)},
        {"autoCloseInterval", std::int64_t(61), true, is(&AppState::autoCloseInterval, 15.0)},
        {"hotkeyFlags", std::int64_t(0x100000), std::int64_t(-1),
         [this] { return state->hotkeyFlags == 0x120000u; }},
        {"hotkeyCode", std::int64_t(65535), std::int64_t(65536),
         [this] { return state->hotkeyCode == 45; }},
        {"vercelProjectFilter", QByteArray(R"(["a","b"])"), QByteArray("[1]"),
         is(&AppState::vercelProjectFilter, QSet<QString>())},
        {"activeIntegrations", QByteArray(R"(["ai_google"])"), QByteArray("{"),
         is(&AppState::activeIntegrations, QSet<QString>())},
        {"mainPill", QStringLiteral("agent_codex"), QStringLiteral("integration_stripe"),
         is(&AppState::mainPillId, QStringLiteral("integration_claude"))},
    };
    for (const Row &row : rows) {
        store.values = {{row.key, row.right}};
        start();
        EXPECT_FALSE(row.isDefault()) << row.key;
        store.values = {{row.key, row.wrong}};
        store.writes = 0;
        start();
        EXPECT_TRUE(row.isDefault()) << row.key;
        EXPECT_EQ(store.writes, 0) << row.key << ": a start writes nothing";
    }
}

TEST_F(SettingsTest, AnOldMinuteOfAutoCloseNeverSurvivesAStart)
{
    store.values = {{"autoCloseInterval", 60.0}};
    EXPECT_EQ(start().autoCloseInterval, 15.0);
    EXPECT_EQ(store.real("autoCloseInterval"), 15.0);
    for (const double kept : {59.0, 61.0, -3.0}) {
        store.values = {{"autoCloseInterval", kept}};
        EXPECT_EQ(start().autoCloseInterval, kept);
    }
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
