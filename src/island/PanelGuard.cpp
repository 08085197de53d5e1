#include "PanelGuard.h"

#include "IslandPanel.h"
#include "core/AppState.h"

#include <QEvent>
#include <QWindow>

namespace tirlo {

namespace {

/// Seconds from a change of the windows until it is looked at: whoever locks the screen is noticed
/// first.
constexpr double lookDelay = 0.2;
/// So many deeds in so many seconds, and no more.
constexpr std::size_t mostDeeds = 6;
constexpr double deedMemory = 10;

} // namespace

PanelGuard::PanelGuard(IslandPanel &panel, PanelWindow &window, AppState &state, MainQueue &queue)
    : m_panel(panel)
    , m_window(window)
    , m_state(state)
    , m_queue(queue)
{
    m_panel.installEventFilter(this);
    connect(&window, &PanelWindow::orderChanged, this, &PanelGuard::bringForwardSoon);
    m_observers.follow(m_state.mode, [this] { bringForward(); });
    m_observers.follow(m_state.view, [this] { bringForward(); });
}

void PanelGuard::bringForward()
{
    // A hidden island waits for nothing.
    if (!m_panel.isVisible() || m_state.mode == IslandMode::hidden)
        return;
    const auto cover = m_state.mode == IslandMode::expanded ? PanelWindow::Cover::anything
                                                            : PanelWindow::Cover::windows;
    QWindow &native = *m_panel.windowHandle();
    const QRectF island = m_panel.currentIslandFrame(m_panel.notchWidth, m_panel.notchHeight);
    if (!m_window.isCovered(native, island, cover) || !mayInsist())
        return;
    m_window.raise(native);
    Q_EMIT uncovered();
}

bool PanelGuard::eventFilter(QObject *watched, QEvent *event)
{
    const bool isMoved = event->type() == QEvent::Move || event->type() == QEvent::Resize;
    if (isMoved && !m_panel.isAtItsPlace() && !m_hold.isPending())
        m_hold = m_queue.after(0, this, [this] { holdPlace(); });
    return QObject::eventFilter(watched, event);
}

void PanelGuard::bringForwardSoon()
{
    if (m_panel.isVisible() && m_state.mode != IslandMode::hidden && !m_look.isPending())
        m_look = m_queue.after(lookDelay, this, [this] { bringForward(); });
}

void PanelGuard::holdPlace()
{
    if (!m_panel.isAtItsPlace() && mayInsist())
        m_panel.goToItsPlace();
}

bool PanelGuard::mayInsist()
{
    const double now = m_queue.mediaTime();
    while (!m_deeds.empty() && m_deeds.front() < now - deedMemory)
        m_deeds.pop_front();
    if (m_deeds.size() >= mostDeeds)
        return false;
    m_deeds.push_back(now);
    return true;
}

} // namespace tirlo
