#include "ViewFixture.h"

#include "ui/CodeBlock.h"
#include "views/frame/CountdownBar.h"

#include <QAccessible>

#include <array>
#include <limits>

using namespace tirlo;

namespace {

class StatusCardsTest : public ViewFixture
{
protected:
    StatusCardsTest()
    {
        setTasks({task("a", "shop", {"Lit", "Teste · npm test"})});
        QObject::connect(&notifications, &Notifications::islandCollapse, &notifications,
                         [this] { ++collapses; });
    }

    int collapses = 0;
};

TEST_F(StatusCardsTest, EachCardTellsItsTextsAndTheSamplesDoNothing)
{
    for (const IslandView view : {IslandView::question, IslandView::error}) {
        open(view);
        ASSERT_GE(visibleButtons().size(), 2);
        for (const QString &name : visibleButtons())
            click(name);
        EXPECT_EQ(state.view.value(), view);
    }
    EXPECT_EQ(collapses, 0);

    open(IslandView::finished);
    EXPECT_EQ(visibleTexts(), (QStringList{"shop", "Claude Code finished", "Teste · npm test"}));
    state.editTask("a", [](AgentTask &edited) { edited.steps.clear(); });
    EXPECT_EQ(visibleTexts(), (QStringList{"shop", "Claude Code finished", "Session finished"}));
    setTasks({});
    EXPECT_EQ(visibleTexts(), (QStringList{"Claude Code finished", "Session finished"}));

    open(IslandView::empty);
    click("Ask Claude");
    EXPECT_EQ(state.view.value(), IslandView::prompt);
    state.noteMessage = "Handled in VS Code.";
    open(IslandView::note);
    EXPECT_EQ(visibleTexts(), QStringList{"Handled in VS Code."});
}

TEST_F(StatusCardsTest, OpenTerminalTakesTheMostPreferredThatRuns)
{
    open(IslandView::finished);
    const RunningApplication editor{1, "com.microsoft.VSCode", {}};
    const RunningApplication kitty{1, "net.kovidgoyal.kitty", {}};
    const RunningApplication iTerm{2, "com.googlecode.iterm2", {}};
    const RunningApplication terminal{3, "com.apple.Terminal", {}};
    applications.installed = {"com.apple.Terminal"};
    for (const auto &alive : {std::vector{editor, kitty, iTerm, terminal}, {kitty}, {editor}}) {
        applications.alive = alive;
        click("Open terminal");
    }
    EXPECT_EQ(applications.activated, (std::vector{terminal, kitty}));
    EXPECT_EQ(applications.opened, QStringList{"com.apple.Terminal"});
    EXPECT_EQ(collapses, 3) << "the island goes either way";

    applications.alive = {terminal};
    click("Dismiss");
    EXPECT_EQ(collapses, 4);
    EXPECT_EQ(applications.activated.size(), 2U) << "dismissing does nothing else";
}

using ApprovalViewTest = ViewFixture;

TEST_F(ApprovalViewTest, ItShowsWhoAsksForWhatAndAnswersWithTheDecision)
{
    open(IslandView::approval);
    const QStringList all{"Deny", "Always", "Allow"};
    struct Case
    {
        const char *pillId;
        QList<AgentTask> tasks;
        QStringList texts;
        QStringList buttons;
    };
    for (const auto &[pillId, tasks, texts, buttons] :
         {Case{"agent_shop",
               {task("agent_shop", "shop")},
               {"shop", "needs permission", "npm test"},
               all},
          // It has no rule file for a standing approval.
          Case{"agent_codex",
               {task("agent_shop", "shop")},
               {"shop", "needs permission", "npm test"},
               {"Deny", "Allow"}},
          Case{"agent_shop", {}, {"needs permission", "npm test"}, all}}) {
        SCOPED_TRACE(pillId);
        setTasks(tasks);
        setApproval("npm test", pillId);
        queue.advance(0.5);
        EXPECT_EQ(visibleTexts(), texts);
        EXPECT_EQ(visibleButtons(), buttons);
        decisions.clear();
        for (const QString &name : buttons)
            click(name);
        EXPECT_EQ(decisions.join(u' '), buttons.join(u' ').toLower());
    }

    // What takes another's place can't be answered by a click that was meant for that.
    for (const bool hasGap : {false, true}) {
        if (hasGap)
            state.pendingApproval = std::nullopt;
        setApproval(hasGap ? "reboot" : "rm -rf /", "agent_shop");
        decisions.clear();
        click("Allow");
        EXPECT_TRUE(decisions.isEmpty());
        queue.advance(0.5);
        click("Allow");
        EXPECT_EQ(decisions.size(), 1);
    }

    auto *code = root->findChild<CodeBlock *>();
    state.pendingApproval = std::nullopt;
    EXPECT_TRUE(code->text().isEmpty());
    EXPECT_EQ(visibleButtons(), all);

    // The whole command is the accessible name, however long.
    const QString command = "echo " + QString(1'000'000, u'x') + "\n<b>rm</b> -rf /";
    setApproval(command, "agent_shop");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(code)->text(QAccessible::Name), command);
    EXPECT_LE(code->geometry().right(), code->parentWidget()->width());
}

using CountdownBarTest = ViewFixture;

TEST_F(CountdownBarTest, ItRunsOutWithTheTimeToClose)
{
    const auto width = [bar = root->findChild<CountdownBar *>()] { return bar->barWidth(); };
    island.setView(IslandView::note);
    island.setMode(IslandMode::expanded);
    using Case = std::array<double, 3>;
    for (const auto &[interval, passed, expected] :
         {Case{5, 1.95, 0}, Case{5, 2.15, 153}, Case{5, 3.5, 80}, Case{5, 30, 0}, Case{60, 49.9, 0},
          Case{60, 50.15, 158}, Case{0, 1, 0}, Case{-3, 1, 0},
          Case{std::numeric_limits<double>::quiet_NaN(), 1, 0}}) {
        state.autoCloseInterval = interval;
        state.lastActivity = queue.mediaTime();
        queue.advance(passed);
        EXPECT_NEAR(width(), expected, 6) << interval << ' ' << passed;
    }
    EXPECT_EQ(state.mode.value(), IslandMode::expanded) << "it closes nothing";

    state.autoCloseInterval = 5;
    state.lastActivity = queue.mediaTime();
    state.isPinned = true;
    queue.advance(4);
    EXPECT_EQ(width(), 0);
    state.isPinned = false;
    EXPECT_NEAR(width(), 1.0 / 3 * 160, 1);
    island.setMode(IslandMode::compact);
    EXPECT_EQ(width(), 0);
}

} // namespace
