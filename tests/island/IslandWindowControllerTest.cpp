#include "island/IslandWindowController.h"
#include "core/AppState.h"
#include "core/Notifications.h"
#include "support/FakeScreens.h"
#include "support/FakeWindowShape.h"
#include "support/ManualQueue.h"
#include "support/MemoryStore.h"
#include "support/RecordingSoundEngine.h"

#include <QTest>

#include <gtest/gtest.h>

namespace tirlo {

namespace {

class IslandWindowControllerTest : public testing::Test
{
protected:
    void wait()
    {
        state.pendingApproval = ApprovalInfo{.sessionId = {},
                                             .tool = {},
                                             .command = QStringLiteral("ls"),
                                             .inputKey = {},
                                             .pillId = {}};
    }

    void show()
    {
        controller.showWindow();
        QCoreApplication::processEvents();
    }

    void press(const QPoint &position)
    {
        QTest::mousePress(&controller.panel(), Qt::LeftButton, Qt::NoModifier, position);
    }

    ManualQueue queue;
    MemoryStore store;
    AppState state{store, queue};
    Notifications notifications;
    RecordingSoundEngine sounds;
    FakeScreens screens;
    FakeWindowShape shape;
    IslandWindowController controller{screens, shape, state, notifications, sounds, queue};
};

TEST_F(IslandWindowControllerTest, PanelHangsAtTheTopCentreOfItsScreen)
{
    EXPECT_EQ(controller.panel().geometry(), QRect(360, 0, 720, 320));
    EXPECT_EQ(state.notchWidth, 80);
    EXPECT_EQ(state.notchHeight, 24);
    EXPECT_FALSE(state.hasNotch);

    const FakeScreens two({FakeScreens::plain(), FakeScreens::notched()});
    IslandWindowController other(two, shape, state, notifications, sounds, queue);
    EXPECT_EQ(other.panel().geometry(), QRect(1440 + 756 - 360, 100, 720, 320));
    EXPECT_EQ(other.panel().notchWidth, 200);
    EXPECT_EQ(state.notchHeight, 38);
    EXPECT_TRUE(state.hasNotch);
}

TEST_F(IslandWindowControllerTest, NoScreenAtAllEndsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const FakeScreens none = FakeScreens::none();
    EXPECT_DEATH(IslandWindowController(none, shape, state, notifications, sounds, queue),
                 "no screen");
}

TEST_F(IslandWindowControllerTest, ExpandOpensOnTheViewAndCountsAsActivity)
{
    queue.advance(7);
    controller.expand(IslandView::note);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
    EXPECT_EQ(state.view.value(), IslandView::note);
    EXPECT_EQ(state.lastActivity, 7);

    queue.advance(1);
    controller.expand(IslandView::overview);
    EXPECT_EQ(state.lastActivity, 8);
    EXPECT_EQ(sounds.played, QStringList{QStringLiteral("open")}) << "it was open already";
}

TEST_F(IslandWindowControllerTest, CollapseGoesToCompactAndUnpins)
{
    controller.expand(IslandView::overview);
    state.isPinned = true;
    controller.collapse();
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
    EXPECT_FALSE(state.isPinned);
    EXPECT_EQ(sounds.played, (QStringList{QStringLiteral("open"), QStringLiteral("close")}));
}

TEST_F(IslandWindowControllerTest, PendingApprovalHoldsTheIslandOpen)
{
    wait();
    controller.expand(IslandView::approval);
    state.isPinned = true;
    controller.collapse();
    Q_EMIT notifications.islandCollapse();
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
    EXPECT_TRUE(state.isPinned);

    controller.setMode(IslandMode::hidden);
    EXPECT_TRUE(state.isPinned) << "a held pin outlives a change of mode";
}

TEST_F(IslandWindowControllerTest, DefaultViewIsTheApprovalElseWhatThereIs)
{
    EXPECT_EQ(controller.defaultView(), IslandView::overview);
    state.tasks = QList<AgentTask>();
    EXPECT_EQ(controller.defaultView(), IslandView::empty);
    wait();
    EXPECT_EQ(controller.defaultView(), IslandView::approval);
}

TEST_F(IslandWindowControllerTest, NotificationsOpenRevealAndClose)
{
    Q_EMIT notifications.hookExpand(IslandView::finished);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
    EXPECT_EQ(state.view.value(), IslandView::finished);

    Q_EMIT notifications.hookReveal();
    EXPECT_EQ(state.mode.value(), IslandMode::expanded) << "a peek closes nothing";

    Q_EMIT notifications.islandCollapse();
    EXPECT_EQ(state.mode.value(), IslandMode::compact);

    controller.setMode(IslandMode::hidden);
    sounds.played.clear();
    Q_EMIT notifications.hookReveal();
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
    EXPECT_EQ(sounds.played, QStringList{QStringLiteral("peek")});
}

TEST_F(IslandWindowControllerTest, PressOnAClosedIslandOpensItsDefaultView)
{
    show();
    press({360, 12});
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
    EXPECT_EQ(state.view.value(), IslandView::overview);

    controller.expand(IslandView::note);
    press({360, 12});
    EXPECT_EQ(state.view.value(), IslandView::note) << "an open island stays on its view";
}

TEST_F(IslandWindowControllerTest, InputRegionIsTheOutlineAndFollowsItOnChangeOnly)
{
    EXPECT_TRUE(shape.regions.empty()) << "there is no native window yet";
    show();
    ASSERT_FALSE(shape.regions.empty());
    EXPECT_EQ(shape.regions.back().boundingRect(), QRect(240, 0, 240, 24));

    const auto count = shape.regions.size();
    state.view = IslandView::note;
    state.tasks = QList<AgentTask>();
    EXPECT_EQ(shape.regions.size(), count) << "a closed island looks the same on every view";

    state.mode = IslandMode::expanded;
    ASSERT_EQ(shape.regions.size(), count + 1);
    const QRegion region = shape.regions.back();
    EXPECT_EQ(region.boundingRect(), QRect(40, 0, 640, 160));
    EXPECT_TRUE(region.contains(QPoint(40, 0)));
    EXPECT_FALSE(region.contains(QPoint(42, 158))) << "round at the lower corners";

    state.view = IslandView::prompt;
    state.chatHistory = {ChatMessage{}};
    EXPECT_EQ(shape.regions.back().boundingRect().height(), 280);
}

} // namespace

} // namespace tirlo
