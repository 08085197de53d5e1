#include "island/IslandStateMachine.h"

#include "support/ManualQueue.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

namespace tirlo {
namespace {

using State = IslandStateMachine::State;
using Reports = std::vector<std::pair<State, State>>;

const State allStates[] = {State::hidden, State::petit, State::home, State::tirlo};

class IslandStateMachineTest : public testing::Test
{
protected:
    IslandStateMachineTest() { renew(); }

    // A machine with no timer armed that stands in `state`, with nothing reported yet.
    void renew(State state = State::hidden)
    {
        fsm.emplace(queue);
        held = false;
        switch (state) {
        case State::hidden:
            break;
        case State::petit:
            fsm->mouseEntered();
            break;
        case State::home:
            fsm->click();
            break;
        case State::tirlo:
            fsm->beginGreeting();
            break;
        }
        ASSERT_EQ(fsm->state(), state);
        fsm->isHeldOpen = [this] { return held; };
        fsm->onTransition = [this](State from, State to) {
            EXPECT_EQ(fsm->state(), to);
            reports.emplace_back(from, to);
        };
        reports.clear();
    }

    ManualQueue queue;
    std::optional<IslandStateMachine> fsm;
    bool held = false;
    Reports reports;
};

TEST_F(IslandStateMachineTest, EveryEventInEveryState)
{
    using Event = void (IslandStateMachine::*)();
    const Event mouseEntered = &IslandStateMachine::mouseEntered;
    const Event mouseLeft = &IslandStateMachine::mouseLeft;
    const Event click = &IslandStateMachine::click;
    const Event collapse = &IslandStateMachine::collapse;
    const Event reveal = &IslandStateMachine::reveal;
    const Event noteHidden = &IslandStateMachine::noteHidden;
    const Event holdOpen = &IslandStateMachine::holdOpen;
    const Event beginGreeting = &IslandStateMachine::beginGreeting;

    struct Row
    {
        State from;
        Event event;
        bool held;
        State to;
        bool reported;
        /// Seconds until a timer armed by the event changes the state; 0 for none.
        double timer = 0;
    };
    const Row rows[] = {
        {State::hidden, mouseEntered, true, State::home, false},
        {State::hidden, mouseEntered, false, State::petit, true},
        {State::hidden, mouseLeft, false, State::hidden, false},
        {State::hidden, mouseLeft, true, State::hidden, false},
        {State::hidden, click, false, State::home, true},
        {State::hidden, click, true, State::home, true},
        {State::hidden, collapse, false, State::hidden, false},
        {State::hidden, reveal, false, State::petit, true, 60},
        {State::hidden, reveal, true, State::petit, true, 60},
        {State::hidden, noteHidden, false, State::hidden, false},
        {State::hidden, holdOpen, false, State::home, false},
        {State::hidden, beginGreeting, false, State::tirlo, true},

        {State::petit, mouseEntered, false, State::petit, false},
        {State::petit, mouseEntered, true, State::petit, false},
        {State::petit, mouseLeft, false, State::petit, false, 60},
        {State::petit, mouseLeft, true, State::petit, false, 60},
        {State::petit, click, false, State::home, true},
        {State::petit, click, true, State::home, true},
        {State::petit, collapse, false, State::petit, false},
        {State::petit, reveal, false, State::petit, false},
        {State::petit, noteHidden, false, State::hidden, false},
        {State::petit, noteHidden, true, State::hidden, false},
        {State::petit, holdOpen, false, State::home, false},
        {State::petit, beginGreeting, false, State::tirlo, true},

        {State::home, mouseEntered, false, State::home, false},
        {State::home, mouseLeft, true, State::home, false},
        {State::home, mouseLeft, false, State::home, false, 15},
        {State::home, click, false, State::home, false},
        {State::home, collapse, false, State::petit, true},
        {State::home, collapse, true, State::petit, true},
        {State::home, reveal, false, State::home, false},
        {State::home, noteHidden, false, State::home, false},
        {State::home, holdOpen, false, State::home, false},
        {State::home, beginGreeting, false, State::tirlo, true},

        {State::tirlo, mouseEntered, false, State::tirlo, false, 10},
        {State::tirlo, mouseEntered, true, State::tirlo, false, 10},
        {State::tirlo, mouseLeft, true, State::tirlo, false},
        {State::tirlo, mouseLeft, false, State::petit, true},
        {State::tirlo, click, false, State::tirlo, false},
        {State::tirlo, collapse, false, State::petit, true},
        {State::tirlo, collapse, true, State::petit, true},
        {State::tirlo, reveal, false, State::tirlo, false},
        {State::tirlo, noteHidden, false, State::tirlo, false},
        {State::tirlo, holdOpen, false, State::tirlo, false},
        {State::tirlo, beginGreeting, false, State::tirlo, false},
    };

    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << "row " << &row - rows);
        renew(row.from);
        held = row.held;
        (*fsm.*row.event)();

