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
    const QList<AgentTask> usual = state.tasks.value();
    const auto idsWith = [&](const QStringList &added, bool hasMain) {
        state.tasks = hasMain ? usual : QList<AgentTask>();
        state.focusId = hasMain ? std::optional(claude) : std::nullopt;
        for (const QString &id : added) {
            if (id == cursor)
                tasks.upsertWorkspaceTask(id, u"P"_s, u"/p"_s);
            else
                tasks.upsertExternalAgent(id, id.mid(6));
        }
        EXPECT_EQ(state.focusId.value(), hasMain ? claude : added.first());
        return ids();
    };
    EXPECT_EQ(idsWith({foo, cursor}, true), QStringList({claude, cursor, foo}));
    EXPECT_EQ(idsWith({cursor, foo, foo}, true), QStringList({claude, foo, cursor}));
    EXPECT_EQ(idsWith({foo, bar, cursor}, false), QStringList({cursor, foo, bar}));
    EXPECT_EQ(task(foo).name, u"foo"_s);
    EXPECT_FALSE(task(foo).isIntegration);
    EXPECT_TRUE(task(cursor).isIntegration);
    tasks.upsertWorkspaceTask(cursor, u"Q"_s, u"/q"_s);
    tasks.upsertWorkspaceTask(cursor, u"R"_s, QString());
    EXPECT_EQ(task(cursor).name, u"R"_s);
    EXPECT_EQ(task(cursor).sessionCwd, u"/q"_s);
}

TEST_F(HookTasksTest, KeepsTheTwentyLatestSteps)
{
    for (int i = 0; i < 22; ++i) {
        tasks.appendStep(claude, QString::number(i));
        EXPECT_EQ(task(claude).stepIndex, std::min(i, 19));
    }
    EXPECT_EQ(task(claude).steps.size(), 20);
    EXPECT_EQ(task(claude).steps.first(), u"2"_s);
    EXPECT_EQ(task(claude).steps.last(), u"21"_s);
}

TEST_F(HookTasksTest, AsksForTheIslandAsFarAsTheViewDeserves)
{
    using enum IslandView;
    const auto asked = [this](IslandView view, bool hasApproval = false) {
        expanded.clear();
        reveals = 0;
        state.pendingApproval = hasApproval ? std::optional(ApprovalInfo()) : std::nullopt;
        tasks.expandIfNeeded(view);
        return std::string(expanded.contains(view) ? "opens" : "") + (reveals == 1 ? "shows" : "");
    };
    EXPECT_EQ(asked(overview), "shows");
    EXPECT_EQ(asked(question), "shows");
    EXPECT_EQ(asked(finished), "opens");
    EXPECT_EQ(asked(confused), "opens");
    EXPECT_EQ(asked(error, true), "") << "an approval on show is never replaced";
}

} // namespace
} // namespace tirlo
