#include "island/IslandStateMachine.h"

#include "support/ManualQueue.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

using namespace tirlo;

namespace {

using Machine = IslandStateMachine;
using State = Machine::State;
using enum Machine::State;
using Event = void (Machine::*)();

const Event in = &Machine::mouseEntered;
const Event out = &Machine::mouseLeft;
const Event end = &Machine::greetingFinished;

class IslandStateMachineTest : public testing::Test
{
protected:
    // A machine in that state with the pointer on it, unless it is hidden, and no timer running.
    void renew(State state)
    {
        fsm.emplace(queue);
        held = false;
        for (int i = 0; i < 2 && state != hidden; ++i)
            fsm->mouseEntered();
        if (state == home)
            fsm->open();
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
    std::optional<Machine> fsm;
    bool held = false;
    std::vector<std::pair<State, State>> reports;
};

TEST_F(IslandStateMachineTest, EveryEventInEveryState)
{
    const struct
    {
        Event event;
        bool isHeld;
        /// From hidden, petit, home and tirlo: the new state, and the seconds until a timer armed
        /// by the event changes that; 0 for none.
        std::pair<State, double> outcomes[4];
    } rows[] = {
        {in, false, {{petit, 60}, {petit, 0}, {home, 0}, {tirlo, 10}}},
        {out, false, {{hidden, 0}, {petit, 60}, {home, 15}, {petit, 60}}},
        {out, true, {{hidden, 0}, {petit, 0}, {home, 0}, {tirlo, 0}}},
        {&Machine::open, false, {{home, 0}, {home, 0}, {home, 0}, {home, 0}}},
        {&Machine::startWaiting, false, {{hidden, 0}, {petit, 0}, {home, 0}, {tirlo, 0}}},
        {&Machine::collapse, false, {{hidden, 0}, {petit, 0}, {petit, 0}, {petit, 0}}},
        {&Machine::collapse, true, {{hidden, 0}, {petit, 0}, {home, 0}, {tirlo, 0}}},
        {&Machine::hide, false, {{hidden, 0}, {hidden, 0}, {home, 0}, {tirlo, 0}}},
        {&Machine::reveal, false, {{petit, 60}, {petit, 0}, {home, 0}, {tirlo, 0}}},
        {&Machine::beginGreeting, false, {{tirlo, 0}, {tirlo, 0}, {tirlo, 0}, {tirlo, 0}}},
        {end, false, {{hidden, 0}, {petit, 0}, {home, 0}, {tirlo, 0.6}}},
    };
    for (const auto &row : rows) {
        for (const State from : {hidden, petit, home, tirlo}) {
            SCOPED_TRACE(testing::Message() << "row " << &row - rows << " from " << int(from));
            const auto [to, timer] = row.outcomes[int(from)];
            renew(from);
            held = row.isHeld;
            (*fsm.*row.event)();
            EXPECT_EQ(fsm->state(), to);
            held = false;
            queue.advance(timer > 0 ? timer - 0.01 : 1000);
            EXPECT_EQ(reports.size(), to == from ? 0U : 1U);
            EXPECT_EQ(fsm->state(), to);
            queue.advance(0.02);
            EXPECT_EQ(fsm->state(), timer == 0 ? to : to == petit ? hidden : petit);
        }
    }
}

TEST_F(IslandStateMachineTest, EventsWhileATimerRuns)
{
    struct Step
    {
        Event event;
        double wait = 0;
    };
    const struct
    {
        State from;
        std::vector<Step> steps;
        State to;
    } rows[] = {
        // The pointer's return ends the wait, and leaving once more begins it afresh.
        {petit, {{out, 54}, {in, 1000}}, petit},
        {home, {{out, 13}, {in, 1000}}, home},
        {petit, {{out, 54}, {out, 59.9}}, petit},
        {home, {{out, 13}, {out, 14.9}}, home},
        {home, {{out, 13}, {&Machine::startWaiting, 14.9}}, home},
        {tirlo, {{in, 9}, {in, 9.9}}, tirlo},
        // What changes nothing leaves it running.
        {petit, {{out}, {&Machine::collapse}, {&Machine::reveal, 60}}, hidden},
        {home, {{out}, {&Machine::reveal}, {&Machine::hide, 15}}, petit},
        // Opening ends it.
        {petit, {{out}, {&Machine::open, 1000}}, home},
        {home, {{out}, {&Machine::open, 1000}}, home},
        {tirlo, {{in}, {&Machine::open, 1000}}, home},
        {hidden, {{&Machine::open}, {&Machine::startWaiting, 15}}, petit},
        // One step after the other, each with its own wait.
        {home, {{out, 15}, {out, 59.9}}, petit},
        {home, {{out, 15}, {&Machine::reveal, 60}}, hidden},
        {tirlo, {{in}, {out}, {&Machine::beginGreeting, 1000}}, tirlo},
        // The greeting closes once it has played, each time, but not under the pointer.
        {tirlo, {{end, 0.7}, {&Machine::beginGreeting}, {end, 0.7}}, petit},
        {tirlo, {{in, 4}, {end, 5.9}}, tirlo},
        {tirlo, {{in, 4}, {end, 6.1}}, petit},
    };
    for (const auto &row : rows) {
        renew(row.from);
        for (const Step &step : row.steps) {
            (*fsm.*step.event)();
            queue.advance(step.wait);
        }
        EXPECT_EQ(fsm->state(), row.to) << "row " << &row - rows;
    }
}

} // namespace
