#include "XcbWindowList.h"

#include <QCoreApplication>

namespace tirlo {

XcbWindowList::XcbWindowList()
{
    if (!m_windows.x11())
        return;
    m_windows.x11().addEvents(m_windows.x11().root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    qApp->installNativeEventFilter(this);
}

bool XcbWindowList::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_property_notify_event_t *>(message);
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY
        || event->window != m_windows.x11().root()
        || event->atom != m_windows.activeWindowProperty())
        return false;
    // Queued, so that no one runs amid Qt's reading of events.
    QMetaObject::invokeMethod(this, &XcbWindowList::readActiveWindow, Qt::QueuedConnection);
    return false;
}

void XcbWindowList::readActiveWindow()
{
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

} // namespace tirlo
