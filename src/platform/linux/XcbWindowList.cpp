#include "XcbWindowList.h"

#include "NativeScreen.h"

#include <QCoreApplication>

#include <xcb/shape.h>

#include <ranges>

namespace tirlo {

namespace {

/// Whether the window takes the pointer there, in device pixels of the desktop: a layer that only
/// shows something over others does not.
bool takesPointer(const X11 &x11, const XcbStack::Window &window, QPoint place)
{
    const auto cookie = xcb_shape_get_rectangles(x11.connection(), window.id, XCB_SHAPE_SK_INPUT);
    const XReply<xcb_shape_get_rectangles_reply_t> reply(
        xcb_shape_get_rectangles_reply(x11.connection(), cookie, nullptr));
    if (!reply)
        return false;
    const xcb_rectangle_t *rectangles = xcb_shape_get_rectangles_rectangles(reply.get());
    const QPoint within = place - window.place.topLeft();
    return std::any_of(rectangles,
                       rectangles + xcb_shape_get_rectangles_rectangles_length(reply.get()),
                       [within](const xcb_rectangle_t &rectangle) {
                           return QRect(rectangle.x, rectangle.y, rectangle.width, rectangle.height)
                               .contains(within);
                       });
}

} // namespace

XcbWindowList::XcbWindowList(const XcbStack &stack)
    : m_stack(stack)
{
    if (!m_windows.x11())
        return;
    m_windows.x11().addEvents(m_windows.x11().root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    qApp->installNativeEventFilter(this);
    connect(&stack, &XcbStack::changed, this, &XcbWindowList::arrangementChanged);
    connect(&stack, &XcbStack::settled, this, &XcbWindowList::forget);
}

bool XcbWindowList::isFullScreen(const QRectF &screen) const
{
    const QRect place = nativeScreen(screen);
    if (place.isEmpty())
        return false;
    const QPoint middle(place.center().x(), place.top());
    for (const XcbStack::Window &window : m_stack.windows() | std::views::reverse) {
        if (!window.isMapped || !window.place.contains(middle) || XcbStack::isOurs(window.id)
            || m_stack.isInvisible(window.id))
            continue;
        const bool isWhole = window.place.contains(place);
        const xcb_window_t client = m_stack.clientOf(window.id);
        if (client == XCB_NONE) {
            // Menus and the like come and go over what counts.
            if (isWhole && takesPointer(m_windows.x11(), window, middle))
                return true;
            continue;
        }
        auto known = m_states.constFind(client);
        if (known == m_states.cend())
            known = m_states.insert(client, m_windows.stateOf(client));
        if (!known->isHidden)
            return isWhole && known->isFullScreen;
    }
    return false;
}

bool XcbWindowList::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_property_notify_event_t *>(message);
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY
        || event->window != m_windows.x11().root())
        return false;
    // Queued, so that no one runs amid Qt's reading of events.
    if (event->atom == m_windows.activeWindowProperty())
        QMetaObject::invokeMethod(this, &XcbWindowList::readActiveWindow, Qt::QueuedConnection);
    if (event->atom == m_windows.currentDesktopProperty())
        QMetaObject::invokeMethod(this, &XcbWindowList::forget, Qt::QueuedConnection);
    return false;
}

void XcbWindowList::readActiveWindow()
{
    // A window that becomes full-screen is mostly made active, too.
    forget();
    const xcb_window_t window = m_windows.activeWindow();
    if (window == XCB_NONE)
        return;
    const RunningApplication application = m_windows.applicationOf(window);
    const bool hasGone = application == RunningApplication{};
    if (hasGone || application == m_active)
        return;
    m_active = application;
    Q_EMIT applicationActivated(application);
}

void XcbWindowList::forget()
{
    m_states.clear();
    Q_EMIT arrangementChanged();
}

} // namespace tirlo
