#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace tirlo {

struct FreeReply
{
    void operator()(void *reply) const { std::free(reply); }
};

/// A reply of the X server; null when the server answered with an error.
template<typename T>
using XReply = std::unique_ptr<T, FreeReply>;

/// Qt's own connection to the X server, and the questions that several services ask of it.
///
/// It is false where Qt runs on something else, and then nothing may be asked.
class X11
{
public:
    X11();

    explicit operator bool() const { return m_connection; }

    [[nodiscard]] xcb_connection_t *connection() const { return m_connection; }
    /// The root window of the default screen.
    [[nodiscard]] xcb_window_t root() const { return m_root; }
    /// The number of the default screen.
    [[nodiscard]] int screen() const { return m_screen; }

    /// The atom of the name, made if there was none.
    [[nodiscard]] xcb_atom_t atom(const QByteArray &name) const;

    /// A property's 32-bit values, whatever their type; empty when there is no such property.
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window,
                                                     xcb_atom_t property) const;

    /// A property's bytes, whatever their type; empty when there is no such property.
    [[nodiscard]] QByteArray bytes(xcb_window_t window, xcb_atom_t property) const;

    /// Also reports these events of the window to Qt's connection, which keeps what it had chosen.
    void addEvents(xcb_window_t window, std::uint32_t mask) const;

private:
    [[nodiscard]] XReply<xcb_get_property_reply_t> property(xcb_window_t window,
                                                            xcb_atom_t property) const;

    xcb_connection_t *m_connection = nullptr;
    xcb_window_t m_root = XCB_NONE;
    int m_screen = 0;
};

} // namespace tirlo
