#include "core/AppState.h"

#include "support/ManualQueue.h"
#include "support/MemoryStore.h"

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

class AppStateTest : public testing::Test
{
protected:
    MemoryStore store;
    ManualQueue queue;
    std::optional<AppState> state;

    AppState &make() { return state.emplace(store, queue); }

    /// Adds the pill of an agent from outside.
    void append(const QString &id)
    {
        AgentTask task;
        task.id = id;
        state->tasks = state->tasks.value() + QList{task};
    }

    QStringList ids() const
    {
        QStringList list;
        for (const AgentTask &task : state->tasks.value())
            list.append(task.id);
        return list;
    }
};

TEST_F(AppStateTest, RemovingTheMainPillOrAnActiveToolOnlyResetsIt)
{
    make().toggleIntegration("agent_cursor");
    for (const QString id : {"integration_claude", "agent_cursor"}) {
        state->editTask(id, [](AgentTask &task) {
            task.name = "my-project";
            task.state = BotState::working;
            task.steps = {"a", "b"};
            task.stepIndex = 1;
            task.pillBadge = PillBadge::error;
            task.sessionCwd = "/here";
        });
        state->removeTask(id);
        const AgentTask task = *state->task(id);
        EXPECT_NE(task.name, "my-project");
        EXPECT_EQ(task.state, BotState::idle);
        EXPECT_TRUE(task.steps.isEmpty());
        EXPECT_EQ(task.stepIndex, 0);
        EXPECT_FALSE(task.pillBadge);
        EXPECT_EQ(task.sessionCwd, "/here");
    }
}

TEST_F(AppStateTest, FocusSticksToTasksThatExistAndClearsTheirBadge)
{
    make();
    append("agent_foo");
    append("agent_foo");
    state->editTask("agent_foo", [](AgentTask &task) { task.pillBadge = PillBadge::finished; });
    state->setFocus("agent_nobody");
    EXPECT_EQ(state->focusId.value(), "integration_claude");
    state->setFocus("agent_foo");
    EXPECT_FALSE(state->task("agent_foo")->pillBadge);
    state->removeTask("agent_foo");
    EXPECT_EQ(ids(), QStringList{"integration_claude"});
    EXPECT_EQ(state->focusId.value(), "integration_claude");

    state->focusId = "agent_gone";
    EXPECT_EQ(state->focusTask()->id, "integration_claude");
    state->tasks = QList<AgentTask>();
    EXPECT_FALSE(state->focusTask());
}

TEST_F(AppStateTest, ModeFollowsTheTasksAndTheViewThatOfAnOpenIsland)
{
    make();
    const QList<AgentTask> some = state->tasks;
    const auto modeAfter = [&](IslandMode before, bool hasTasks, bool isPresent = true) {
        state->tasks = hasTasks ? some : QList<AgentTask>();
        state->isPresent = isPresent;
        state->mode = before;
        state->syncMode();
        return state->mode.value();
    };
    using enum IslandMode;
    EXPECT_EQ(modeAfter(hidden, false), hidden);
    EXPECT_EQ(modeAfter(hidden, true), compact);
    EXPECT_EQ(modeAfter(hidden, true, false), hidden);
    EXPECT_EQ(modeAfter(compact, true, false), compact);
    EXPECT_EQ(modeAfter(compact, false), hidden);
    EXPECT_EQ(modeAfter(expanded, true), expanded);
    EXPECT_EQ(modeAfter(expanded, false), expanded);

    state->mode = compact;
    state->syncView();
    EXPECT_EQ(state->view, IslandView::overview);
    state->mode = expanded;
    state->syncView();
    EXPECT_EQ(state->view, IslandView::empty);
    state->tasks = some;
    state->syncView();
    EXPECT_EQ(state->view, IslandView::overview);
    state->view = IslandView::approval;
    state->syncView();
    EXPECT_EQ(state->view, IslandView::approval);
}

TEST_F(AppStateTest, AtMostFourToolsAreActive)
{
    make();
    for (const QString id : {"integration_stripe", "agent_gemini", "ai_openai", "agent_cursor"})
        state->toggleIntegration(id);
    EXPECT_EQ(ids(),
              QStringList({"integration_claude", "agent_cursor", "agent_gemini", "ai_openai",
                           "integration_stripe"}));
    state->toggleIntegration("integration_n8n");
    EXPECT_FALSE(state->task("integration_n8n"));
    state->setFocus("ai_openai");
    state->toggleIntegration("ai_openai");
    EXPECT_FALSE(state->task("ai_openai"));
    EXPECT_EQ(state->focusId.value(), "integration_claude");

    // Neither the main pill nor what is no tool takes the room.
    for (const QString id : {"integration_claude", "agent_foo"})
        state->toggleIntegration(id);
    EXPECT_EQ(state->activeIntegrations.value().size(), 3);
}

TEST_F(AppStateTest, HookAgentsStandBehindTheEditorsPillElseInFront)
{
    make().toggleIntegration("agent_cursor");
    append("agent_foo");
    append("agent_bar");
    state->loadIntegrationTasks();
    EXPECT_EQ(ids(), QStringList({"integration_claude", "agent_foo", "agent_bar", "agent_cursor"}));

    state->mainPillId = "agent_cursor";
    state->loadIntegrationTasks();
    EXPECT_EQ(ids(), QStringList({"agent_foo", "agent_bar", "agent_cursor"}));
    EXPECT_FALSE(state->activeIntegrations.value().contains("agent_cursor"));
}

TEST_F(AppStateTest, LoadingDropsWhatTheCatalogueDoesNotHold)
{
    store.values["activeIntegrations"] = QByteArray(R"(["integration_claude","foo","ai_google"])");
    queue.advance(7);
    make();
    EXPECT_EQ(state->lastActivity.value(), 7);
    EXPECT_EQ(state->activeIntegrations.value(), QSet<QString>{"ai_google"});
    EXPECT_EQ(store.bytes("activeIntegrations"), R"(["ai_google"])");
    EXPECT_EQ(ids(), QStringList({"integration_claude", "ai_google"}));

    state->mainPillId = "integration_stripe";
    state->loadIntegrationTasks();
    EXPECT_EQ(state->mainPillId.value(), "integration_claude");
    EXPECT_EQ(store.text("mainPill"), "integration_claude");
}

} // namespace
