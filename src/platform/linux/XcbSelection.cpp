#include "XcbSelection.h"

#include "X11.h"

#include <QCoreApplication>

#include <xcb/xfixes.h>

namespace tirlo {

XcbSelection::XcbSelection(const QByteArray &name, bool ownedWithoutX)
    : m_isOwned(ownedWithoutX)
{
    const X11 x11;
    if (!x11)
        return;
    m_selection = x11.atom(name + QByteArray::number(x11.screen()));

    const auto *fixes = xcb_get_extension_data(x11.connection(), &xcb_xfixes_id);
    if (fixes->present) {
        m_selectionEvent = std::uint8_t(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
        // Qt has told the server which version of the extension it speaks, and chooses no more than
        // these events.
        xcb_xfixes_select_selection_input(
            x11.connection(), x11.root(), m_selection,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
        qApp->installNativeEventFilter(this);
    }

    const auto cookie = xcb_get_selection_owner(x11.connection(), m_selection);
    const XReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(x11.connection(), cookie, nullptr));
    m_isOwned = reply && reply->owner != XCB_NONE;
}

bool XcbSelection::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_xfixes_selection_notify_event_t *>(message);
    if ((event->response_type & 0x7f) != m_selectionEvent || event->selection != m_selection)
        return false;
    // Queued, so that no one runs amid Qt's reading of events.
    const bool isOwned = event->owner != XCB_NONE;
    QMetaObject::invokeMethod(
        this, [this, isOwned] { setOwned(isOwned); }, Qt::QueuedConnection);
    return false;
}

void XcbSelection::setOwned(bool isOwned)
{
    if (m_isOwned == isOwned)
        return;
    m_isOwned = isOwned;
    Q_EMIT changed(isOwned);
}

} // namespace tirlo
