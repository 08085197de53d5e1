#include "XcbStack.h"

#include <QGuiApplication>
#include <QSocketNotifier>
#include <QWindow>

#include <algorithm>

namespace tirlo {

namespace {

/// How far inside a frame window managers put the application's window.
constexpr int deepestClient = 3;
/// Seconds that a window manager may take about a change.
constexpr double settlingTime = 0.3;

template<typename Geometry>
QRect placeOf(const Geometry &geometry)
{
    return {geometry.x, geometry.y, geometry.width + 2 * geometry.border_width,
            geometry.height + 2 * geometry.border_width};
}

} // namespace

XcbStack::XcbStack(MainQueue &queue)
    : m_queue(queue)
{
    if (!m_x11)
        return;
    m_wmState = m_x11.atom("WM_STATE");
    m_events.reset(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(m_events.get()))
        return;
    constexpr std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_events.get(), m_x11.root(), XCB_CW_EVENT_MASK, &events);
    // Events from before this reading repeat what it tells, and do no harm.
    readAll();
    auto *notifier
        = new QSocketNotifier(xcb_get_file_descriptor(m_events.get()), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &XcbStack::readEvents);
    readEvents();
}

bool XcbStack::isOurs(xcb_window_t window)
{
    return std::ranges::any_of(QGuiApplication::topLevelWindows(), [window](const QWindow *ours) {
        return ours->handle() && ours->winId() == window;
    });
}

void XcbStack::readEvents()
{
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(m_events.get())}) {
        if (apply(*event))
            tell();
    }
}

/// Takes what the event says of a top-level window; false when it says nothing of one.
bool XcbStack::apply(const xcb_generic_event_t &event)
{
    const xcb_window_t root = m_x11.root();
    switch (event.response_type & 0x7f) {
    case XCB_CREATE_NOTIFY: {
        const auto &created = reinterpret_cast<const xcb_create_notify_event_t &>(event);
        if (created.parent != root)
            return false;
        add(created.window, placeOf(created), false);
        return true;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto &destroyed = reinterpret_cast<const xcb_destroy_notify_event_t &>(event);
        if (destroyed.event != root)
            return false;
        remove(destroyed.window);
        return true;
    }
    case XCB_MAP_NOTIFY: {
        const auto &mapped = reinterpret_cast<const xcb_map_notify_event_t &>(event);
        if (mapped.event != root)
            return false;
        setMapped(mapped.window, true);
        return true;
    }
    case XCB_UNMAP_NOTIFY: {
        const auto &unmapped = reinterpret_cast<const xcb_unmap_notify_event_t &>(event);
        if (unmapped.event != root)
            return false;
        setMapped(unmapped.window, false);
        return true;
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto &configured = reinterpret_cast<const xcb_configure_notify_event_t &>(event);
        if (configured.event != root)
            return false;
        configure(configured);
        return true;
    }
    case XCB_CIRCULATE_NOTIFY: {
        const auto &circulated = reinterpret_cast<const xcb_circulate_notify_event_t &>(event);
        if (circulated.event != root)
            return false;
        circulate(circulated);
        return true;
    }
    case XCB_REPARENT_NOTIFY: {
        const auto &reparented = reinterpret_cast<const xcb_reparent_notify_event_t &>(event);
        if (reparented.event != root)
            return false;
        reparent(reparented);
        return true;
    }
    default:
        return false;
    }
}

void XcbStack::readAll()
{
    xcb_connection_t *connection = m_events.get();
    const std::vector<xcb_window_t> ids = childrenOf(connection, m_x11.root());
    std::vector<std::pair<xcb_get_window_attributes_cookie_t, xcb_get_geometry_cookie_t>> asked;
    asked.reserve(ids.size());
    for (const xcb_window_t id : ids)
        asked.emplace_back(xcb_get_window_attributes(connection, id),
                           xcb_get_geometry(connection, id));
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const auto [attributesCookie, geometryCookie] = asked[i];
        const XReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(connection, attributesCookie, nullptr));
        const XReply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(connection, geometryCookie, nullptr));
        if (attributes && geometry)
            add(ids[i], placeOf(*geometry), attributes->map_state != XCB_MAP_STATE_UNMAPPED);
    }
}

