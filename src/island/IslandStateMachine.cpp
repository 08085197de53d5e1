#include "IslandStateMachine.h"

#include <utility>

namespace tirlo {

namespace {

void cancelAndClear(std::optional<WorkItem> &work)
{
    if (work)
        work->cancel();
    work.reset();
}

} // namespace

IslandStateMachine::IslandStateMachine(MainQueue &queue, QObject *parent)
    : QObject(parent)
    , m_queue(queue)
{
}

void IslandStateMachine::mouseEntered()
{
    switch (m_state) {
    case State::hidden:
        // Whoever holds the island open shows it as well, so this is no change to report.
        if (mustStayOpen()) {
            m_state = State::home;
            return;
        }
        cancelTimers();
        transition(State::petit);
        return;
    case State::petit:
        cancelAndClear(m_petitHideWork);
        return;
    case State::home:
        cancelAndClear(m_homeCollapseWork);
        return;
    case State::tirlo:
        scheduleGreetCollapse(greetHoverCollapseDelay);
        return;
    }
}

void IslandStateMachine::mouseLeft()
{
    switch (m_state) {
    case State::hidden:
        return;
    case State::petit:
        schedulePetitHide();
        return;
    case State::home:
        if (!mustStayOpen())
            scheduleHomeCollapse();
        return;
    case State::tirlo:
        if (mustStayOpen())
            return;
        cancelAndClear(m_greetCollapseWork);
        transition(State::petit);
        return;
    }
}

void IslandStateMachine::click()
{
    if (m_state != State::hidden && m_state != State::petit)
        return;
    cancelTimers();
    transition(State::home);
}

void IslandStateMachine::collapse()
{
    if (m_state != State::home && m_state != State::tirlo)
        return;
    cancelTimers();
    transition(State::petit);
}

void IslandStateMachine::cancelTimers()
{
    cancelAndClear(m_petitHideWork);
    cancelAndClear(m_homeCollapseWork);
    cancelAndClear(m_greetCollapseWork);
}

void IslandStateMachine::beginGreeting()
{
    cancelTimers();
    transition(State::tirlo);
}

void IslandStateMachine::greetingFinished()
{
    if (m_state == State::tirlo && !m_greetCollapseWork)
        scheduleGreetCollapse(greetAutoCollapseDelay);
}

void IslandStateMachine::reveal()
{
    if (m_state != State::hidden)
        return;
    cancelTimers();
    transition(State::petit);
    schedulePetitHide();
}

void IslandStateMachine::holdOpen()
{
    cancelTimers();
    if (m_state != State::tirlo)
        m_state = State::home;
}

void IslandStateMachine::noteHidden()
{
    if (m_state != State::petit)
        return;
    cancelTimers();
    m_state = State::hidden;
}

void IslandStateMachine::transition(State target)
{
    if (m_state == target)
        return;
    const State old = std::exchange(m_state, target);
    if (onTransition)
        onTransition(old, target);
}

void IslandStateMachine::schedulePetitHide()
{
    cancelAndClear(m_petitHideWork);
    m_petitHideWork = m_queue.after(petitToHiddenDelay, this, [this] {
        if (m_state == State::petit && !mustStayOpen())
            transition(State::hidden);
    });
}

void IslandStateMachine::scheduleHomeCollapse()
{
    cancelAndClear(m_homeCollapseWork);
    m_homeCollapseWork = m_queue.after(homeToPetitDelay, this, [this] {
        if (m_state == State::home && !mustStayOpen())
            transition(State::petit);
    });
}

void IslandStateMachine::scheduleGreetCollapse(double delay)
{
    cancelAndClear(m_greetCollapseWork);
    m_greetCollapseWork = m_queue.after(delay, this, [this] {
        if (m_state == State::tirlo)
            transition(State::petit);
    });
}

bool IslandStateMachine::mustStayOpen() const
{
    return isHeldOpen && isHeldOpen();
}

} // namespace tirlo
