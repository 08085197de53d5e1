#include "island/IslandStateMachine.h"

#include "support/ManualQueue.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

using namespace tirlo;

namespace {

using State = IslandStateMachine::State;
using enum IslandStateMachine::State;
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
    void renew(State state = hidden)
    {
        fsm.emplace(queue);
        held = false;
        if (state == petit)
            fsm->mouseEntered();
        if (state == home)
            fsm->click();
        if (state == tirlo)
            fsm->beginGreeting();
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
    struct Outcome
    {
        State to;
        bool isReported = false;
        /// Seconds until a timer armed by the event changes the state; 0 for none.
        double timer = 0;
    };
    struct Row
    {
        Event event;
        bool isHeld;
        /// Coming from hidden, petit, home and tirlo.
        Outcome outcomes[4];
    };
    const Row rows[] = {
        {mouseEntered, false, {{petit, true}, {petit}, {home}, {tirlo, false, 10}}},
        {mouseEntered, true, {{home}, {petit}, {home}, {tirlo, false, 10}}},
        {mouseLeft, false, {{hidden}, {petit, false, 60}, {home, false, 15}, {petit, true}}},
        {mouseLeft, true, {{hidden}, {petit, false, 60}, {home}, {tirlo}}},
        {click, false, {{home, true}, {home, true}, {home}, {tirlo}}},
        {collapse, false, {{hidden}, {petit}, {petit, true}, {petit, true}}},
        {reveal, false, {{petit, true, 60}, {petit}, {home}, {tirlo}}},
        {noteHidden, false, {{hidden}, {hidden}, {home}, {tirlo}}},
        {holdOpen, false, {{home}, {home}, {home}, {tirlo}}},
        {beginGreeting, false, {{tirlo, true}, {tirlo, true}, {tirlo, true}, {tirlo}}},
    };
    for (const Row &row : rows) {
        for (const State from : {hidden, petit, home, tirlo}) {
            SCOPED_TRACE(testing::Message() << "row " << &row - rows << " from " << int(from));
            const Outcome &outcome = row.outcomes[int(from)];
            renew(from);
            held = row.isHeld;
            (*fsm.*row.event)();
            EXPECT_EQ(fsm->state(), outcome.to);
            EXPECT_EQ(reports, outcome.isReported ? Reports({{from, outcome.to}}) : Reports());

            held = false;
            reports.clear();
            queue.advance(outcome.timer > 0 ? outcome.timer - 0.01 : 1000);
            EXPECT_EQ(fsm->state(), outcome.to);
            EXPECT_TRUE(reports.empty());
            if (outcome.timer > 0) {
                queue.advance(0.02);
                EXPECT_EQ(reports, Reports({{outcome.to, outcome.to == petit ? hidden : petit}}));
            }
        }
    }
}

TEST_F(IslandStateMachineTest, HeldOpenStopsTwoTimersForGoodAndNotTheGreetings)
{
    for (const State state : {petit, home}) {
        renew(state);
        fsm->mouseLeft();
        held = true;
        queue.advance(60);
        held = false;
        queue.advance(1000);
        EXPECT_EQ(fsm->state(), state);
        EXPECT_TRUE(reports.empty());
    }

    renew(tirlo);
    held = true;
    fsm->mouseEntered();
    fsm->mouseLeft();
    EXPECT_EQ(fsm->state(), tirlo);
    queue.advance(10);
    EXPECT_EQ(reports, Reports({{tirlo, petit}}));
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
        State from;
        std::vector<Step> steps;
        State to;
    };
    const Row rows[] = {
        // The pointer comes back.
        {petit, {{mouseLeft, 14.9}, {mouseEntered, 1000}}, petit},
        {home, {{mouseLeft, 14.9}, {mouseEntered, 1000}}, home},
        // The wait begins afresh.
        {petit, {{mouseLeft, 54}, {mouseLeft, 59.9}}, petit},
        {home, {{mouseLeft, 13}, {mouseLeft, 14.9}}, home},
        {tirlo, {{mouseEntered, 9}, {mouseEntered, 9.9}}, tirlo},
        // Ignored events.
        {petit, {{mouseLeft}, {collapse}, {reveal, 60}}, hidden},
        {home, {{mouseLeft}, {click}, {reveal}, {noteHidden, 15}}, petit},
        // The timer goes with its state.
        {petit, {{mouseLeft}, {click}, {collapse, 1000}}, petit},
        {home, {{mouseLeft}, {collapse}, {click, 1000}}, home},
        {tirlo, {{mouseEntered}, {mouseLeft}, {beginGreeting, 1000}}, tirlo},
        // Held open.
        {tirlo, {{mouseEntered}, {holdOpen, 1000}}, tirlo},
        {home, {{mouseLeft}, {holdOpen, 1000}}, home},
    };
    for (const Row &row : rows) {
        renew(row.from);
        for (const Step &step : row.steps) {
            (*fsm.*step.event)();
            queue.advance(step.wait);
        }
        EXPECT_EQ(fsm->state(), row.to) << "row " << &row - rows;
    }
}

TEST_F(IslandStateMachineTest, GreetingClosesSoonAfterItHasPlayedUnlessThePointerIsInIt)
{
    // The second time as the first: a spent item stands in the way of no greeting.
    for (int i = 0; i < 2; ++i) {
        fsm->beginGreeting();
        fsm->greetingFinished();
        queue.advance(0.59);
        EXPECT_EQ(fsm->state(), tirlo);
        queue.advance(0.02);
        EXPECT_EQ(fsm->state(), petit);
    }
    fsm->greetingFinished();
    queue.advance(1000);
    EXPECT_EQ(fsm->state(), petit) << "nor does the end of one that has gone count";

    fsm->beginGreeting();
    fsm->mouseEntered();
    queue.advance(4);
    fsm->greetingFinished();
    queue.advance(5.9);
    EXPECT_EQ(fsm->state(), tirlo);
    queue.advance(0.2);
    EXPECT_EQ(fsm->state(), petit);
}

TEST_F(IslandStateMachineTest, ChangeMayCallBackWithThePointerOutside)
{
    renew(home);
    fsm->onTransition = [this](State from, State to) {
        reports.emplace_back(from, to);
        fsm->mouseLeft();
    };
    fsm->collapse();
    EXPECT_EQ(fsm->state(), petit);
    queue.advance(60);
    EXPECT_EQ(reports, Reports({{home, petit}, {petit, hidden}}));

    // A greeting that finds the pointer outside goes away again at once.
    reports.clear();
    fsm->beginGreeting();
    EXPECT_EQ(reports, Reports({{hidden, tirlo}, {tirlo, petit}}));
    queue.advance(60);
    EXPECT_EQ(fsm->state(), hidden);
}

TEST_F(IslandStateMachineTest, TimerThatFindsAnotherStateDoesNothing)
{
    // The click comes inside the report, so the peek's timer is armed in an island already open.
    fsm->onTransition = [this](State, State to) {
        if (to == petit)
            fsm->click();
    };
    fsm->reveal();
    EXPECT_EQ(fsm->state(), home);
    queue.advance(1000);
    EXPECT_EQ(fsm->state(), home);
}

} // namespace
