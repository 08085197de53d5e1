#include "EwmhWindows.h"

#include "ApplicationNames.h"
#include "DesktopEntry.h"

#include <QGuiApplication>

#include <algorithm>

namespace tirlo {

namespace {

/// The name that the application's desktop entry shows, else the class of its windows.
QString displayName(const ApplicationNames *names, const QString &windowClass)
{
    if (windowClass.isEmpty())
        return windowClass;
    QStringList entries = names ? names->desktopEntries : QStringList();
    entries << windowClass << windowClass.toLower();
    for (const QString &entry : entries) {
        if (const auto name = DesktopEntry::name(entry))
            return *name;
    }
    return windowClass;
}

} // namespace

EwmhWindows::EwmhWindows()
{
    if (!m_x11)
        return;
    m_activeWindow = m_x11.atom("_NET_ACTIVE_WINDOW");
    m_stacking = m_x11.atom("_NET_CLIENT_LIST_STACKING");
    m_processId = m_x11.atom("_NET_WM_PID");
    m_currentDesktop = m_x11.atom("_NET_CURRENT_DESKTOP");
    m_desktop = m_x11.atom("_NET_WM_DESKTOP");
    m_state = m_x11.atom("_NET_WM_STATE");
    m_fullScreen = m_x11.atom("_NET_WM_STATE_FULLSCREEN");
    m_hidden = m_x11.atom("_NET_WM_STATE_HIDDEN");
    m_maximized = m_x11.atom("_NET_WM_STATE_MAXIMIZED_VERT");
    m_type = m_x11.atom("_NET_WM_WINDOW_TYPE");
    m_normalType = m_x11.atom("_NET_WM_WINDOW_TYPE_NORMAL");
    m_motifHints = m_x11.atom("_MOTIF_WM_HINTS");
}

ClientState EwmhWindows::stateOf(xcb_window_t client) const
{
    constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;
    const auto states = m_x11.numbers(client, m_state);
    const auto has = [&states](xcb_atom_t state) { return std::ranges::count(states, state) > 0; };
    const auto desktop = m_x11.numbers(client, m_desktop);
    const auto present = m_x11.numbers(m_x11.root(), m_currentDesktop);
    const bool isElsewhere = !desktop.empty() && !present.empty() && desktop.front() != everyDesktop
        && desktop.front() != present.front();
    return {.isFullScreen = has(m_fullScreen) || (!has(m_maximized) && isWithoutFrame(client)),
            .isHidden = isElsewhere || has(m_hidden)};
}

/// Older games and films ask for no frame and take the size of the screen.
bool EwmhWindows::isWithoutFrame(xcb_window_t client) const
{
    constexpr std::uint32_t tellsOfDecorations = 2;
    const auto types = m_x11.numbers(client, m_type);
    const bool isNormal = types.empty() || std::ranges::count(types, m_normalType) > 0;
    const auto hints = m_x11.numbers(client, m_motifHints);
    return isNormal && hints.size() > 2 && (hints[0] & tellsOfDecorations) && hints[2] == 0;
}

xcb_window_t EwmhWindows::activeWindow() const
{
    const auto windows = m_x11.numbers(m_x11.root(), m_activeWindow);
    return windows.empty() ? xcb_window_t(XCB_NONE) : windows.front();
}

std::vector<xcb_window_t> EwmhWindows::frontToBack() const
{
    auto windows = m_x11.numbers(m_x11.root(), m_stacking);
    std::ranges::reverse(windows);
    return windows;
}

RunningApplication EwmhWindows::applicationOf(xcb_window_t window) const
{
    const auto processIds = m_x11.numbers(window, m_processId);
    const qint64 processId = processIds.empty() ? 0 : processIds.front();
    if (processId == QCoreApplication::applicationPid())
        return {processId, ownBundleIdentifier, QGuiApplication::applicationDisplayName()};

    // Two texts, the name of the window and its class, each with a zero at its end.
    const QByteArray names = m_x11.bytes(window, XCB_ATOM_WM_CLASS);
    const QString windowClass = QString::fromUtf8(names.split('\0').value(1));
    const auto *known = ApplicationNames::ofWindowClass(windowClass);
    return {processId, known ? known->bundleIdentifier : QString(),
            displayName(known, windowClass)};
}

void EwmhWindows::activate(xcb_window_t window) const
{
    constexpr std::uint32_t fromTheUser = 2;
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = window;
    request.type = m_activeWindow;
    request.data.data32[0] = fromTheUser;
    request.data.data32[1] = XCB_CURRENT_TIME;
    request.data.data32[2] = activeWindow();
    xcb_send_event(m_x11.connection(), false, m_x11.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&request));
    xcb_flush(m_x11.connection());
}

} // namespace tirlo
