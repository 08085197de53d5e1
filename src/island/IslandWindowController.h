#pragma once

#include "IslandGeometry.h"
#include "IslandKeyboard.h"
#include "IslandKeys.h"
#include "IslandPanel.h"
#include "IslandPresses.h"
#include "MascotHover.h"
#include "PanelGuard.h"
#include "PointerLoop.h"

#include <QObject>

namespace tirlo {

class Applications;
class Island;
class SessionLock;

/// What the island's controller needs of the desktop; all of it outlives the controller.
struct IslandDesktop
{
    const Screens &screens;
    WindowShape &shape;
    PanelWindow &panelWindow;
    const SessionLock &lock;
    const Pointer &pointer;
    const InputMonitor &input;
    Hotkey &hotkey;
    const WindowList &windows;
    Applications &applications;
    /// Drives the pointer's polling and nothing else.
    FrameDriver &pollDriver;
};

/// Owns the island's panel, and tells the island what the desktop's pointer and keys do to it.
///
/// The panel follows its screen, and what the desktop has on it. All collaborators must outlive the
/// controller.
class IslandWindowController final : public QObject
{
    Q_OBJECT

public:
    /// Measures the screen, builds the panel there and begins to follow the pointer.
    ///
    /// While there is no screen at all the panel waits for one.
    IslandWindowController(const IslandDesktop &desktop, Island &island, AppState &state,
                           Notifications &notifications, SoundEngine &sounds, MainQueue &queue);

    [[nodiscard]] IslandPanel &panel() { return m_panel; }
    [[nodiscard]] PanelGuard &guard() { return m_guard; }

    /// The screen that the island is on, if there is one.
    [[nodiscard]] const std::optional<ScreenInfo> &screen() const { return m_screen; }

    /// Fills the panel with the island's views.
    void setContent(QWidget *content) { m_panel.setContent(content); }

    /// Puts the panel on the screen without taking the focus, whenever it may be seen there.
    void showWindow();

private:
    void chooseScreen();
    void followMode();
    void followFullScreen();
    void hang();
    void followSight();

    IslandDesktop m_desktop;
    AppState &m_state;

    std::optional<ScreenInfo> m_screen;
    /// Where the pointer was when the island last opened.
    std::optional<QPointF> m_opener;
    IslandMode m_mode;
    bool m_isWanted = false;
    IslandPanel m_panel;
    PanelGuard m_guard;
    MascotHover m_hover;
    PointerLoop m_loop;
    IslandPresses m_presses;
    IslandKeyboard m_keyboard;
    IslandKeys m_keys;

    Observers m_observers;
};

} // namespace tirlo
