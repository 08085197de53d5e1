#include "XcbLocker.h"

#include "NativeScreen.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace tirlo {

namespace {

/// Seconds from such a window coming up to each look at the keyboard: some programs take it before,
/// some a while after.
constexpr double probes[]{0.0, 0.1, 0.5, 2.0};

/// So many pixels a curtain may leave free at each edge: a compositor would take a full-screen one
/// out of its picture.
constexpr int slack = 2;

bool holds(const std::vector<xcb_window_t> &windows, xcb_window_t window)
{
    return std::ranges::find(windows, window) != windows.end();
}

} // namespace

XcbLocker::XcbLocker(const XcbStack &stack, MainQueue &queue)
    : m_stack(stack)
    , m_queue(queue)
{
    connect(&stack, &XcbStack::changed, this, &XcbLocker::look);
    // One may be there already.
    m_queue.after(0, this, [this] { look(); });
}

void XcbLocker::look()
{
    const auto before = std::exchange(m_known, wholeScreens());
    auto curtains = m_curtains;
    std::erase_if(curtains, [this](xcb_window_t window) { return !holds(m_known, window); });
    setCurtains(curtains);
    for (const xcb_window_t window : m_known) {
        if (holds(before, window))
            continue;
        for (const double seconds : probes)
            m_queue.after(seconds, this, [this, window] { probe(window); });
    }
}

void XcbLocker::probe(xcb_window_t window)
{
    const bool isOver = !holds(m_known, window) || holds(m_curtains, window);
    if (isOver || m_stack.clientOf(window) != XCB_NONE || m_stack.isInvisible(window)
        || !isKeyboardTaken())
        return;
    auto curtains = m_curtains;
    curtains.push_back(window);
    setCurtains(curtains);
}

void XcbLocker::setCurtains(std::vector<xcb_window_t> curtains)
{
    const bool wasLocked = isLocked();
    m_curtains = std::move(curtains);
    if (isLocked() != wasLocked)
        Q_EMIT changed();
}

std::vector<xcb_window_t> XcbLocker::wholeScreens() const
{
    std::vector<QRect> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens.push_back(nativePlace(*screen));
    std::vector<xcb_window_t> found;
    for (const XcbStack::Window &window : m_stack.windows()) {
        const QRect reach = window.place.adjusted(-slack, -slack, slack, slack);
        const bool isWhole = std::ranges::any_of(
            screens, [&](const QRect &screen) { return reach.contains(screen); });
        if (window.isMapped && isWhole && !XcbStack::isOurs(window.id))
            found.push_back(window.id);
    }
    return found;
}

/// Takes the keyboard and lets go of it at once, if nobody has it.
bool XcbLocker::isKeyboardTaken() const
{
    const X11 &x11 = m_stack.x11();
    const auto cookie = xcb_grab_keyboard(x11.connection(), false, x11.root(), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_keyboard(x11.connection(), XCB_CURRENT_TIME);
    const XReply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(x11.connection(), cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

} // namespace tirlo
