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

using Event = void (IslandStateMachine::*)();
const Event mouseEntered = &IslandStateMachine::mouseEntered;
const Event mouseLeft = &IslandStateMachine::mouseLeft;
const Event click = &IslandStateMachine::click;
const Event collapse = &IslandStateMachine::collapse;
const Event reveal = &IslandStateMachine::reveal;
const Event noteHidden = &IslandStateMachine::noteHidden;
const Event holdOpen = &IslandStateMachine::holdOpen;
const Event beginGreeting = &IslandStateMachine::beginGreeting;

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
        {State::hidden, click, false, State::home, true},
        {State::hidden, collapse, false, State::hidden, false},
        {State::hidden, reveal, false, State::petit, true, 60},
        {State::hidden, noteHidden, false, State::hidden, false},
        {State::hidden, holdOpen, false, State::home, false},
        {State::hidden, beginGreeting, false, State::tirlo, true},

        {State::petit, mouseEntered, false, State::petit, false},
        {State::petit, mouseLeft, false, State::petit, false, 60},
        {State::petit, click, false, State::home, true},
        {State::petit, collapse, false, State::petit, false},
        {State::petit, reveal, false, State::petit, false},
        {State::petit, noteHidden, false, State::hidden, false},
        {State::petit, holdOpen, false, State::home, false},
        {State::petit, beginGreeting, false, State::tirlo, true},

        {State::home, mouseEntered, false, State::home, false},
        {State::home, mouseLeft, true, State::home, false},
        {State::home, mouseLeft, false, State::home, false, 15},
        {State::home, click, false, State::home, false},
        {State::home, collapse, false, State::petit, true},
        {State::home, reveal, false, State::home, false},
        {State::home, noteHidden, false, State::home, false},
        {State::home, holdOpen, false, State::home, false},
        {State::home, beginGreeting, false, State::tirlo, true},

        {State::tirlo, mouseEntered, false, State::tirlo, false, 10},
        {State::tirlo, mouseLeft, true, State::tirlo, false},
        {State::tirlo, mouseLeft, false, State::petit, true},
        {State::tirlo, click, false, State::tirlo, false},
        {State::tirlo, collapse, false, State::petit, true},
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
        reports.clear();
        queue.advance(row.timer > 0 ? row.timer - 0.01 : 1000);
        EXPECT_EQ(fsm->state(), row.to);
        EXPECT_TRUE(reports.empty());
        if (row.timer > 0) {
            queue.advance(0.02);
            const State next = row.to == State::petit ? State::hidden : State::petit;
            EXPECT_EQ(fsm->state(), next);
            EXPECT_EQ(reports, Reports({{row.to, next}}));
        }
    }
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

TEST_F(IslandStateMachineTest, EventsWhileATimerRuns)
{
    struct Step
    {
        Event event;
        double wait = 0;
    };
    struct Row
    {
        const char *about;
        State from;
        std::vector<Step> steps;
        State to;
    };
    const Row rows[] = {
        {"pointer comes back",
         State::petit,
         {{mouseLeft, 14.9}, {mouseEntered, 1000}},
         State::petit},
        {"pointer comes back", State::home, {{mouseLeft, 14.9}, {mouseEntered, 1000}}, State::home},
        {"begins afresh", State::petit, {{mouseLeft, 54}, {mouseLeft, 59.9}}, State::petit},
        {"begins afresh", State::home, {{mouseLeft, 13}, {mouseLeft, 14.9}}, State::home},
        {"begins afresh", State::tirlo, {{mouseEntered, 9}, {mouseEntered, 9.9}}, State::tirlo},
        {"ignored events", State::petit, {{mouseLeft}, {collapse}, {reveal, 60}}, State::hidden},
        {"ignored events",
         State::home,
         {{mouseLeft}, {click}, {reveal}, {noteHidden, 15}},
         State::petit},
        {"gone with its state",
         State::petit,
         {{mouseLeft}, {click}, {collapse, 1000}},
         State::petit},
        {"gone with its state", State::home, {{mouseLeft}, {collapse}, {click, 1000}}, State::home},
        {"gone with its state",
         State::tirlo,
         {{mouseEntered}, {mouseLeft}, {beginGreeting, 1000}},
         State::tirlo},
        {"held open", State::tirlo, {{mouseEntered}, {holdOpen, 1000}}, State::tirlo},
        {"held open", State::home, {{mouseLeft}, {holdOpen, 1000}}, State::home},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.about << ", row " << &row - rows);
        renew(row.from);
        for (const Step &step : row.steps) {
            (*fsm.*step.event)();
            queue.advance(step.wait);
        }
        EXPECT_EQ(fsm->state(), row.to);
    }
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

} // namespace
} // namespace tirlo
