#include "XcbPanels.h"

#include <QCoreApplication>

#include <algorithm>

namespace tirlo {

namespace {

/// No panel takes more of the screen's height.
constexpr int mostOfScreen = 3;

/// Where the widths of a partial strut tell of its upper edge, and how many there are.
constexpr std::size_t topIndex = 2;
constexpr std::size_t topStartIndex = 8;
constexpr std::size_t topEndIndex = 9;
constexpr std::size_t partialLength = 12;
constexpr std::size_t fullLength = 4;

/// A depth counted from the desktop's upper edge as one from the screen's; 0 if it can't be true.
int depthOn(const QRect &screen, std::int64_t fromTop)
{
    const std::int64_t depth = fromTop - screen.top();
    return depth > 0 && depth <= screen.height() / mostOfScreen ? int(depth) : 0;
}

} // namespace

XcbPanels::XcbPanels()
{
    if (!m_x11)
        return;
    m_clients = m_x11.atom("_NET_CLIENT_LIST");
    m_partialStrut = m_x11.atom("_NET_WM_STRUT_PARTIAL");
    m_strut = m_x11.atom("_NET_WM_STRUT");
    m_currentDesktop = m_x11.atom("_NET_CURRENT_DESKTOP");
    m_workArea = m_x11.atom("_NET_WORKAREA");
    m_x11.addEvents(m_x11.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    qApp->installNativeEventFilter(this);
}

int XcbPanels::depthAt(const QRect &screen, bool isMain) const
{
    if (!m_x11 || screen.isEmpty())
        return 0;
    const int reserved = reservedByWindows(screen);
    return reserved > 0 ? reserved : leftByWindowManager(screen, isMain);
}

bool XcbPanels::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_property_notify_event_t *>(message);
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY || event->window != m_x11.root()
        || (event->atom != m_clients && event->atom != m_workArea))
        return false;
    // Queued, so that no one runs amid Qt's reading of events.
    QMetaObject::invokeMethod(this, &XcbPanels::changed, Qt::QueuedConnection);
    return false;
}

int XcbPanels::reservedByWindows(const QRect &screen) const
{
    int deepest = 0;
    for (const xcb_window_t client : m_x11.numbers(m_x11.root(), m_clients)) {
        const auto partial = m_x11.numbers(client, m_partialStrut);
        const std::int64_t middle = screen.center().x();
        if (partial.size() == partialLength) {
            const bool isThere = partial[topStartIndex] <= middle && middle <= partial[topEndIndex];
            if (isThere)
                deepest = std::max(deepest, depthOn(screen, partial[topIndex]));
            continue;
        }
        const auto whole = m_x11.numbers(client, m_strut);
        if (whole.size() == fullLength)
            deepest = std::max(deepest, depthOn(screen, whole[topIndex]));
    }
    return deepest;
}

int XcbPanels::leftByWindowManager(const QRect &screen, bool isMain) const
{
    const auto desktops = m_x11.numbers(m_x11.root(), m_currentDesktop);
    const std::uint32_t desktop = desktops.empty() ? 0 : desktops.front();

    // Some tell of each screen: four numbers an area.
    const auto areas
        = m_x11.numbers(m_x11.root(), m_x11.atom("_GTK_WORKAREAS_D" + QByteArray::number(desktop)));
    for (std::size_t i = 0; i + 4 <= areas.size(); i += 4) {
        const QRect area(int(areas[i]), int(areas[i + 1]), int(areas[i + 2]), int(areas[i + 3]));
        if (screen.contains(area.center()))
            return depthOn(screen, area.top());
    }
    // The others of the desktop as a whole, once for each virtual desktop.
    const auto whole = m_x11.numbers(m_x11.root(), m_workArea);
    const std::size_t top = 4 * std::size_t(desktop) + 1;
    return isMain && top < whole.size() ? depthOn(screen, whole[top]) : 0;
}

} // namespace tirlo
