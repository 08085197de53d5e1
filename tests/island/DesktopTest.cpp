#include "IslandFixture.h"

using namespace tirlo;

namespace {

/// The island on a desktop where screens, panels, full-screen windows and locks come and go.
class DesktopTest : public IslandFixture
{
protected:
    DesktopTest() { show(); }

    IslandPanel &panel = controller.panel();
    const QRectF screen = FakeScreens::plain().frame;
};

TEST_F(DesktopTest, ThePanelFollowsTheNotchElseTheMainScreenAndWaitsForOne)
{
    const ScreenInfo notched = FakeScreens::notched();
    ScreenInfo small;
    small.frame = small.visibleFrame = {-640, 30, 640, 480};

    ask();
    screens.become({FakeScreens::plain(), notched});
    EXPECT_EQ(panel.geometry(), QRect(1440 + 756 - 360, 100, 720, 320));
    EXPECT_EQ(panel.notchWidth, 200);
    EXPECT_EQ(state.notchHeight, 38);
    EXPECT_TRUE(state.hasNotch);
    screens.become({});
    EXPECT_FALSE(panel.isVisible());
    screens.become({small});
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(panel.geometry(), QRect(-680, 30, 720, 320));
    EXPECT_FALSE(state.hasNotch);
    EXPECT_TRUE(isOpenOn(IslandView::approval)) << "and all the time it is the same island";
}

TEST_F(DesktopTest, WhereTheUserLikesItIsTheScreenWithThePointerOnceItOpens)
{
    const ScreenInfo right = FakeScreens::notched();
    screens.become({FakeScreens::plain(), right});
    state.islandScreen = IslandScreen::pointer;
    pointer.at = {100, 500};
    island.open(IslandView::overview);
    EXPECT_EQ(panel.x(), 360);
    pointer.at = right.frame.center();
    island.show(IslandView::note);
    EXPECT_EQ(panel.x(), 360) << "an open one stays";
    island.collapse();
    island.open(IslandView::overview);
    EXPECT_EQ(panel.x(), 1836);
    screens.become({FakeScreens::plain()});
    EXPECT_EQ(panel.x(), 360) << "that screen has gone";
}

TEST_F(DesktopTest, ItHangsFromAPanelUnlessThereIsANotchOrFullScreen)
{
    ScreenInfo barred = FakeScreens::plain(30);
    barred.topPanel = 30;
    screens.become({barred});
    EXPECT_EQ(panel.pos(), QPoint(360, 30));
    state.islandPosition = IslandPosition::screenEdge;
    EXPECT_EQ(panel.y(), 0);
    state.islandPosition = IslandPosition::automatic;
    windows.fill(screen);
    EXPECT_EQ(panel.y(), 0);
    windows.fill({});
    EXPECT_EQ(panel.y(), 30);

    ScreenInfo notched = FakeScreens::notched();
    notched.topPanel = 38;
    screens.become({notched});
    EXPECT_EQ(panel.y(), 100);
    state.islandPosition = IslandPosition::belowPanel;
    EXPECT_EQ(panel.y(), 138);
    EXPECT_FALSE(state.hasNotch) << "it is not in it";
    screens.become({FakeScreens::plain()});
    EXPECT_EQ(panel.y(), screens.statusBarThickness()) << "of this panel nobody tells";
}

TEST_F(DesktopTest, OnAScreenThatIsTooNarrowAnOpenOneSlidesUnderThePointer)
{
    ScreenInfo narrow;
    narrow.frame = narrow.visibleFrame = {0, 0, 320, 480};
    screens.become({narrow});
    EXPECT_EQ(panel.x(), -200);
    island.open(IslandView::overview);
    point({0, 20});
    EXPECT_EQ(panel.x(), -40) << "its left end is at the screen's";
    point({320, 20});
    EXPECT_EQ(panel.x(), -360) << "and here its right one";
    point({320, 400});
    EXPECT_EQ(panel.x(), -360);
    island.collapse();
    EXPECT_EQ(panel.x(), -200);
}

TEST_F(DesktopTest, OverFullScreenOnlyWhatAsksIsDrawnAndHeard)
{
    windows.fill(FakeScreens::notched().frame);
    EXPECT_TRUE(panel.isVisible()) << "that is another screen";
    windows.fill(screen);
    EXPECT_FALSE(panel.isVisible());
    point(onTheTab);
    point(away);
    Q_EMIT notifications.hookReveal();
    island.open(IslandView::overview);
    EXPECT_FALSE(panel.isVisible());
    EXPECT_TRUE(sounds.played.isEmpty());

    ask();
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(sounds.played, QStringList{QStringLiteral("open")});
    state.requestsOverFullscreen = false;
    EXPECT_FALSE(panel.isVisible());
    windows.fill({});
    EXPECT_TRUE(panel.isVisible());
    EXPECT_TRUE(isOpenOn(IslandView::approval));
    EXPECT_EQ(sounds.played.count(QStringLiteral("open")), 2);
}

TEST_F(DesktopTest, AGreetingThatFullScreenHidesIsOver)
{
    island.greet();
    windows.fill(screen);
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
    island.greet();
    windows.fill({});
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
}

TEST_F(DesktopTest, InALockedSessionNothingIsShownOrOpensAndRequestsComeUpAfterwards)
{
    ask();
    lock.setLocked(true);
    EXPECT_FALSE(panel.isVisible());
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
    state.hotkeyEnabled = true;
    input.pressKey(state.hotkeyCode, state.hotkeyFlags);
    Q_EMIT notifications.hookExpand(IslandView::approval);
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
    lock.setLocked(false);
    EXPECT_TRUE(panel.isVisible());
    EXPECT_TRUE(isOpenOn(IslandView::approval));
    EXPECT_TRUE(state.isPinned);

    lock.setLocked(true);
    state.pendingApproval = std::nullopt;
    lock.setLocked(false);
    EXPECT_EQ(state.mode.value(), IslandMode::compact) << "it was settled meanwhile";
}

TEST_F(DesktopTest, ItComesForwardWhenItHasToBeSeenButFightsWithNobody)
{
    panelWindow.isBelowWindow = true;
    panelWindow.change();
    queue.advance(1);
    EXPECT_EQ(panelWindow.raises, 0) << "a hidden one waits for nothing";
    Q_EMIT notifications.hookReveal();
    EXPECT_EQ(panelWindow.raises, 1);
    panelWindow.isBelowMenu = true;
    panelWindow.change();
    queue.advance(1);
    EXPECT_EQ(panelWindow.raises, 1) << "a menu may lie over a closed one";
    ask();
    EXPECT_EQ(panelWindow.raises, 2);

    queue.advance(20);
    panelWindow.isBelowWindow = panelWindow.coverInsists = true;
    for (int i = 0; i < 100; ++i) {
        panelWindow.change();
        queue.advance(0.05);
    }
    EXPECT_LE(panelWindow.raises, 2 + 6);
    EXPECT_GE(panelWindow.raises, 2 + 3);
    queue.advance(20);
    panelWindow.change();
    queue.advance(1);
    EXPECT_GT(panelWindow.raises, 2 + 6 - 1) << "it has not given up for ever";
}

TEST_F(DesktopTest, WhoeverMovesOrResizesThePanelIsUndoneAFewTimes)
{
    const QRect place = panel.geometry();
    panel.setFixedSize(100, 100);
    panel.move(5, 5);
    panel.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    queue.advance(0.1);
    EXPECT_EQ(panel.geometry(), place);
    for (int i = 0; i < 20; ++i) {
        panel.move(i, 7);
        queue.advance(0.1);
    }
    EXPECT_EQ(panel.y(), 7) << "somebody else really wants it there";
    queue.advance(11);
    panel.move(1, 1);
    queue.advance(0.1);
    EXPECT_EQ(panel.geometry(), place);
}

} // namespace
