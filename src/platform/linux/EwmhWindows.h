#pragma once

#include "X11.h"

#include "platform/Applications.h"

#include <vector>

namespace tirlo {

/// What a managed window says of itself, and what its window manager says of it.
struct ClientState
{
    bool isFullScreen = false;
    /// Minimised, or on another virtual desktop than the present one.
    bool isHidden = false;
};

/// The managed windows as the window manager lists them on the root window.
///
/// Only for use while x11() is true.
class EwmhWindows
{
public:
    EwmhWindows();

    [[nodiscard]] const X11 &x11() const { return m_x11; }
    /// The property of the root window that names the active window.
    [[nodiscard]] xcb_atom_t activeWindowProperty() const { return m_activeWindow; }

    /// The property of the root window that tells the present virtual desktop.
    [[nodiscard]] xcb_atom_t currentDesktopProperty() const { return m_currentDesktop; }

    /// Whether the managed window is full-screen, and whether it is there at all.
    ///
    /// Full-screen is what its window manager calls so, and one without a frame that is no more
    /// than large is it, too, as long as it fills a screen.
    [[nodiscard]] ClientState stateOf(xcb_window_t client) const;

    /// The window that has the user's attention, or none.
    [[nodiscard]] xcb_window_t activeWindow() const;

    /// All managed windows, the front-most first.
    [[nodiscard]] std::vector<xcb_window_t> frontToBack() const;

    /// The application that the window belongs to.
    [[nodiscard]] RunningApplication applicationOf(xcb_window_t window) const;

    /// Asks the window manager to bring the window to the front, as a task bar does for the user.
    void activate(xcb_window_t window) const;

private:
    [[nodiscard]] bool isWithoutFrame(xcb_window_t client) const;

    X11 m_x11;
    xcb_atom_t m_activeWindow = XCB_NONE;
    xcb_atom_t m_stacking = XCB_NONE;
    xcb_atom_t m_processId = XCB_NONE;
    xcb_atom_t m_currentDesktop = XCB_NONE;
    xcb_atom_t m_desktop = XCB_NONE;
    xcb_atom_t m_state = XCB_NONE;
    xcb_atom_t m_fullScreen = XCB_NONE;
    xcb_atom_t m_hidden = XCB_NONE;
    xcb_atom_t m_maximized = XCB_NONE;
    xcb_atom_t m_type = XCB_NONE;
    xcb_atom_t m_normalType = XCB_NONE;
    xcb_atom_t m_motifHints = XCB_NONE;
};

} // namespace tirlo
