#include "IslandWindowController.h"

#include "Island.h"
#include "core/AppState.h"
#include "platform/Applications.h"

#include <QApplication>

namespace tirlo {

namespace {

ScreenInfo chosenScreen(const Screens &screens)
{
    if (const auto screen = IslandGeometry::notchScreen(screens))
        return *screen;
    if (const auto screen = screens.main())
        return *screen;
    qFatal("There is no screen to put the island on.");
}

} // namespace

IslandWindowController::IslandWindowController(const IslandDesktop &desktop, Island &island,
                                               AppState &state, Notifications &notifications,
                                               SoundEngine &sounds, MainQueue &queue)
    : m_desktop(desktop)
    , m_state(state)
    , m_screen(chosenScreen(desktop.screens))
    , m_panel(state, desktop.shape, desktop.pointer.seesWholeDesktop())
    , m_hover(state, notifications, sounds, queue)
    , m_loop({m_panel, island, m_hover, state}, desktop.pointer, desktop.pollDriver)
    , m_presses({m_panel, island, m_hover, m_loop, state, notifications})
    , m_keys(state, island, desktop.input, desktop.windows)
{
    setupPanel();
    m_loop.startPolling();
    m_observers.follow(m_state.mode, [this] { followCard(); });
    m_observers.follow(m_state.view, [this] { followCard(); });
    // A field that was left, as by Escape, needs the keyboard no more.
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget *, const QWidget *now) {
        if (!now)
            followCard();
    });
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

/// The prompt's text field gets the keyboard without the program coming to the front. Any other
/// card hands it back, until a text field of its own is pressed.
void IslandWindowController::followCard()
{
    if (m_state.mode == IslandMode::expanded && m_state.view == IslandView::prompt)
        m_panel.takeKeyboard();
    else
        resignKey();
}

/// Gives the keyboard back to whoever had it before the island.
void IslandWindowController::resignKey()
{
    if (m_panel.releaseKeyboard() && m_state.lastExternalApp)
        m_desktop.applications.activate(*m_state.lastExternalApp);
}

} // namespace tirlo
