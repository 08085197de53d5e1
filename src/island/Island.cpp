#include "Island.h"

#include "IslandSight.h"
#include "core/AppState.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"

#include <utility>

namespace tirlo {

namespace {

/// Seconds that the mascot needs after too many slaps.
constexpr double dizzySeconds = 3.3;

IslandMode modeOf(IslandStateMachine::State state)
{
    switch (state) {
    case IslandStateMachine::State::hidden:
        return IslandMode::hidden;
    case IslandStateMachine::State::petit:
        return IslandMode::compact;
    case IslandStateMachine::State::home:
    case IslandStateMachine::State::tirlo:
        break;
    }
    return IslandMode::expanded;
}

} // namespace

Island::Island(AppState &state, Notifications &notifications, SoundEngine &sounds, MainQueue &queue)
    : m_state(state)
    , m_notifications(notifications)
    , m_sounds(sounds)
    , m_queue(queue)
    , m_writer(state)
    , m_machine(queue)
    , m_knownTasks(taskIds())
{
    m_machine.isHeldOpen = [this] { return isHeldOpen(); };
    m_machine.onTransition = [this](IslandStateMachine::State from, IslandStateMachine::State to) {
        transition(from, to);
    };
    connect(&notifications, &Notifications::hookExpand, this, &Island::openForEvent);
    connect(&notifications, &Notifications::hookReveal, &m_machine, &IslandStateMachine::reveal);
    connect(&notifications, &Notifications::islandCollapse, this, &Island::collapse);
    connect(&notifications, &Notifications::botDizzy, this, &Island::beDizzy);
    connect(&notifications, &Notifications::greetComplete, &m_machine,
            &IslandStateMachine::greetingFinished);
    m_observers.follow(m_state.tasks, [this] { followTasks(); });
    m_observers.follow(m_state.pendingApproval, [this] { followRequest(); });
    m_observers.follow(m_state.isLocked, [this] { followLock(); });
    m_observers.follow(m_state.isScreenFull, [this] { followFullScreen(); });
    const auto followSight = [this] { this->followSight(); };
    m_observers.follow(m_state.mode, followSight);
    m_observers.follow(m_state.view, followSight);
    m_observers.follow(m_state.isLocked, followSight);
    m_observers.follow(m_state.isScreenFull, followSight);
    m_observers.follow(m_state.requestsOverFullscreen, followSight);
}

void Island::greet()
{
    if (!IslandSight::mayBeDrawn(m_state)) {
        m_machine.reveal();
        return;
    }
    m_writer.setView(IslandView::greeting);
    m_machine.beginGreeting();
    m_state.lastActivity = m_queue.mediaTime();
}

void Island::open(IslandView card)
{
    if (m_state.isLocked)
        return;
    m_writer.setView(card);
    m_machine.open();
    m_state.lastActivity = m_queue.mediaTime();
}

void Island::collapse()
{
    m_machine.collapse();
}

void Island::click()
{
    if (m_state.mode != IslandMode::expanded)
        open(defaultView());
}

void Island::pointerEntered()
{
    if (m_machine.state() == IslandStateMachine::State::tirlo)
        Q_EMIT m_notifications.greetingHover();
    m_machine.mouseEntered();
}

void Island::pointerLeft()
{
    m_machine.mouseLeft();
}

void Island::keyboardEntered()
{
    m_machine.keyboardEntered();
}

void Island::keyboardLeft()
{
    m_machine.keyboardLeft();
}

void Island::show(IslandView card)
{
    // The greeting is over once another card is on show.
    if (m_machine.state() == IslandStateMachine::State::tirlo)
        m_machine.open();
    m_writer.setView(card);
}

void Island::leave(IslandView card)
{
    if (m_state.view == card)
        show(defaultView());
}

void Island::say(const QString &note)
{
    m_state.noteMessage = note;
    show(IslandView::note);
}

/// What opens without the user goes without them, but for what they have to answer.
void Island::openForEvent(IslandView card)
{
    open(card);
    if (!asksTheUser(card))
        m_machine.startWaiting();
}

void Island::transition(IslandStateMachine::State from, IslandStateMachine::State to)
{
    using State = IslandStateMachine::State;
    const IslandMode old = modeOf(from);
    const IslandMode mode = modeOf(to);
    const bool wasSeenOpen = m_isSeenOpen;
    if (from == State::hidden && to == State::petit && IslandSight::mayBeDrawn(m_state))
        m_sounds.play(QStringLiteral("peek"));
    if (from == State::tirlo && to == State::petit)
        Q_EMIT m_notifications.greetingInterrupt();

    m_writer.setMode(mode);
    if (old == IslandMode::expanded && mode != old) {
        if (wasSeenOpen)
            m_sounds.play(QStringLiteral("close"));
        if (!hasRequest())
            m_state.isPinned = false;
    }
    if (from == State::tirlo && to == State::petit)
        m_writer.setView(defaultView());
}

/// A new pill makes a hidden island peek out, and without any there is nothing to peek for.
void Island::followTasks()
{
    const QSet<QString> known = std::exchange(m_knownTasks, taskIds());
    if (m_knownTasks.isEmpty())
        m_machine.hide();
    else if (m_state.isPresent && !known.contains(m_knownTasks))
        m_machine.reveal();

    if (m_state.mode != IslandMode::expanded)
        return;
    if (m_state.view == IslandView::empty || m_state.view == IslandView::overview)
        m_writer.setView(m_knownTasks.isEmpty() ? IslandView::empty : IslandView::overview);
}

/// What was held open by the request falls back from now on.
void Island::followRequest()
{
    if (!isHeldOpen())
        m_machine.startWaiting();
}

/// What waits for an answer comes up once the user is back.
void Island::followLock()
{
    if (m_state.isLocked)
        m_machine.collapse();
    else if (isHeldOpen())
        openForEvent(defaultView());
}

/// A greeting that can't be seen is over.
void Island::followFullScreen()
{
    if (m_state.isScreenFull && m_machine.state() == IslandStateMachine::State::tirlo)
        m_machine.collapse();
}

void Island::followSight()
{
    const bool isSeenOpen
        = m_state.mode == IslandMode::expanded && IslandSight::mayBeDrawn(m_state);
    if (isSeenOpen != std::exchange(m_isSeenOpen, isSeenOpen) && isSeenOpen)
        m_sounds.play(QStringLiteral("open"));
}

void Island::beDizzy()
{
    const IslandView previous = m_state.view;
    m_state.stateOverride = BotState::dizzy;
    openForEvent(IslandView::confused);
    m_recovery.cancel();
    m_recovery = m_queue.after(dizzySeconds, this, [this, previous] { recover(previous); });
}

void Island::recover(IslandView previous)
{
    m_state.stateOverride = std::nullopt;
    if (m_state.view == IslandView::confused) {
        const bool isOver = previous == IslandView::confused || asksTheUser(previous);
        show(isOver ? defaultView() : previous);
    }
    Q_EMIT m_notifications.triggerEmote(BotEmote::happy);
}

IslandView Island::defaultView() const
{
    if (const std::optional<ApprovalInfo> request = m_state.pendingApproval)
        return request->questions.isEmpty() ? IslandView::approval : IslandView::question;
    return m_knownTasks.isEmpty() ? IslandView::empty : IslandView::overview;
}

bool Island::hasRequest() const
{
    return m_state.pendingApproval.value().has_value();
}

/// Nothing is held open for those who stand before a locked session.
bool Island::isHeldOpen() const
{
    return hasRequest() && !m_state.isLocked;
}

QSet<QString> Island::taskIds() const
{
    QSet<QString> ids;
    for (const AgentTask &task : m_state.tasks.value())
        ids.insert(task.id);
    return ids;
}

} // namespace tirlo
