#include "hooks/HookTasks.h"
#include "HookFixture.h"

namespace tirlo {
namespace {

struct HookTasksTest : HookFixture
{
    QStringList ids() const
    {
        QStringList ids;
        for (const AgentTask &task : state.tasks.value())
            ids += task.id;
        return ids;
    }

    HookTasks tasks{state, notifications};
    const QString claude = u"integration_claude"_s;
    const QString cursor = u"agent_cursor"_s;
    const QString foo = u"agent_foo"_s;
    const QString bar = u"agent_bar"_s;
};

TEST_F(HookTasksTest, WorkspacePillStandsBehindTheMainOne)
{
    tasks.upsertExternalAgent(foo, u"foo"_s);
    tasks.upsertWorkspaceTask(cursor, u"P"_s, u"/p"_s);
    EXPECT_EQ(ids(), QStringList({claude, cursor, foo}));
    EXPECT_EQ(task("agent_cursor").color, u"#C0C4CC"_s);
    EXPECT_TRUE(task("agent_cursor").isIntegration);
    EXPECT_EQ(task("agent_cursor").sessionCwd, std::nullopt);

    tasks.upsertWorkspaceTask(cursor, u"Q"_s, u"/q"_s);
    tasks.upsertWorkspaceTask(cursor, u"R"_s, QString());
    EXPECT_EQ(task("agent_cursor").name, u"R"_s);
    EXPECT_EQ(task("agent_cursor").sessionCwd, u"/q"_s);
    EXPECT_EQ(ids().size(), 3);
}

TEST_F(HookTasksTest, ExternalPillStandsBehindTheEditor)
{
    tasks.upsertWorkspaceTask(cursor, u"P"_s, QString());
    tasks.upsertExternalAgent(foo, u"foo"_s);
    tasks.upsertExternalAgent(foo, u"other"_s);
    EXPECT_EQ(ids(), QStringList({claude, foo, cursor}));
    EXPECT_EQ(task("agent_foo").name, u"foo"_s);
    EXPECT_FALSE(task("agent_foo").isIntegration);
}

TEST_F(HookTasksTest, FirstPillsOfAnEmptyListTakeFocusAndShowTheIsland)
{
    state.tasks = QList<AgentTask>();
    state.focusId = std::nullopt;
    state.mode = IslandMode::hidden;
    tasks.upsertExternalAgent(foo, u"foo"_s);
    tasks.upsertExternalAgent(bar, u"bar"_s);
    tasks.upsertWorkspaceTask(cursor, u"P"_s, QString());
    EXPECT_EQ(ids(), QStringList({cursor, foo, bar}));
    EXPECT_EQ(state.focusId.value(), foo);
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
}

TEST_F(HookTasksTest, KeepsTheTwentyLatestSteps)
{
    for (int i = 0; i < 22; ++i) {
        tasks.appendStep(claude, QString::number(i));
        EXPECT_EQ(task("integration_claude").stepIndex, std::min(i, 19));
    }
    EXPECT_EQ(task("integration_claude").steps.size(), 20);
    EXPECT_EQ(task("integration_claude").steps.first(), u"2"_s);
    EXPECT_EQ(task("integration_claude").steps.last(), u"21"_s);
}

TEST_F(HookTasksTest, OpensTheIslandAsFarAsTheViewDeserves)
{
    enum class Outcome { nothing, expand, reveal, view };
    using enum IslandView;
    const struct
    {
        IslandMode mode;
        bool hasApproval;
        IslandView view;
        Outcome outcome;
    } rows[] = {
        {IslandMode::hidden, false, overview, Outcome::reveal},
        {IslandMode::hidden, false, finished, Outcome::expand},
        {IslandMode::compact, false, overview, Outcome::nothing},
        {IslandMode::compact, true, error, Outcome::expand},
        {IslandMode::compact, false, question, Outcome::nothing},
        {IslandMode::expanded, false, question, Outcome::nothing},
        {IslandMode::expanded, false, confused, Outcome::view},
        {IslandMode::expanded, true, finished, Outcome::nothing},
        {IslandMode::expanded, true, approval, Outcome::view},
    };
    for (const auto &row : rows) {
        expanded.clear();
        reveals = 0;
        state.mode = row.mode;
        state.view = prompt;
        state.pendingApproval = row.hasApproval ? std::optional(ApprovalInfo()) : std::nullopt;
        tasks.expandIfNeeded(row.view);
        EXPECT_EQ(expanded.contains(row.view), row.outcome == Outcome::expand);
        EXPECT_EQ(reveals == 1, row.outcome == Outcome::reveal);
        EXPECT_EQ(state.view == row.view, row.outcome == Outcome::view);
    }
}

} // namespace
} // namespace tirlo