void XcbStack::add(xcb_window_t id, const QRect &place, bool isMapped)
{
    // What the server makes for itself, as the layer that a compositor paints on, covers nothing.
    const bool isOfServer = (id & ~xcb_get_setup(m_x11.connection())->resource_id_mask) == 0;
    if (!isOfServer && find(id) == m_windows.end())
        m_windows.push_back({id, place, isMapped});
}

void XcbStack::configure(const xcb_configure_notify_event_t &event)
{
    const auto found = find(event.window);
    if (found == m_windows.end())
        return;
    Window window = *found;
    window.place = placeOf(event);
    m_windows.erase(found);
    if (event.above_sibling == XCB_NONE) {
        m_windows.insert(m_windows.begin(), window);
        return;
    }
    const auto below = find(event.above_sibling);
    // Above a window of the server itself it is above all.
    m_windows.insert(below == m_windows.end() ? below : below + 1, window);
}

void XcbStack::circulate(const xcb_circulate_notify_event_t &event)
{
    const auto found = find(event.window);
    if (found == m_windows.end())
        return;
    if (event.place == XCB_PLACE_ON_TOP)
        std::rotate(found, found + 1, m_windows.end());
    else
        std::rotate(m_windows.begin(), found, found + 1);
}

void XcbStack::reparent(const xcb_reparent_notify_event_t &event)
{
    remove(event.window);
    if (event.parent != m_x11.root())
        return;
    const auto cookie = xcb_get_geometry(m_events.get(), event.window);
    const XReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(m_events.get(), cookie, nullptr));
    // A mapped window is unmapped on the way, and its being mapped again is told.
    if (geometry)
        add(event.window, placeOf(*geometry), false);
}

void XcbStack::setMapped(xcb_window_t id, bool isMapped)
{
    // Before it is shown a window manager may have taken it into its care, or let go of it.
    m_natures.remove(id);
    const auto found = find(id);
    if (found != m_windows.end())
        found->isMapped = isMapped;
}

void XcbStack::remove(xcb_window_t id)
{
    m_natures.remove(id);
    std::erase_if(m_windows, [id](const Window &window) { return window.id == id; });
}

void XcbStack::tell()
{
    m_lastChange = m_queue.mediaTime();
    if (std::exchange(m_isTelling, true))
        return;
    if (!std::exchange(m_isSettling, true))
        m_queue.after(settlingTime, this, [this] { settle(); });
    // Queued, so that all that has come is there.
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isTelling = false;
            Q_EMIT changed();
        },
        Qt::QueuedConnection);
}

void XcbStack::settle()
{
    const double left = m_lastChange + settlingTime - m_queue.mediaTime();
    if (left > 0) {
        m_queue.after(left, this, [this] { settle(); });
        return;
    }
    m_isSettling = false;
    // Those that nobody looked after may be looked after now.
    m_natures.removeIf([](const auto &entry) { return entry.value().client == XCB_NONE; });
    Q_EMIT settled();
}

std::vector<XcbStack::Window>::iterator XcbStack::find(xcb_window_t id)
{
    return std::ranges::find(m_windows, id, &Window::id);
}

XcbStack::Nature XcbStack::nature(xcb_window_t id) const
{
    const auto known = m_natures.constFind(id);
    if (known != m_natures.cend())
        return *known;
    const auto cookie = xcb_get_window_attributes(m_x11.connection(), id);
    const XReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(m_x11.connection(), cookie, nullptr));
    const Nature nature{.client = clientWithin(id, deepestClient),
                        .isInputOnly
                        = attributes && attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY};
    m_natures.insert(id, nature);
    return nature;
}

xcb_window_t XcbStack::clientWithin(xcb_window_t window, int depth) const
{
    if (!m_x11.numbers(window, m_wmState).empty())
        return window;
    if (depth == 0)
        return XCB_NONE;
    for (const xcb_window_t child : childrenOf(m_x11.connection(), window)) {
        const xcb_window_t client = clientWithin(child, depth - 1);
        if (client != XCB_NONE)
            return client;
    }
    return XCB_NONE;
}

std::vector<xcb_window_t> XcbStack::childrenOf(xcb_connection_t *connection, xcb_window_t window)
{
    const auto cookie = xcb_query_tree(connection, window);
    const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection, cookie, nullptr));
    if (!tree)
        return {};
    const xcb_window_t *children = xcb_query_tree_children(tree.get());
    return {children, children + xcb_query_tree_children_length(tree.get())};
}

} // namespace tirlo
