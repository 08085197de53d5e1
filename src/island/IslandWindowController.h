#pragma once

#include "IslandGeometry.h"
#include "IslandKeys.h"
#include "IslandPanel.h"
#include "IslandPresses.h"
#include "MascotHover.h"
#include "PointerLoop.h"

#include <QObject>

namespace tirlo {

class Applications;
class Island;

/// What the island's controller needs of the desktop; all of it outlives the controller.
struct IslandDesktop
{
    const Screens &screens;
    WindowShape &shape;
    const Pointer &pointer;
    const InputMonitor &input;
    const WindowList &windows;
    Applications &applications;
    /// Drives the pointer's polling and nothing else.
    FrameDriver &pollDriver;
};

/// Owns the island's panel, and tells the island what the desktop's pointer and keys do to it.
///
/// The panel stays on the screen chosen at start. All collaborators must outlive the controller.
class IslandWindowController final : public QObject
{
    Q_OBJECT

public:
    /// Measures the screen with the notch, else the main one, builds the panel there and begins to
    /// follow the pointer.
    ///
    /// Ends the process when there is no screen at all.
    IslandWindowController(const IslandDesktop &desktop, Island &island, AppState &state,
                           Notifications &notifications, SoundEngine &sounds, MainQueue &queue);

    [[nodiscard]] IslandPanel &panel() { return m_panel; }

    /// Fills the panel with the island's views.
    void setContent(QWidget *content) { m_panel.setContent(content); }

    /// Puts the panel on the screen without taking the focus.
    void showWindow() { m_panel.show(); }

private:
    void setupPanel();
    void followCard();
    void resignKey();

    IslandDesktop m_desktop;
    AppState &m_state;

    const ScreenInfo m_screen;
    IslandPanel m_panel;
    MascotHover m_hover;
    PointerLoop m_loop;
    IslandPresses m_presses;
    IslandKeys m_keys;

    Observers m_observers;
};

} // namespace tirlo
