#pragma once

#include "IslandGeometry.h"
#include "IslandKeys.h"
#include "IslandPanel.h"
#include "IslandPresses.h"
#include "IslandStateMachine.h"
#include "MascotHover.h"
#include "PointerLoop.h"

#include <QObject>

namespace tirlo {

class Applications;

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

/// Owns the island's panel and its state machine, and turns the machine's transitions and what
/// other parts ask for into the island's mode and view.
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
    IslandWindowController(const IslandDesktop &desktop, AppState &state,
                           Notifications &notifications, SoundEngine &sounds, MainQueue &queue);

    [[nodiscard]] IslandPanel &panel() { return m_panel; }
    [[nodiscard]] IslandStateMachine &fsm() { return m_fsm; }

    /// Fills the panel with the island's views.
    void setContent(QWidget *content) { m_panel.setContent(content); }

    /// Puts the panel on the screen without taking the focus.
    void showWindow() { m_panel.show(); }

    /// Opens the island on the view.
    void expand(IslandView to);

    /// Closes the island to its compact form, unless a permission request holds it open.
    void collapse();

    /// Changes the mode with its sounds; the present mode again does nothing.
    void setMode(IslandMode mode);

    /// The view that the island opens on by itself.
    [[nodiscard]] IslandView defaultView() const;

    /// True while a permission request waits for its answer.
    [[nodiscard]] bool isHeldOpen() const;

private:
    void setupPanel();
    void wireMachine();
    void observeNotifications();
    void transition(IslandStateMachine::State from, IslandStateMachine::State to);
    void followView();
    void resignKey();
    void handleDizzy();
    void recover(IslandView previous);

    IslandDesktop m_desktop;
    AppState &m_state;
    Notifications &m_notifications;
    SoundEngine &m_sounds;
    MainQueue &m_queue;

    const ScreenInfo m_screen;
    IslandPanel m_panel;
    IslandStateMachine m_fsm;
    MascotHover m_hover;
    PointerLoop m_loop;
    IslandPresses m_presses;
    IslandKeys m_keys;

    WorkItem m_confusedRecoveryTimer;
    Observers m_observers;
};

} // namespace tirlo