        EXPECT_EQ(fsm->state(), row.to);
        EXPECT_EQ(reports, row.reported ? Reports({{row.from, row.to}}) : Reports());

        held = false;
        if (row.timer > 0) {
            queue.advance(row.timer - 0.01);
            EXPECT_EQ(fsm->state(), row.to);
            queue.advance(0.02);
            EXPECT_NE(fsm->state(), row.to);
        } else {
            queue.advance(1000);
            EXPECT_EQ(fsm->state(), row.to);
        }
    }
}

TEST_F(IslandStateMachineTest, TimersFallBackAndReport)
{
    renew(State::petit);
    fsm->mouseLeft();
    queue.advance(60);
    EXPECT_EQ(reports, Reports({{State::petit, State::hidden}}));

    renew(State::home);
    fsm->mouseLeft();
    queue.advance(15);
    EXPECT_EQ(reports, Reports({{State::home, State::petit}}));

    renew(State::tirlo);
    fsm->mouseEntered();
    queue.advance(10);
    EXPECT_EQ(reports, Reports({{State::tirlo, State::petit}}));
}

TEST_F(IslandStateMachineTest, HeldOpenStopsTwoTimersForGoodAndNotTheGreetings)
{
    for (const State state : {State::petit, State::home}) {
        renew(state);
        fsm->mouseLeft();
        held = true;
        queue.advance(60);
        held = false;
        queue.advance(1000);
        EXPECT_EQ(fsm->state(), state);
        EXPECT_TRUE(reports.empty());
    }

    renew(State::tirlo);
    held = true;
    fsm->mouseEntered();
    fsm->mouseLeft();
    EXPECT_EQ(fsm->state(), State::tirlo);
    queue.advance(10);
    EXPECT_EQ(reports, Reports({{State::tirlo, State::petit}}));
}

TEST_F(IslandStateMachineTest, PointerComingBackDisarmsTheTimerOfItsState)
{
    for (const State state : {State::petit, State::home}) {
        renew(state);
        fsm->mouseLeft();
        queue.advance(14.9);
        fsm->mouseEntered();
        queue.advance(1000);
        EXPECT_EQ(fsm->state(), state);
    }
}

TEST_F(IslandStateMachineTest, SecondEventStartsTheWaitAfresh)
{
    const std::pair<State, double> waits[] = {{State::petit, 60}, {State::home, 15}};
    for (const auto &[state, wait] : waits) {
        renew(state);
        fsm->mouseLeft();
        queue.advance(wait * 0.9);
        fsm->mouseLeft();
        queue.advance(wait * 0.9);
        EXPECT_EQ(fsm->state(), state);
        queue.advance(wait * 0.1 + 0.001);
        EXPECT_NE(fsm->state(), state);
    }

    renew(State::tirlo);
    fsm->mouseEntered();
    queue.advance(9);
    fsm->mouseEntered();
    queue.advance(9);
    EXPECT_EQ(fsm->state(), State::tirlo);
}

TEST_F(IslandStateMachineTest, IgnoredEventsLeaveRunningTimersAlone)
{
    renew(State::petit);
    fsm->mouseLeft();
    fsm->collapse();
    fsm->reveal();
    queue.advance(60);
    EXPECT_EQ(fsm->state(), State::hidden);

    renew(State::home);
    fsm->mouseLeft();
    fsm->click();
    fsm->reveal();
    fsm->noteHidden();
    queue.advance(15);
    EXPECT_EQ(fsm->state(), State::petit);
}

