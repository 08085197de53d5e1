#include "ViewFixture.h"

#include "ui/CodeBlock.h"

#include <QAccessible>

using namespace tirlo;

namespace {

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

} // namespace
