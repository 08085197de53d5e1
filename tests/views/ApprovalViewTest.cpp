#include "ViewFixture.h"

#include "ui/CodeBlock.h"

#include <QAccessible>
#include <QTest>

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

TEST_F(ApprovalViewTest, ButtonsAnswerWithTheirDecision)
{
    EXPECT_EQ(
        visibleButtons(),
        (QStringList{QStringLiteral("Deny"), QStringLiteral("Always"), QStringLiteral("Allow")}));
    click(QStringLiteral("Allow"));
    click(QStringLiteral("Always"));
    click(QStringLiteral("Deny"));
    EXPECT_EQ(
        decisions,
        (QStringList{QStringLiteral("allow"), QStringLiteral("always"), QStringLiteral("deny")}));
}

TEST_F(ApprovalViewTest, CodexHasNoStandingApproval)
{
    setApproval(QStringLiteral("ls"), QStringLiteral("agent_codex"));
    EXPECT_EQ(visibleButtons(), (QStringList{QStringLiteral("Deny"), QStringLiteral("Allow")}));
    click(QStringLiteral("Allow"));
    EXPECT_EQ(decisions, QStringList{QStringLiteral("allow")});

    setApproval(QStringLiteral("ls"), QStringLiteral("agent_shop"));
    EXPECT_EQ(visibleButtons().size(), 3);
}

TEST_F(ApprovalViewTest, ShowsWhoAsksForWhat)
{
    EXPECT_TRUE(visibleTexts().contains(QStringLiteral("shop")));
    EXPECT_TRUE(visibleTexts().contains(QStringLiteral("needs permission")));
    EXPECT_EQ(code()->text(), QStringLiteral("npm test"));

    setTasks({});
    EXPECT_FALSE(visibleTexts().contains(QStringLiteral("shop"))) << "the label stands alone";
    EXPECT_TRUE(visibleTexts().contains(QStringLiteral("needs permission")));

    state.pendingApproval = std::nullopt;
    EXPECT_TRUE(code()->text().isEmpty());
    EXPECT_EQ(visibleButtons().size(), 3);
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

TEST_F(ApprovalViewTest, ButtonsCanBeReachedByKeyAndByTheScreenReader)
{
    for (const char *name : {"Deny", "Always", "Allow"}) {
        QAbstractButton *target = button(QString::fromLatin1(name));
        ASSERT_TRUE(target);
        EXPECT_TRUE(target->focusPolicy() & Qt::TabFocus);
        EXPECT_FALSE(target->focusPolicy() & Qt::ClickFocus) << "a click leaves the keyboard alone";

        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(target);
        EXPECT_EQ(accessible->role(), QAccessible::Button);
        EXPECT_EQ(accessible->text(QAccessible::Name), QString::fromLatin1(name));
        accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return decisions.size() == 3; }));
}

} // namespace

} // namespace tirlo
