#pragma once

#include "X11.h"

#include "platform/Applications.h"

#include <vector>

namespace tirlo {

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

    /// The window that has the user's attention, or none.
    [[nodiscard]] xcb_window_t activeWindow() const;

    /// All managed windows, the front-most first.
    [[nodiscard]] std::vector<xcb_window_t> frontToBack() const;

    /// The application that the window belongs to.
    [[nodiscard]] RunningApplication applicationOf(xcb_window_t window) const;

    /// Asks the window manager to bring the window to the front, as a task bar does for the user.
    void activate(xcb_window_t window) const;

private:
    X11 m_x11;
    xcb_atom_t m_activeWindow = XCB_NONE;
    xcb_atom_t m_stacking = XCB_NONE;
    xcb_atom_t m_processId = XCB_NONE;
};

} // namespace tirlo