TEST_F(IslandStateMachineTest, LeavingAStateCancelsWhatWasArmedInIt)
{
    renew(State::petit);
    fsm->mouseLeft();
    fsm->click();
    fsm->collapse();
    queue.advance(1000);
    EXPECT_EQ(fsm->state(), State::petit);

    fsm->click();
    fsm->mouseLeft();
    fsm->collapse();
    fsm->click();
    queue.advance(1000);
    EXPECT_EQ(fsm->state(), State::home);

    renew(State::tirlo);
    fsm->mouseEntered();
    fsm->mouseLeft();
    fsm->beginGreeting();
    queue.advance(1000);
    EXPECT_EQ(fsm->state(), State::tirlo);
}

TEST_F(IslandStateMachineTest, GreetingClosesSoonAfterItHasPlayed)
{
    renew(State::tirlo);
    fsm->greetingFinished();
    queue.advance(0.59);
    EXPECT_EQ(fsm->state(), State::tirlo);
    queue.advance(0.02);
    EXPECT_EQ(fsm->state(), State::petit);

    // The spent item neither counts again here nor stands in the way of the next greeting.
    fsm->greetingFinished();
    queue.advance(1000);
    EXPECT_EQ(fsm->state(), State::petit);
    fsm->beginGreeting();
    fsm->greetingFinished();
    queue.advance(0.61);
    EXPECT_EQ(fsm->state(), State::petit);
}

TEST_F(IslandStateMachineTest, GreetingWithThePointerInItStaysTheLongerWait)
{
    renew(State::tirlo);
    fsm->mouseEntered();
    queue.advance(4);
    fsm->greetingFinished();
    queue.advance(5.9);
    EXPECT_EQ(fsm->state(), State::tirlo);
    queue.advance(0.2);
    EXPECT_EQ(fsm->state(), State::petit);
}

TEST_F(IslandStateMachineTest, HoldingOpenKeepsTheGreetingFromClosingByItself)
{
    renew(State::tirlo);
    fsm->mouseEntered();
    fsm->holdOpen();
    queue.advance(1000);
    EXPECT_EQ(fsm->state(), State::tirlo);

    renew(State::home);
    fsm->mouseLeft();
    fsm->holdOpen();
    queue.advance(1000);
    EXPECT_EQ(fsm->state(), State::home);
}

TEST_F(IslandStateMachineTest, ChangeMayCallBackWithThePointerOutside)
{
    renew(State::home);
    fsm->onTransition = [this](State from, State to) {
        reports.emplace_back(from, to);
        fsm->mouseLeft();
    };
    fsm->collapse();
    EXPECT_EQ(fsm->state(), State::petit);
    queue.advance(60);
    EXPECT_EQ(reports, Reports({{State::home, State::petit}, {State::petit, State::hidden}}));

    // A greeting that finds the pointer outside goes away again at once.
    reports.clear();
    fsm->beginGreeting();
    EXPECT_EQ(reports, Reports({{State::hidden, State::tirlo}, {State::tirlo, State::petit}}));
    queue.advance(60);
    EXPECT_EQ(fsm->state(), State::hidden);
}

TEST_F(IslandStateMachineTest, TimerThatFindsAnotherStateDoesNothing)
{
    // The click comes inside the report, so the peek's timer is armed in an island already open.
    fsm->onTransition = [this](State, State to) {
        if (to == State::petit)
            fsm->click();
    };
    fsm->reveal();
    EXPECT_EQ(fsm->state(), State::home);
    queue.advance(1000);
    EXPECT_EQ(fsm->state(), State::home);
}

TEST_F(IslandStateMachineTest, WorksWithoutCallbacks)
{
    fsm.emplace(queue);
    fsm->mouseEntered();
    EXPECT_EQ(fsm->state(), State::petit);
    fsm->mouseLeft();
    queue.advance(60);
    EXPECT_EQ(fsm->state(), State::hidden);
}

TEST_F(IslandStateMachineTest, PendingTimersOutliveTheMachineHarmlessly)
{
    for (const State state : allStates) {
        renew(state);
        fsm->mouseEntered();
        fsm->mouseLeft();
        reports.clear();
        fsm.reset();
        queue.advance(1000);
        EXPECT_TRUE(reports.empty());
    }
}

} // namespace
} // namespace tirlo
