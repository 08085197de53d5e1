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

TEST_F(HookTasksTest, NewPillsStandBehindTheMainOne)
{
    const struct
    {
        bool hasMain;
        QStringList added;
        QStringList ids;
        QString focus;
    } rows[] = {
        {true, {foo, cursor}, {claude, cursor, foo}, claude},
        {true, {cursor, foo, foo}, {claude, foo, cursor}, claude},
        {false, {foo, bar, cursor}, {cursor, foo, bar}, foo},
    };
    const QList<AgentTask> usual = state.tasks.value();
    for (const auto &row : rows) {
        state.tasks = row.hasMain ? usual : QList<AgentTask>();
        state.focusId = row.hasMain ? std::optional(claude) : std::nullopt;
        state.mode = IslandMode::hidden;
        for (const QString &id : row.added) {
            if (id == cursor)
                tasks.upsertWorkspaceTask(id, u"P"_s, u"/p"_s);
            else
                tasks.upsertExternalAgent(id, id.mid(6));
        }
        EXPECT_EQ(ids(), row.ids);
        EXPECT_EQ(state.focusId.value(), row.focus);
        EXPECT_EQ(state.mode.value(), IslandMode::compact);
    }
    EXPECT_EQ(task("agent_foo").name, u"foo"_s);
    EXPECT_FALSE(task("agent_foo").isIntegration);
    EXPECT_TRUE(task("agent_cursor").isIntegration);
    EXPECT_EQ(task("agent_cursor").color, u"#C0C4CC"_s);
    EXPECT_EQ(task("agent_cursor").sessionCwd, std::nullopt);

    tasks.upsertWorkspaceTask(cursor, u"Q"_s, u"/q"_s);
    tasks.upsertWorkspaceTask(cursor, u"R"_s, QString());
    EXPECT_EQ(task("agent_cursor").name, u"R"_s);
    EXPECT_EQ(task("agent_cursor").sessionCwd, u"/q"_s);
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
