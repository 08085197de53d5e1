#include "IslandWindowController.h"

#include "Island.h"
#include "IslandSight.h"
#include "core/AppState.h"
#include "platform/SessionLock.h"

namespace tirlo {

IslandWindowController::IslandWindowController(const IslandDesktop &desktop, Island &island,
                                               AppState &state, Notifications &notifications,
                                               SoundEngine &sounds, MainQueue &queue)
    : m_desktop(desktop)
    , m_state(state)
    , m_mode(state.mode)
    , m_panel(state, desktop.shape, desktop.panelWindow, desktop.pointer.seesWholeDesktop())
    , m_guard(m_panel, desktop.panelWindow, state, queue)
    , m_hover(state, notifications, sounds, queue)
    , m_loop({m_panel, island, m_hover, state}, desktop.pointer, desktop.pollDriver)
    , m_presses({m_panel, island, m_hover, m_loop, state, notifications})
    , m_keyboard(state, island, m_panel, desktop.applications)
    , m_keys(state, island, m_keyboard, {desktop.input, desktop.hotkey, desktop.windows})
{
    m_state.isLocked = desktop.lock.isLocked();
    chooseScreen();
    m_loop.startPolling();

    connect(&desktop.screens, &Screens::changed, this, &IslandWindowController::chooseScreen);
    connect(&desktop.windows, &WindowList::arrangementChanged, this,
            &IslandWindowController::followFullScreen);
    connect(&desktop.lock, &SessionLock::changed, this,
            [this] { m_state.isLocked = m_desktop.lock.isLocked(); });
    m_observers.follow(m_state.islandScreen, [this] { chooseScreen(); });
    m_observers.follow(m_state.islandPosition, [this] { hang(); });
    m_observers.follow(m_state.isScreenFull, [this] { hang(); });

    m_observers.follow(m_state.mode, [this] { followMode(); });
    const auto followSight = [this] { this->followSight(); };
    m_observers.follow(m_state.mode, followSight);
    m_observers.follow(m_state.view, followSight);
    m_observers.follow(m_state.isLocked, followSight);
    m_observers.follow(m_state.isScreenFull, followSight);
    m_observers.follow(m_state.requestsOverFullscreen, followSight);
    // Where a window manager thinks that the window before has the keyboard all the time, or where
    // there is none, a press on that would not bring it back there.
    connect(&desktop.input, &InputMonitor::leftButtonUp, &m_keyboard, &IslandKeyboard::giveBack);
}

void IslandWindowController::showWindow()
{
    m_isWanted = true;
    followSight();
}

void IslandWindowController::chooseScreen()
{
    const auto screen
        = IslandGeometry::chosenScreen(m_desktop.screens, m_state.islandScreen, m_opener);
    if (screen == m_screen)
        return;
    m_screen = screen;
    followFullScreen();
    hang();
    followSight();
}

void IslandWindowController::followMode()
{
    const bool wasOpen = std::exchange(m_mode, m_state.mode.value()) == IslandMode::expanded;
    if (m_mode == IslandMode::expanded && !wasOpen && m_desktop.pointer.seesWholeDesktop()) {
        m_opener = m_desktop.pointer.position();
        if (m_state.islandScreen == IslandScreen::pointer)
            chooseScreen();
    }
}

void IslandWindowController::followFullScreen()
{
    if (m_screen)
        m_state.isScreenFull = m_desktop.windows.isFullScreen(m_screen->frame);
}

/// Puts the panel where it belongs on its screen.
void IslandWindowController::hang()
{
    if (!m_screen)
        return;
    const double depth
        = IslandGeometry::hangingDepth(*m_screen, m_state.islandPosition, m_state.isScreenFull,
                                       m_desktop.screens.statusBarThickness());
    ScreenInfo around = *m_screen;
    // Below a panel it is not in the notch.
    if (depth > 0)
        around.safeAreaTop = 0;
    const auto notch
        = IslandGeometry::screenGeometry(around, m_desktop.screens.statusBarThickness());
    m_state.notchWidth = notch.notchWidth;
    m_state.notchHeight = notch.notchHeight;
    m_state.hasNotch = notch.hasNotch;
    m_panel.placeOn(*m_screen, notch, depth);
}

/// Shows the panel while the island may be seen, and nothing of it otherwise.
void IslandWindowController::followSight()
{
    const bool isSeen = m_isWanted && m_screen && IslandSight::mayBeDrawn(m_state);
    if (isSeen == m_panel.isVisible())
        return;
    if (!isSeen)
        m_keyboard.giveBack();
    m_panel.setVisible(isSeen);
    m_guard.bringForward();
    m_keyboard.followCard();
}

} // namespace tirlo
