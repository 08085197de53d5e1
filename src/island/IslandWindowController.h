#pragma once

#include "IslandGeometry.h"
#include "IslandPanel.h"

#include <QObject>

#include <memory>

namespace tirlo {

class MainQueue;
class Notifications;
class SoundEngine;

/// Owns the island's panel and turns what other parts ask for into the island's mode and view.
///
/// The panel stays on the screen chosen at start. All collaborators must outlive the controller.
class IslandWindowController final : public QObject
{
    Q_OBJECT

public:
    /// Measures the screen with the notch, else the main one, and builds the panel there.
    ///
    /// Ends the process when there is no screen at all.
    IslandWindowController(const Screens &screens, WindowShape &shape, AppState &state,
                           Notifications &notifications, SoundEngine &sounds,
                           const MainQueue &queue);

    [[nodiscard]] IslandPanel &panel() { return *m_panel; }

    /// Fills the panel with the island's views.
    void setContent(QWidget *content) { m_panel->setContent(content); }

    /// Puts the panel on the screen without taking the focus.
    void showWindow() { m_panel->show(); }

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
    void setupPanel(const ScreenInfo &screen, const IslandScreenGeometry &notch);
    void observeNotifications(const Notifications &notifications);
    void reveal();

    AppState &m_state;
    SoundEngine &m_sounds;
    const MainQueue &m_queue;
    std::unique_ptr<IslandPanel> m_panel;
};

} // namespace tirlo
