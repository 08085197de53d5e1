#include "support/StoreParts.h"

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

class AppStateTest : public testing::Test, protected StoreParts
{
protected:
    /// Adds the pill of an agent from outside.
    void append(const QString &id)
    {
        AgentTask task;
        task.id = id;
        state.tasks = state.tasks.value() + QList{task};
    }

    static QStringList ids(const AppState &state)
    {
        QStringList list;
        for (const AgentTask &task : state.tasks.value())
            list.append(task.id);
        return list;
    }
};

TEST_F(AppStateTest, RemovingTheMainPillOrAnActiveToolOnlyResetsIt)
{
    state.toggleIntegration("agent_cursor");
    for (const QString id : {"integration_claude", "agent_cursor"}) {
        AgentTask expected = *state.task(id);
        expected.sessionCwd = "/here";
        state.editTask(id, [](AgentTask &task) {
            task.name = "my-project";
            task.state = BotState::working;
            task.steps = {"a", "b"};
            task.stepIndex = 1;
            task.pillBadge = PillBadge::error;
            task.sessionCwd = "/here";
        });
        state.removeTask(id);
        EXPECT_EQ(state.task(id), expected);
    }
}

TEST_F(AppStateTest, FocusSticksToTasksThatExistAndClearsTheirBadge)
{
    append("agent_foo");
    append("agent_foo");
    state.editTask("agent_foo", [](AgentTask &task) { task.pillBadge = PillBadge::finished; });
    state.setFocus("agent_nobody");
    EXPECT_EQ(state.focusId.value(), "integration_claude");
    state.setFocus("agent_foo");
    EXPECT_FALSE(state.task("agent_foo")->pillBadge);
    state.removeTask("agent_foo");
    EXPECT_EQ(ids(state), QStringList{"integration_claude"});
    EXPECT_EQ(state.focusId.value(), "integration_claude");

    state.focusId = "agent_gone";
    EXPECT_EQ(state.focusTask()->id, "integration_claude");
    state.tasks = QList<AgentTask>();
    EXPECT_FALSE(state.focusTask());
}

TEST_F(AppStateTest, AtMostFourToolsAreActive)
{
    for (const QString id : {"integration_stripe", "agent_gemini", "ai_openai", "agent_cursor"})
        state.toggleIntegration(id);
    EXPECT_EQ(ids(state),
              QStringList({"integration_claude", "agent_cursor", "agent_gemini", "ai_openai",
                           "integration_stripe"}));
    state.toggleIntegration("integration_n8n");
    EXPECT_FALSE(state.task("integration_n8n"));
    state.setFocus("ai_openai");
    state.toggleIntegration("ai_openai");
    EXPECT_FALSE(state.task("ai_openai"));
    EXPECT_EQ(state.focusId.value(), "integration_claude");

    // Neither the main pill nor what is no tool takes the room.
    for (const QString id : {"integration_claude", "agent_foo"})
        state.toggleIntegration(id);
    EXPECT_EQ(state.activeIntegrations.value().size(), 3);
}

TEST_F(AppStateTest, HookAgentsStandBehindTheEditorsPillElseInFront)
{
    state.toggleIntegration("agent_cursor");
    append("agent_foo");
    append("agent_bar");
    state.loadIntegrationTasks();
    EXPECT_EQ(ids(state),
              QStringList({"integration_claude", "agent_foo", "agent_bar", "agent_cursor"}));
    state.mainPillId = "agent_cursor";
    state.loadIntegrationTasks();
    EXPECT_EQ(ids(state), QStringList({"agent_foo", "agent_bar", "agent_cursor"}));
    EXPECT_FALSE(state.activeIntegrations.value().contains("agent_cursor"));
}

TEST_F(AppStateTest, LoadingDropsWhatTheCatalogueDoesNotHold)
{
    store.values["activeIntegrations"] = QByteArray(R"(["integration_claude","foo","ai_google"])");
    queue.advance(7);
    AppState later(store, queue);
    EXPECT_EQ(later.lastActivity.value(), 7);
    EXPECT_EQ(later.activeIntegrations.value(), QSet<QString>{"ai_google"});
    EXPECT_EQ(store.bytes("activeIntegrations"), R"(["ai_google"])");
    EXPECT_EQ(ids(later), QStringList({"integration_claude", "ai_google"}));
    later.mainPillId = "integration_stripe";
    later.loadIntegrationTasks();
    EXPECT_EQ(later.mainPillId.value(), "integration_claude");
    EXPECT_EQ(store.text("mainPill"), "integration_claude");
}

} // namespace
