#include "XcbPanels.h"

#include "NativeScreen.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <limits>

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

XcbPanels::XcbPanels(const XcbStack &stack)
    : m_stack(stack)
{
    const X11 &x11 = stack.x11();
    if (!x11)
        return;
    m_partialStrut = x11.atom("_NET_WM_STRUT_PARTIAL");
    m_strut = x11.atom("_NET_WM_STRUT");
    m_currentDesktop = x11.atom("_NET_CURRENT_DESKTOP");
    m_workArea = x11.atom("_NET_WORKAREA");
    x11.addEvents(x11.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    qApp->installNativeEventFilter(this);
    connect(&stack, &XcbStack::settled, this, &XcbPanels::look);
    m_reserved = readReserved();
}

int XcbPanels::depthAt(const QRect &screen, bool isMain) const
{
    if (!m_stack.x11() || screen.isEmpty())
        return 0;
    const int reserved = reservedByWindows(screen);
    return reserved > 0 ? reserved : leftByWindowManager(screen, isMain);
}

bool XcbPanels::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_property_notify_event_t *>(message);
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY
        || event->window != m_stack.x11().root() || event->atom != m_workArea)
        return false;
    // Queued, so that no one runs amid Qt's reading of events.
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_reserved = readReserved();
            Q_EMIT changed();
        },
        Qt::QueuedConnection);
    return false;
}

void XcbPanels::look()
{
    auto reserved = readReserved();
    if (reserved == m_reserved)
        return;
    m_reserved = std::move(reserved);
    Q_EMIT changed();
}

/// Not every window manager lists its panels, so that all are asked that lie at the top of a
/// screen's middle.
std::vector<XcbPanels::Reserved> XcbPanels::readReserved() const
{
    std::vector<QRect> places;
    for (const QScreen *screen : QGuiApplication::screens()) {
        const QRect whole = nativePlace(*screen);
        places.emplace_back(whole.center().x(), whole.top(), 1, whole.height() / mostOfScreen);
    }
    std::vector<Reserved> reserved;
    for (const XcbStack::Window &window : m_stack.windows()) {
        const bool isThere
            = window.isMapped && std::ranges::any_of(places, [&](const QRect &place) {
                  return place.intersects(window.place);
              });
        if (!isThere || XcbStack::isOurs(window.id))
            continue;
        const xcb_window_t client = m_stack.clientOf(window.id);
        const xcb_window_t asked = client == XCB_NONE ? window.id : client;
        const auto partial = m_stack.x11().numbers(asked, m_partialStrut);
        const auto strut = m_stack.x11().numbers(asked, m_strut);
        if (partial.size() == partialLength)
            reserved.push_back(
                {int(partial[topIndex]), int(partial[topStartIndex]), int(partial[topEndIndex])});
        else if (strut.size() == fullLength)
            reserved.push_back({int(strut[topIndex]), 0, std::numeric_limits<int>::max()});
    }
    return reserved;
}

int XcbPanels::reservedByWindows(const QRect &screen) const
{
    const int middle = screen.center().x();
    int deepest = 0;
    for (const Reserved &reserved : m_reserved) {
        if (reserved.left <= middle && middle <= reserved.right)
            deepest = std::max(deepest, depthOn(screen, reserved.depth));
    }
    return deepest;
}

int XcbPanels::leftByWindowManager(const QRect &screen, bool isMain) const
{
    const auto desktops = m_stack.x11().numbers(m_stack.x11().root(), m_currentDesktop);
    const std::uint32_t desktop = desktops.empty() ? 0 : desktops.front();

    // Some tell of each screen: four numbers an area.
    const auto areas = m_stack.x11().numbers(
        m_stack.x11().root(), m_stack.x11().atom("_GTK_WORKAREAS_D" + QByteArray::number(desktop)));
    for (std::size_t i = 0; i + 4 <= areas.size(); i += 4) {
        const QRect area(int(areas[i]), int(areas[i + 1]), int(areas[i + 2]), int(areas[i + 3]));
        if (screen.contains(area.center()))
            return depthOn(screen, area.top());
    }
    // The others of the desktop as a whole, once for each virtual desktop.
    const auto whole = m_stack.x11().numbers(m_stack.x11().root(), m_workArea);
    const std::size_t top = 4 * std::size_t(desktop) + 1;
    return isMain && top < whole.size() ? depthOn(screen, whole[top]) : 0;
}

} // namespace tirlo
