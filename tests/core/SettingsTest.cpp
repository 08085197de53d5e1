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

TEST_F(SettingsTest, AFirstStartWritesNothing)
{
    start();
    EXPECT_EQ(store.writes, 0);
}

TEST_F(SettingsTest, StoredValuesOfTheRightTypeAreTaken)
{
    store.values = {
        {"soundEnabled", false},
        {"soundVolume", 0.5},
        {"claudeModel", QStringLiteral(" opus ")},
        {"chatProvider", QStringLiteral("openai")},
        {"googleChatModel", QStringLiteral("g")},
        {"openAIChatModel", QStringLiteral("o")},
        {"autoCloseInterval", std::int64_t(61)},
        {"absenceInterval", 240.0},
        {"greetThreshold", 1.5},
        {"hotkeyEnabled", true},
        {"hotkeyFlags", std::int64_t(0x100000)},
        {"hotkeyCode", std::int64_t(65535)},
        {"vercelProjectFilter", QByteArray(R"(["a","b"])")},
        {"n8nWorkflowFilter", QByteArray("[]")},
        {"activeIntegrations", QByteArray(R"(["ai_google"])")},
        {"mainPill", QStringLiteral("agent_codex")},
    };
    const AppState &read = start();
    EXPECT_FALSE(read.soundEnabled);
    EXPECT_EQ(read.soundVolume, 0.5);
    EXPECT_EQ(read.claudeModel.value(), " opus ");
    EXPECT_EQ(read.chatProvider, ChatProvider::openai);
    EXPECT_EQ(read.googleChatModel.value(), "g");
    EXPECT_EQ(read.openAIChatModel.value(), "o");
    EXPECT_EQ(read.autoCloseInterval, 61.0);
    EXPECT_EQ(read.absenceInterval, 240.0);
    EXPECT_EQ(read.greetThresholdSeconds, 1.5);
    EXPECT_TRUE(read.hotkeyEnabled);
    EXPECT_EQ(read.hotkeyFlags, 0x100000u);
    EXPECT_EQ(read.hotkeyCode, 65535);
    EXPECT_EQ(read.vercelProjectFilter.value(), QSet<QString>({"a", "b"}));
    EXPECT_EQ(read.activeIntegrations.value(), QSet<QString>({"ai_google"}));
    EXPECT_EQ(read.mainPillId.value(), "agent_codex");
    EXPECT_EQ(read.focusId.value(), "agent_codex");
}

TEST_F(SettingsTest, WrongTypesAndBrokenRulesLeaveTheDefaults)
{
    const QList<StoredValue> wrong{true, std::int64_t(-1), 0.5, QStringLiteral("  "), QByteArray("[1]"),
                                   QByteArray("{"), QStringLiteral("integration_stripe")};
    const QHash<QString, QList<int>> keysAndWrongValues{
        {"soundEnabled", {1, 2, 3, 4}},
        {"soundVolume", {0, 3, 4}},
        {"claudeModel", {0, 1, 2, 3, 4}},
        {"chatProvider", {0, 1, 2, 3, 4, 6}},
        {"googleChatModel", {0, 1, 2, 4}},
        {"openAIChatModel", {0, 1, 2, 4}},
        {"autoCloseInterval", {0, 3, 4}},
        {"absenceInterval", {0, 3, 4}},
        {"greetThreshold", {0, 3, 4}},
        {"hotkeyEnabled", {1, 2, 3, 4}},
        {"hotkeyFlags", {0, 1, 2, 3, 4}},
        {"hotkeyCode", {0, 1, 2, 3, 4}},
        {"vercelProjectFilter", {0, 1, 2, 3, 4, 5}},
        {"n8nWorkflowFilter", {0, 1, 2, 3, 4, 5}},
        {"activeIntegrations", {0, 1, 2, 3, 4, 5}},
        {"mainPill", {0, 1, 2, 3, 4, 6}},
    };
    for (auto row = keysAndWrongValues.begin(); row != keysAndWrongValues.end(); ++row) {
        for (const int index : row.value()) {
            store.values = {{row.key(), wrong.at(index)}};
            store.writes = 0;
            const AppState &read = start();
            EXPECT_EQ(store.writes, 0) << row.key().toStdString() << " " << index;
            EXPECT_TRUE(read.soundEnabled);
            EXPECT_EQ(read.soundVolume, 0.12);
            EXPECT_EQ(read.activeChatModel(), "claude-sonnet-4-6");
            EXPECT_EQ(read.googleChatModel.value(), "gemini-2.0-flash");
            EXPECT_EQ(read.openAIChatModel.value(), "gpt-4o");
            EXPECT_EQ(read.autoCloseInterval, 15.0);
            EXPECT_EQ(read.absenceInterval, 180.0);
            EXPECT_EQ(read.greetThresholdSeconds, 120.0);
            EXPECT_FALSE(read.hotkeyEnabled);
            EXPECT_EQ(read.hotkeyFlags, 0x120000u);
            EXPECT_EQ(read.hotkeyCode, 45);
            EXPECT_TRUE(read.vercelProjectFilter.value().isEmpty());
            EXPECT_TRUE(read.n8nWorkflowFilter.value().isEmpty());
            EXPECT_TRUE(read.activeIntegrations.value().isEmpty());
            EXPECT_EQ(read.mainPillId.value(), "integration_claude");
        }
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
