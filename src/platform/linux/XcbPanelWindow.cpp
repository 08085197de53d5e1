#include "XcbPanelWindow.h"

#include <QWindow>

#include <ranges>

namespace tirlo {

XcbPanelWindow::XcbPanelWindow(const XcbStack &stack)
    : m_stack(stack)
{
    connect(&stack, &XcbStack::changed, this, &XcbPanelWindow::orderChanged);
    connect(&stack, &XcbStack::settled, this, &XcbPanelWindow::orderChanged);
}

bool XcbPanelWindow::isCovered(const QWindow &window, const QRectF &part, Cover cover) const
{
    QRect native;
    for (const XcbStack::Window &other : m_stack.windows()) {
        if (other.id == window.winId()) {
            const double ratio = window.devicePixelRatio();
            native = QRectF(other.place.topLeft() + part.topLeft() * ratio, part.size() * ratio)
                         .toAlignedRect();
            continue;
        }
        // Only those after it in the list are above it.
        if (native.isNull() || !other.isMapped || !other.place.intersects(native)
            || XcbStack::isOurs(other.id) || m_stack.isInvisible(other.id))
            continue;
        if (cover == Cover::anything || m_stack.clientOf(other.id) != XCB_NONE)
            return true;
    }
    return false;
}

void XcbPanelWindow::raise(QWindow &window)
{
    const X11 &x11 = m_stack.x11();
    if (!x11)
        return;
    constexpr std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(x11.connection(), xcb_window_t(window.winId()),
                         XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(x11.connection());
}

void XcbPanelWindow::takeKeyboard(QWindow &window)
{
    const X11 &x11 = m_stack.x11();
    if (!x11) {
        window.requestActivate();
        return;
    }
    const auto native = xcb_window_t(window.winId());
    const xcb_window_t present = focus();
    if (present == native)
        return;
    m_before = present;
    // Should the island vanish with the keyboard, it is wherever the pointer is.
    xcb_set_input_focus(x11.connection(), XCB_INPUT_FOCUS_POINTER_ROOT, native, XCB_CURRENT_TIME);
    xcb_flush(x11.connection());
}

bool XcbPanelWindow::returnKeyboard(QWindow &window)
{
    const X11 &x11 = m_stack.x11();
    if (!x11)
        return !window.isActive();
    const xcb_window_t before = std::exchange(m_before, XCB_NONE);
    if (focus() != xcb_window_t(window.winId()))
        return true;
    const auto give = [&x11](xcb_window_t to) {
        const auto cookie = xcb_set_input_focus_checked(
            x11.connection(), XCB_INPUT_FOCUS_POINTER_ROOT, to, XCB_CURRENT_TIME);
        const XReply<xcb_generic_error_t> error(xcb_request_check(x11.connection(), cookie));
        return !error;
    };
    // A window that has gone, or is not shown, can't have it.
    if (before != XCB_NONE && give(before))
        return true;
    give(XCB_INPUT_FOCUS_POINTER_ROOT);
    return false;
}

xcb_window_t XcbPanelWindow::focus() const
{
    const X11 &x11 = m_stack.x11();
    const auto cookie = xcb_get_input_focus(x11.connection());
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(x11.connection(), cookie, nullptr));
    return reply ? reply->focus : xcb_window_t(XCB_NONE);
}

} // namespace tirlo
