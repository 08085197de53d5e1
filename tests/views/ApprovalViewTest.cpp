#include "ViewFixture.h"

#include "ui/CodeBlock.h"

#include <QAccessible>

namespace tirlo {

namespace {

class ApprovalViewTest : public ViewFixture
{
protected:
    ApprovalViewTest()
    {
        setTasks({task(QStringLiteral("agent_shop"), QStringLiteral("shop"))});
        setApproval(QStringLiteral("npm test"), QStringLiteral("agent_shop"));
        open(IslandView::approval);
    }

    [[nodiscard]] const CodeBlock *code() const { return root->findChild<CodeBlock *>(); }
};

TEST_F(ApprovalViewTest, ItShowsWhoAsksForWhatAndAnswersWithTheDecision)
{
    const QString who = QStringLiteral("shop");
    const QString label = QStringLiteral("needs permission");
    const QString command = QStringLiteral("npm test");
    const QStringList all{QStringLiteral("Deny"), QStringLiteral("Always"),
                          QStringLiteral("Allow")};
    struct Case
    {
        const char *pillId;
        QList<AgentTask> tasks;
        QStringList texts;
        QStringList buttons;
    };
    const QList<AgentTask> shop{task(QStringLiteral("agent_shop"), who)};
    for (const auto &[pillId, tasks, texts, buttons] :
         {Case{"agent_shop", shop, {who, label, command}, all},
          // It has no rule file for a standing approval.
          Case{"agent_codex", shop, {who, label, command}, {all.first(), all.last()}},
          Case{"agent_shop", {}, {label, command}, all}}) {
        SCOPED_TRACE(pillId);
        setTasks(tasks);
        setApproval(command, QString::fromLatin1(pillId));
        EXPECT_EQ(visibleTexts(), texts);
        EXPECT_EQ(visibleButtons(), buttons);
        decisions.clear();
        QStringList expected;
        for (const QString &name : buttons) {
            click(name);
            expected.append(name.toLower());
        }
        EXPECT_EQ(decisions, expected);
    }
    state.pendingApproval = std::nullopt;
    EXPECT_TRUE(code()->text().isEmpty());
    EXPECT_EQ(visibleButtons(), all);
}

TEST_F(ApprovalViewTest, TheWholeCommandIsTheAccessibleNameHoweverLong)
{
    const QString command
        = QStringLiteral("echo ") + QString(1'000'000, u'x') + QStringLiteral("\n<b>rm</b> -rf /");
    setApproval(command, QStringLiteral("agent_shop"));
    QAccessibleInterface *accessible
        = QAccessible::queryAccessibleInterface(root->findChild<CodeBlock *>());
    ASSERT_TRUE(accessible);
    EXPECT_EQ(accessible->text(QAccessible::Name), command);
    EXPECT_LE(code()->geometry().right(), code()->parentWidget()->width());
}

} // namespace

} // namespace tirlo
