#include "IslandStateMachine.h"

#include <utility>

namespace tirlo {

IslandStateMachine::IslandStateMachine(MainQueue &queue, QObject *parent)
    : QObject(parent)
    , m_queue(queue)
{
}

void IslandStateMachine::mouseEntered()
{
    m_isPointerIn = true;
    switch (m_state) {
    case State::hidden:
        transition(State::petit);
        // A peek that nothing comes of ends, even under a pointer left lying at the screen's edge.
        fallBackIn(petitToHiddenDelay, State::hidden);
        return;
    case State::petit:
    case State::home:
        stopWaiting();
        return;
    case State::tirlo:
        fallBackIn(greetHoverCollapseDelay, State::petit);
        return;
    }
}

void IslandStateMachine::mouseLeft()
{
    m_isPointerIn = false;
    if (m_state != State::tirlo)
        startWaiting();
    else if (!mustStayOpen())
        transition(State::petit);
}

void IslandStateMachine::keyboardEntered()
{
    m_isKeyboardIn = true;
    if (m_state == State::home)
        stopWaiting();
}

void IslandStateMachine::keyboardLeft()
{
    m_isKeyboardIn = false;
    startWaiting();
}

void IslandStateMachine::open()
{
    stopWaiting();
    transition(State::home);
}

void IslandStateMachine::startWaiting()
{
    if (m_state == State::hidden || m_isPointerIn || m_isKeyboardIn || mustStayOpen())
        return;
    if (m_state == State::petit)
        fallBackIn(petitToHiddenDelay, State::hidden);
    else
        fallBackIn(homeToPetitDelay, State::petit);
}

void IslandStateMachine::collapse()
{
    const bool isOpen = m_state == State::home || m_state == State::tirlo;
    if (isOpen && !mustStayOpen())
        transition(State::petit);
}

void IslandStateMachine::hide()
{
    if (m_state == State::petit)
        transition(State::hidden);
}

void IslandStateMachine::beginGreeting()
{
    stopWaiting();
    transition(State::tirlo);
}

void IslandStateMachine::greetingFinished()
{
    if (m_state == State::tirlo && !m_fallBack)
        fallBackIn(greetAutoCollapseDelay, State::petit);
}

void IslandStateMachine::reveal()
{
    if (m_state == State::hidden)
        transition(State::petit);
}

void IslandStateMachine::transition(State target)
{
    if (m_state == target)
        return;
    stopWaiting();
    const State old = std::exchange(m_state, target);
    if (onTransition)
        onTransition(old, target);
    if (m_state == State::petit)
        startWaiting();
}

void IslandStateMachine::fallBackIn(double seconds, State target)
{
    stopWaiting();
    m_fallBack = m_queue.after(seconds, this, [this, target] {
        if (!mustStayOpen())
            transition(target);
    });
}

void IslandStateMachine::stopWaiting()
{
    if (m_fallBack)
        m_fallBack->cancel();
    m_fallBack.reset();
}

bool IslandStateMachine::mustStayOpen() const
{
    return isHeldOpen && isHeldOpen();
}

} // namespace tirlo
