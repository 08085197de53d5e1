#include "IslandFixture.h"

using namespace tirlo;

namespace {

using IslandWindowControllerTest = IslandFixture;

TEST_F(IslandWindowControllerTest, PanelHangsAtTheTopCentreOfItsScreen)
{
    EXPECT_EQ(controller.panel().geometry(), QRect(360, 0, 720, 320));
    EXPECT_FALSE(state.hasNotch);
    show();
    controller.panel().move(0, 0);
    controller.expand(IslandView::note);
    QCoreApplication::processEvents();
    EXPECT_EQ(controller.panel().pos(), QPoint(360, 0)) << "and goes back there on a change";

    const FakeScreens two({FakeScreens::plain(), FakeScreens::notched()});
    ManualFrameDriver otherDriver(queue);
    IslandWindowController other({two, shape, pointer, input, windows, applications, otherDriver},
                                 state, notifications, sounds, queue);
    EXPECT_EQ(other.panel().geometry(), QRect(1440 + 756 - 360, 100, 720, 320));
    EXPECT_EQ(other.panel().notchWidth, 200);
    EXPECT_EQ(state.notchHeight, 38);
    EXPECT_TRUE(state.hasNotch);
}

TEST_F(IslandWindowControllerTest, PendingApprovalHoldsTheIslandOpenAndIsItsView)
{
    EXPECT_EQ(controller.defaultView(), IslandView::overview);
    state.tasks = QList<AgentTask>();
    EXPECT_EQ(controller.defaultView(), IslandView::empty);
    wait();
    EXPECT_EQ(controller.defaultView(), IslandView::approval);
    controller.expand(IslandView::approval);
    state.isPinned = true;
    controller.collapse();
    Q_EMIT notifications.islandCollapse();
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
    controller.setMode(IslandMode::hidden);
    EXPECT_TRUE(state.isPinned) << "a held pin outlives a change of mode";
}

TEST_F(IslandWindowControllerTest, NotificationsOpenRevealAndClose)
{
    queue.advance(7);
    Q_EMIT notifications.hookExpand(IslandView::finished);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
    EXPECT_EQ(state.view.value(), IslandView::finished);
    EXPECT_EQ(state.lastActivity, 7);
    state.isPinned = true;

    Q_EMIT notifications.hookReveal();
    EXPECT_EQ(state.mode.value(), IslandMode::expanded) << "a peek closes nothing";

    Q_EMIT notifications.islandCollapse();
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
    EXPECT_FALSE(state.isPinned);
    EXPECT_EQ(sounds.played, (QStringList{QStringLiteral("open"), QStringLiteral("close")}));

    queue.advance(60);
    ASSERT_EQ(state.mode.value(), IslandMode::hidden) << "nobody looked at it";
    sounds.played.clear();
    Q_EMIT notifications.hookReveal();
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
    EXPECT_EQ(sounds.played, QStringList{QStringLiteral("peek")});

    state.mode = IslandMode::hidden;
    controller.fsm().reveal();
    queue.advance(0.1);
    EXPECT_EQ(controller.fsm().state(), IslandStateMachine::State::hidden)
        << "the machine follows a store that hides the island";
}

TEST_F(IslandWindowControllerTest, InputRegionIsTheOutlineAndFollowsItOnChangeOnly)
{
    show();
    ASSERT_FALSE(shape.regions.empty());
    EXPECT_EQ(shape.regions.back().boundingRect(), QRect(240, 0, 240, 24));
    const auto count = shape.regions.size();
    state.view = IslandView::note;
    state.tasks = QList<AgentTask>();
    EXPECT_EQ(shape.regions.size(), count) << "a closed island looks the same on every view";

    state.mode = IslandMode::expanded;
    ASSERT_EQ(shape.regions.size(), count + 1);
    EXPECT_EQ(shape.regions.back().boundingRect(), QRect(40, 0, 640, 160));
    EXPECT_FALSE(shape.regions.back().contains(QPoint(42, 158))) << "round at the lower corners";
    state.view = IslandView::prompt;
    state.chatHistory = {ChatMessage{}};
    EXPECT_EQ(shape.regions.back().boundingRect().height(), 280);
}

TEST_F(IslandWindowControllerTest, OnlyARequestOutlastsTheGreetingsEnd)
{
    controller.fsm().beginGreeting();
    EXPECT_EQ(state.view.value(), IslandView::greeting);
    controller.expand(IslandView::overview);
    Q_EMIT notifications.greetComplete();
    queue.advance(1);
    EXPECT_EQ(state.mode.value(), IslandMode::compact) << "another card closes with it";

    controller.fsm().beginGreeting();
    wait();
    Q_EMIT notifications.hookExpand(IslandView::approval);
    Q_EMIT notifications.greetComplete();
    queue.advance(100);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
    EXPECT_EQ(state.view.value(), IslandView::approval);
}

TEST_F(IslandWindowControllerTest, ADizzySpellEndsWhereItBegan)
{
    QList<BotEmote> emotes;
    QObject::connect(&notifications, &Notifications::triggerEmote, &notifications,
                     [&](BotEmote emote) { emotes.append(emote); });
    const auto spell = [this](double seconds) {
        Q_EMIT notifications.botDizzy();
        EXPECT_EQ(state.stateOverride.value(), BotState::dizzy);
        EXPECT_EQ(state.view.value(), IslandView::confused);
        queue.advance(seconds);
    };
    controller.expand(IslandView::prompt);
    spell(3.4);
    EXPECT_EQ(state.view.value(), IslandView::prompt);
    EXPECT_FALSE(state.stateOverride.value());

    spell(1);
    state.view = IslandView::settings;
    queue.advance(2.4);
    EXPECT_EQ(state.view.value(), IslandView::settings) << "the user has moved on";
    EXPECT_FALSE(state.stateOverride.value());

    spell(2);
    spell(2);
    EXPECT_EQ(state.view.value(), IslandView::confused) << "the second spell starts anew";
    queue.advance(1.4);
    EXPECT_EQ(state.view.value(), IslandView::overview);
    EXPECT_EQ(emotes, QList<BotEmote>(3, BotEmote::happy));
}

} // namespace
