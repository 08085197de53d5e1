#include "IslandWindowController.h"

#include "core/AppState.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"
#include "platform/Applications.h"
#include "platform/MainQueue.h"

namespace tirlo {

namespace {

/// Seconds that the mascot needs after too many slaps.
constexpr double dizzySeconds = 3.3;

ScreenInfo chosenScreen(const Screens &screens)
{
    if (const auto screen = IslandGeometry::notchScreen(screens))
        return *screen;
    if (const auto screen = screens.main())
        return *screen;
    qFatal("There is no screen to put the island on.");
}

} // namespace

IslandWindowController::IslandWindowController(const IslandDesktop &desktop, AppState &state,
                                               Notifications &notifications, SoundEngine &sounds,
                                               MainQueue &queue)
    : m_desktop(desktop)
    , m_state(state)
    , m_notifications(notifications)
    , m_sounds(sounds)
    , m_queue(queue)
    , m_screen(chosenScreen(desktop.screens))
    , m_panel(state, desktop.shape, desktop.pointer.seesWholeDesktop())
    , m_fsm(queue)
    , m_hover(state, notifications, sounds, queue)
    , m_loop({m_panel, m_fsm, m_hover, state, notifications}, desktop.pointer, desktop.pollDriver)
    , m_presses({m_panel, m_fsm, m_hover, m_loop, state, notifications},
                {.openDefault = [this] { expand(defaultView()); },
                 .takeKeyboard = [this] { m_panel.takeKeyboard(); }})
    , m_keys(state, desktop.input, desktop.windows,
             {.collapse = [this] { collapse(); },
              .openOverview = [this] { expand(IslandView::overview); }})
{
    setupPanel();
    m_loop.startPolling();
    observeNotifications();
    wireMachine();
    m_observers.follow(m_state.view, [this] { followView(); });
}

void IslandWindowController::expand(IslandView to)
{
    m_state.view = to;
    setMode(IslandMode::expanded);
    // A view that was there already is no change, and the keyboard may have gone meanwhile.
    followView();
    m_state.lastActivity = m_queue.mediaTime();
}

void IslandWindowController::collapse()
{
    if (isHeldOpen())
        return;
    m_state.isPinned = false;
    m_fsm.collapse();
    setMode(IslandMode::compact);
}

void IslandWindowController::setMode(IslandMode mode)
{
    const IslandMode old = m_state.mode;
    if (mode == old)
        return;
    m_state.mode = mode;
    if (mode == IslandMode::expanded)
        m_sounds.play(QStringLiteral("open"));
    if (old != IslandMode::expanded)
        return;
    m_sounds.play(QStringLiteral("close"));
    if (!isHeldOpen())
        m_state.isPinned = false;
    // However it closes: nobody types into a card that isn't there.
    resignKey();
}

IslandView IslandWindowController::defaultView() const
{
    if (isHeldOpen())
        return IslandView::approval;
    return m_state.tasks.value().isEmpty() ? IslandView::empty : IslandView::overview;
}

bool IslandWindowController::isHeldOpen() const
{
    return m_state.pendingApproval.value().has_value();
}

void IslandWindowController::setupPanel()
{
    const auto notch
        = IslandGeometry::screenGeometry(m_screen, m_desktop.screens.statusBarThickness());
    m_state.notchWidth = notch.notchWidth;
    m_state.notchHeight = notch.notchHeight;
    m_state.hasNotch = notch.hasNotch;
    m_panel.placeOn(m_screen, notch);
}

void IslandWindowController::wireMachine()
{
    m_fsm.isHeldOpen = [this] { return isHeldOpen(); };
    m_fsm.onTransition = [this](IslandStateMachine::State from, IslandStateMachine::State to) {
        transition(from, to);
    };
}

void IslandWindowController::observeNotifications()
{
    connect(&m_notifications, &Notifications::hookExpand, this, [this](IslandView view) {
        m_fsm.holdOpen();
        expand(view);
    });
    connect(&m_notifications, &Notifications::hookReveal, &m_fsm, &IslandStateMachine::reveal);
    connect(&m_notifications, &Notifications::islandCollapse, this,
            &IslandWindowController::collapse);
    connect(&m_notifications, &Notifications::botDizzy, this, &IslandWindowController::handleDizzy);
    connect(&m_notifications, &Notifications::greetComplete, this, [this] {
        // A permission request that took the film's place is not closed with it.
        if (m_state.view == IslandView::greeting || !isHeldOpen())
            m_fsm.greetingFinished();
    });
}

void IslandWindowController::transition(IslandStateMachine::State from,
                                        IslandStateMachine::State to)
{
    using State = IslandStateMachine::State;
    switch (to) {
    case State::hidden:
        setMode(IslandMode::hidden);
        break;
    case State::petit:
        if (from == State::hidden)
            m_sounds.play(QStringLiteral("peek"));
        if (from == State::tirlo)
            Q_EMIT m_notifications.greetingInterrupt();
        setMode(IslandMode::compact);
        if (from == State::tirlo)
            m_state.view = defaultView();
        break;
    case State::home:
        expand(defaultView());
        break;
    case State::tirlo:
        expand(IslandView::greeting);
        break;
    }

    // The loop reports edges only: a change away from the pointer has to arm the timers itself.
    const bool fallsBack = to == State::petit || to == State::home;
    if (fallsBack && !m_loop.wasInIsland())
        m_fsm.mouseLeft();
}

/// The prompt's text field gets the keyboard without the program coming to the front.
void IslandWindowController::followView()
{
    if (m_state.view == IslandView::prompt)
        m_panel.takeKeyboard();
}

/// Gives the keyboard back to whoever had it before the island.
void IslandWindowController::resignKey()
{
    if (m_panel.releaseKeyboard() && m_state.lastExternalApp)
        m_desktop.applications.activate(*m_state.lastExternalApp);
}

void IslandWindowController::handleDizzy()
{
    const IslandView previous = m_state.view;
    m_state.stateOverride = BotState::dizzy;
    expand(IslandView::confused);
    m_confusedRecoveryTimer.cancel();
    m_confusedRecoveryTimer
        = m_queue.after(dizzySeconds, this, [this, previous] { recover(previous); });
}

void IslandWindowController::recover(IslandView previous)
{
    m_state.stateOverride = std::nullopt;
    if (m_state.view == IslandView::confused) {
        const bool hasTasks = !m_state.tasks.value().isEmpty();
        const IslandView home = hasTasks ? IslandView::overview : IslandView::empty;
        m_state.view = previous == IslandView::confused ? home : previous;
    }
    Q_EMIT m_notifications.triggerEmote(BotEmote::happy);
}

} // namespace tirlo
