#include "X11.h"

#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>

#include <cstring>

namespace tirlo {

X11::X11()
{
    const auto *x11
        = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11)
        return;
    // The off-screen platform speaks of X, too, but has no connection.
    m_connection = x11->connection();
    if (!m_connection)
        return;

    char *host = nullptr;
    int display = 0;
    xcb_parse_display(nullptr, &host, &display, &m_screen);
    std::free(host);

    auto roots = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    for (int i = 0; i < m_screen && roots.rem > 1; ++i)
        xcb_screen_next(&roots);
    m_root = roots.data->root;
}

xcb_atom_t X11::atom(const QByteArray &name) const
{
    const auto cookie
        = xcb_intern_atom(m_connection, false, std::uint16_t(name.size()), name.constData());
    const XReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_NONE);
}

std::vector<std::uint32_t> X11::numbers(xcb_window_t window, xcb_atom_t property) const
{
    const auto reply = this->property(window, property);
    if (!reply || reply->format != 32)
        return {};
    std::vector<std::uint32_t> values(reply->value_len);
    if (!values.empty())
        std::memcpy(values.data(), xcb_get_property_value(reply.get()), values.size() * 4);
    return values;
}

QByteArray X11::bytes(xcb_window_t window, xcb_atom_t property) const
{
    const auto reply = this->property(window, property);
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())), reply->value_len};
}

void X11::addEvents(xcb_window_t window, std::uint32_t mask) const
{
    const auto cookie = xcb_get_window_attributes(m_connection, window);
    const XReply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(m_connection, cookie, nullptr));
    if (!reply)
        return;
    const std::uint32_t events = reply->your_event_mask | mask;
    xcb_change_window_attributes(m_connection, window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(m_connection);
}

XReply<xcb_get_property_reply_t> X11::property(xcb_window_t window, xcb_atom_t property) const
{
    // In units of four bytes: more than any desktop's list of windows.
    constexpr std::uint32_t longest = 65536;
    const auto cookie = xcb_get_property(m_connection, false, window, property,
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, longest);
    return XReply<xcb_get_property_reply_t>(xcb_get_property_reply(m_connection, cookie, nullptr));
}

} // namespace tirlo
