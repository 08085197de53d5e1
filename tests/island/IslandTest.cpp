#include "IslandFixture.h"

#include <QSignalSpy>

using namespace tirlo;

namespace {

using enum IslandMode;
using Card = IslandView;

class IslandTest : public IslandFixture
{
protected:
    void add(const char *pill)
    {
        AgentTask task;
        task.id = QLatin1String(pill);
        state.tasks = state.tasks.value() + QList{task};
    }

    /// Brings the island out of the way, the pointer with it.
    void hide()
    {
        island.pointerLeft();
        island.collapse();
        queue.advance(60);
        ASSERT_EQ(state.mode.value(), hidden);
        sounds.played.clear();
    }
};

TEST_F(IslandTest, NotificationsOpenRevealAndClose)
{
    queue.advance(7);
    Q_EMIT notifications.hookExpand(Card::finished);
    EXPECT_TRUE(isOpenOn(Card::finished));
    EXPECT_EQ(state.lastActivity, 7);
    state.isPinned = true;
    Q_EMIT notifications.hookReveal();
    EXPECT_EQ(state.mode.value(), expanded) << "a peek closes nothing";
    Q_EMIT notifications.islandCollapse();
    EXPECT_EQ(state.mode.value(), compact);
    EXPECT_FALSE(state.isPinned);
    EXPECT_EQ(sounds.played, (QStringList{QStringLiteral("open"), QStringLiteral("close")}));

    hide();
    Q_EMIT notifications.islandCollapse();
    EXPECT_EQ(state.mode.value(), hidden) << "nor does a close open anything";
    Q_EMIT notifications.hookReveal();
    EXPECT_EQ(state.mode.value(), compact);
    EXPECT_EQ(sounds.played, QStringList{QStringLiteral("peek")});
}

TEST_F(IslandTest, ItFollowsThePillsAsTheyComeAndGo)
{
    add("agent_a");
    EXPECT_EQ(state.mode.value(), compact) << "a new one shows the island";
    hide();
    state.updateTask(QStringLiteral("agent_a"), BotState::working);
    state.isPresent = false;
    add("agent_b");
    EXPECT_EQ(state.mode.value(), hidden) << "nobody is there to see it";
    state.isPresent = true;
    add("agent_c");
    state.tasks = QList<AgentTask>();
    EXPECT_EQ(state.mode.value(), hidden);
    island.pointerEntered();
    EXPECT_EQ(state.mode.value(), compact) << "the machine knows that it was hidden";

    island.click();
    EXPECT_TRUE(isOpenOn(Card::empty));
    add("agent_a");
    EXPECT_TRUE(isOpenOn(Card::overview));
    state.tasks = QList<AgentTask>();
    EXPECT_TRUE(isOpenOn(Card::empty)) << "an open one stays open";
    island.show(Card::settings);
    add("agent_a");
    EXPECT_TRUE(isOpenOn(Card::settings));
}

TEST_F(IslandTest, IntentsTurnItToACardAndOpenNothing)
{
    for (const bool isOpen : {false, true}) {
        if (isOpen)
            island.open(Card::overview);
        island.show(Card::prompt);
        island.leave(Card::finished);
        EXPECT_EQ(state.view.value(), Card::prompt);
        island.say(QStringLiteral("Done."));
        EXPECT_EQ(state.view.value(), Card::note);
        EXPECT_EQ(state.noteMessage.value(), QStringLiteral("Done."));
        island.leave(Card::note);
        EXPECT_EQ(state.view.value(), Card::overview);
        EXPECT_EQ(state.mode == expanded, isOpen);
    }
}

TEST_F(IslandTest, NoTimerPutsAWaitingRequestAwayOnWhicheverRoadItCame)
{
    const std::function<void()> roads[]{
        [this] { ask(); },
        [this] {
            island.greet();
            island.pointerEntered();
            ask();
        },
        [this] {
            island.greet();
            ask();
            Q_EMIT notifications.greetComplete();
        },
        [this] {
            Q_EMIT notifications.hookExpand(Card::finished);
            queue.advance(14);
            ask();
        },
        [this] {
            Q_EMIT notifications.hookExpand(Card::finished);
            state.pendingApproval = ApprovalInfo{};
            state.isPinned = true;
            island.show(Card::approval);
        },
        [this] {
            ask();
            Q_EMIT notifications.botDizzy();
            Q_EMIT notifications.botDizzy();
        },
    };
    for (const auto &road : roads) {
        SCOPED_TRACE(&road - roads);
        hide();
        road();
        island.pointerLeft();
        island.collapse();
        queue.advance(1000);
        EXPECT_TRUE(isOpenOn(Card::approval));
        EXPECT_TRUE(state.isPinned);
        island.show(Card::settings);
        island.click();
        EXPECT_TRUE(isOpenOn(Card::settings)) << "the user may look at another card";

        state.pendingApproval = std::nullopt;
        queue.advance(14.9);
        EXPECT_EQ(state.mode.value(), expanded);
        queue.advance(0.2);
        EXPECT_EQ(state.mode.value(), compact) << "answered, it falls back";
        EXPECT_FALSE(state.isPinned);
    }
}

TEST_F(IslandTest, AnEventsCardFallsBackAsIfThePointerHadJustLeft)
{
    Q_EMIT notifications.hookExpand(Card::finished);
    queue.advance(10);
    Q_EMIT notifications.hookExpand(Card::error);
    queue.advance(14.9);
    EXPECT_TRUE(isOpenOn(Card::error));
    queue.advance(0.2);
    EXPECT_EQ(state.mode.value(), compact);

    Q_EMIT notifications.hookExpand(Card::question);
    queue.advance(1000);
    EXPECT_TRUE(isOpenOn(Card::question)) << "it waits for the user";
    island.pointerEntered();
    Q_EMIT notifications.hookExpand(Card::finished);
    queue.advance(1000);
    EXPECT_TRUE(isOpenOn(Card::finished)) << "the pointer is on it";
}

TEST_F(IslandTest, TheGreetingEndsWithTheFilmTheUserOrAnotherCard)
{
    const QSignalSpy hovers(&notifications, &Notifications::greetingHover);
    const QSignalSpy interrupts(&notifications, &Notifications::greetingInterrupt);
    island.greet();
    island.pointerEntered();
    EXPECT_EQ(hovers.count(), 1);
    Q_EMIT notifications.greetComplete();
    queue.advance(5);
    EXPECT_TRUE(isOpenOn(Card::greeting)) << "ten seconds from the entry";
    island.pointerLeft();
    EXPECT_EQ(state.mode.value(), compact);
    EXPECT_EQ(state.view.value(), Card::overview);
    EXPECT_EQ(interrupts.count(), 1);

    for (const bool isEvent : {false, true}) {
        island.greet();
        if (isEvent)
            Q_EMIT notifications.hookExpand(Card::finished);
        else
            island.show(Card::finished);
        Q_EMIT notifications.greetComplete();
        queue.advance(10);
        EXPECT_TRUE(isOpenOn(Card::finished)) << "the film's end is not its own";
        island.collapse();
        EXPECT_EQ(interrupts.count(), 1);
    }
}

TEST_F(IslandTest, ADizzySpellEndsWhereItBegan)
{
    const QSignalSpy emotes(&notifications, &Notifications::triggerEmote);
    const auto spell = [this](double seconds) {
        Q_EMIT notifications.botDizzy();
        EXPECT_EQ(state.stateOverride.value(), BotState::dizzy);
        EXPECT_TRUE(isOpenOn(Card::confused));
        queue.advance(seconds);
    };
    island.open(Card::prompt);
    spell(3.4);
    EXPECT_TRUE(isOpenOn(Card::prompt));
    EXPECT_FALSE(state.stateOverride.value());

    spell(1);
    island.show(Card::settings);
    queue.advance(2.4);
    EXPECT_TRUE(isOpenOn(Card::settings)) << "the user has moved on";
    EXPECT_FALSE(state.stateOverride.value());

    spell(2);
    spell(2);
    EXPECT_TRUE(isOpenOn(Card::confused)) << "the second spell starts anew";
    queue.advance(1.4);
    EXPECT_TRUE(isOpenOn(Card::overview));

    ask();
    spell(1);
    state.pendingApproval = std::nullopt;
    queue.advance(2.4);
    EXPECT_TRUE(isOpenOn(Card::overview)) << "the request has gone meanwhile";
    ASSERT_EQ(emotes.count(), 4);
    EXPECT_EQ(emotes[0][0].value<BotEmote>(), BotEmote::happy);
}

} // namespace
