#include "ViewFixture.h"

#include "views/IslandHeader.h"
#include "views/TabButton.h"

#include <QAccessible>
#include <QTest>
#include <QWindow>

namespace tirlo {

namespace {

class IslandHeaderTest : public ViewFixture
{
protected:
    IslandHeaderTest()
    {
        setTasks({task(QStringLiteral("a"), QStringLiteral("a"))});
        open(IslandView::overview);
    }

    /// The accessible names of the lit tabs.
    [[nodiscard]] QStringList litTabs() const
    {
        QStringList names;
        for (const TabButton *tab : root->findChildren<TabButton *>()) {
            if (tab->isOn() && tab->isChecked())
                names.append(tab->accessibleName());
        }
        return names;
    }

    /// The colour at the middle of a tab's left edge, where nothing but its background is.
    [[nodiscard]] QColor background(const QString &tab)
    {
        const QAbstractButton *found = button(tab);
        return picture().pixelColor(found->mapTo(root.get(), QPoint(1, 11)));
    }
};

TEST_F(IslandHeaderTest, TabsLeadToTheirViewAndAreLitOnIt)
{
    EXPECT_EQ(litTabs(), QStringList{QStringLiteral("Home")});
    EXPECT_EQ(background(QStringLiteral("Home")), QColor(0x1D, 0x1F, 0x23));
    EXPECT_EQ(background(QStringLiteral("Chat")), QColor(Qt::black));

    click(QStringLiteral("Chat"));
    EXPECT_EQ(state.view.value(), IslandView::prompt);
    EXPECT_EQ(litTabs(), QStringList{QStringLiteral("Chat")});
    click(QStringLiteral("Drop a file"));
    EXPECT_EQ(state.view.value(), IslandView::upload);
    EXPECT_EQ(litTabs(), QStringList{QStringLiteral("Drop a file")});
    click(QStringLiteral("Drop a file"));
    EXPECT_EQ(litTabs(), QStringList{QStringLiteral("Drop a file")}) << "a click never puts it out";

    state.view = IslandView::empty;
    EXPECT_EQ(litTabs(), QStringList{QStringLiteral("Home")});
    state.view = IslandView::approval;
    EXPECT_TRUE(litTabs().isEmpty());
    queue.advance(1);
    click(QStringLiteral("Home"));
    EXPECT_EQ(state.view.value(), IslandView::overview);
    queue.advance(0.1);
    QTest::mouseMove(root->windowHandle(), QPoint(300, 300));
    EXPECT_GT(background(QStringLiteral("Home")).green(), 0) << "it lights up";
    EXPECT_LT(background(QStringLiteral("Home")).green(), 0x1F) << "and nothing jumps";
    queue.advance(1);
    EXPECT_EQ(background(QStringLiteral("Home")), QColor(0x1D, 0x1F, 0x23));

    click(QStringLiteral("Settings"));
    EXPECT_EQ(state.view.value(), IslandView::settings);
    click(QStringLiteral("Mute"));
    EXPECT_FALSE(state.soundEnabled.value());
    EXPECT_FALSE(button(QStringLiteral("Mute")));
    click(QStringLiteral("Unmute"));
    EXPECT_TRUE(state.soundEnabled.value());
}

TEST_F(IslandHeaderTest, OnlyTheChatNotesWhatTheUserLookedAtAndDoesSoFirst)
{
    click(QStringLiteral("Drop a file"));
    click(QStringLiteral("Home"));
    EXPECT_EQ(captures, 0);
    IslandView shownAtCapture = IslandView::note;
    onCapture = [&] { shownAtCapture = state.view; };
    click(QStringLiteral("Chat"));
    EXPECT_EQ(captures, 1);
    EXPECT_EQ(shownAtCapture, IslandView::overview);

    state.promptContext = PromptContext{};
    click(QStringLiteral("Chat"));
    EXPECT_EQ(captures, 1) << "what is attached already stays";
}

TEST_F(IslandHeaderTest, EveryControlHasANameAndARoleAndTheTabKeyFollowsTheEye)
{
    setApproval(QStringLiteral("ls"), QStringLiteral("a"));
    for (const IslandView view : allCases<IslandView>()) {
        open(view);
        for (QAbstractButton *control : root->findChildren<QAbstractButton *>()) {
            if (!control->isVisible())
                continue;
            const auto *told = QAccessible::queryAccessibleInterface(control);
            ASSERT_TRUE(told);
            EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << rawText(view).toStdString();
            EXPECT_TRUE(told->role() == QAccessible::Button
                        || told->role() == QAccessible::CheckBox)
                << told->role();
        }
    }

    open(IslandView::approval);
    root->activateWindow();
    button(QStringLiteral("Home"))->setFocus();
    QStringList order;
    for (int i = 0; i < 8; ++i) {
        order.append(root->focusWidget()->accessibleName());
        QTest::keyClick(root->windowHandle(), Qt::Key_Tab);
    }
    EXPECT_EQ(order.join(u' '),
              QStringLiteral("Home Chat Drop a file Settings Mute Deny Always Allow"));
}

TEST_F(IslandHeaderTest, ItFadesOnTheConfusedCardAndLeavesItsRoomBehind)
{
    const auto *header = root->findChild<IslandHeader *>();
    const auto brightness = [this] { return background(QStringLiteral("Home")).lightness(); };
    const int lit = brightness();
    const QRect room = header->geometry();

    state.view = IslandView::confused;
    // The card has come to rest before the home tab would lose its light.
    queue.advance(0.1);
    EXPECT_TRUE(header->isVisible()) << "it fades and doesn't vanish";
    click(QStringLiteral("Chat"));
    EXPECT_EQ(state.view.value(), IslandView::confused) << "but it can't be reached any more";
    queue.advance(0.12);
    EXPECT_FALSE(header->isVisible());
    EXPECT_FALSE(button(QStringLiteral("Home")));
    EXPECT_EQ(header->geometry(), room);

    state.view = IslandView::overview;
    EXPECT_EQ(brightness(), 0);
    queue.advance(0.1);
    EXPECT_GT(brightness(), 0);
    EXPECT_LT(brightness(), lit);
    queue.advance(0.12);
    EXPECT_EQ(brightness(), lit);
}

} // namespace

} // namespace tirlo
