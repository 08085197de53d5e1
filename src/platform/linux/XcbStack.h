#pragma once

#include "X11.h"

#include "platform/MainQueue.h"

#include <QHash>
#include <QObject>
#include <QRect>

#include <memory>
#include <vector>

namespace tirlo {

/// All top-level windows as they lie over each other, frames and menus included.
///
/// It is kept up to date by the server's events alone; nothing is asked of the server but what a
/// window is, once, when that matters. They come on a connection of its own, since Qt leaves some
/// out that are all the same to it. Without X there are none.
class XcbStack final : public QObject
{
    Q_OBJECT

public:
    struct Window
    {
        xcb_window_t id = XCB_NONE;
        /// In device pixels of the whole desktop, its border included.
        QRect place;
        bool isMapped = false;
    };

    /// The queue outlives the stack.
    explicit XcbStack(MainQueue &queue);

    [[nodiscard]] const X11 &x11() const { return m_x11; }

    /// The lowest first.
    [[nodiscard]] const std::vector<Window> &windows() const { return m_windows; }

    /// The application's window inside the frame, which may be that itself; none when no window
    /// manager looks after it.
    [[nodiscard]] xcb_window_t clientOf(xcb_window_t frame) const { return nature(frame).client; }

    /// Whether there is nothing to be seen of the window, which only takes input.
    [[nodiscard]] bool isInvisible(xcb_window_t window) const { return nature(window).isInputOnly; }

    /// Whether the window is a top-level one of this program.
    [[nodiscard]] static bool isOurs(xcb_window_t window);

Q_SIGNALS:
    /// The windows are others or lie elsewhere; told once for all that has come together.
    void changed();

    /// Nothing has changed for a while, within which a window manager does what it does about a
    /// change: what a window is and what it says of itself is worth another look.
    void settled();

private:
    struct Nature
    {
        xcb_window_t client = XCB_NONE;
        bool isInputOnly = false;
    };

    struct Disconnect
    {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };

    void readEvents();
    [[nodiscard]] bool apply(const xcb_generic_event_t &event);
    void readAll();
    void add(xcb_window_t id, const QRect &place, bool isMapped);
    void configure(const xcb_configure_notify_event_t &event);
    void circulate(const xcb_circulate_notify_event_t &event);
    void reparent(const xcb_reparent_notify_event_t &event);
    void setMapped(xcb_window_t id, bool isMapped);
    void remove(xcb_window_t id);
    void tell();
    void settle();
    [[nodiscard]] std::vector<Window>::iterator find(xcb_window_t id);
    [[nodiscard]] Nature nature(xcb_window_t id) const;
    [[nodiscard]] xcb_window_t clientWithin(xcb_window_t window, int depth) const;
    [[nodiscard]] static std::vector<xcb_window_t> childrenOf(xcb_connection_t *connection,
                                                              xcb_window_t window);

    MainQueue &m_queue;
    /// For questions.
    X11 m_x11;
    /// For events.
    std::unique_ptr<xcb_connection_t, Disconnect> m_events;
    xcb_atom_t m_wmState = XCB_NONE;
    std::vector<Window> m_windows;
    /// What is known of those that mattered.
    mutable QHash<xcb_window_t, Nature> m_natures;
    bool m_isTelling = false;
    bool m_isSettling = false;
    /// Media time of the last change.
    double m_lastChange = 0;
};

} // namespace tirlo
