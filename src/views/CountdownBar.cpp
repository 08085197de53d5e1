#include "CountdownBar.h"

#include "core/AppState.h"
#include "ui/Color.h"
#include "ui/Style.h"

#include <QPainter>

#include <algorithm>

namespace tirlo {

namespace {

constexpr double opacity = 0.35;
constexpr double stepSeconds = 0.1;
/// The line shows in the last of these: a share of the whole time, at most so many seconds.
constexpr double windowShare = 0.6;
constexpr double longestWindow = 10;

} // namespace

CountdownBar::CountdownBar(AppState &state, MainQueue &queue, QWidget *parent)
    : QWidget(parent)
    , m_state(state)
    , m_queue(queue)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFixedSize(fullSize);
    hide();
    updateBar();
    const auto changed = [this] { updateBar(); };
    m_observers.follow(m_state.mode, changed);
    m_observers.follow(m_state.view, changed);
    m_observers.follow(m_state.autoCloseInterval, changed);
    // An island is held open for an approval, and let go with it.
    m_observers.follow(m_state.pendingApproval, changed);
}

void CountdownBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(Style::white, opacity));
    constexpr double radius = fullSize.height() / 2.0;
    painter.drawRoundedRect(QRectF((width() - m_barWidth) / 2, 0, m_barWidth, fullSize.height()),
                            radius, radius);
}

void CountdownBar::updateBar()
{
    m_next.cancel();
    if (m_state.mode != IslandMode::expanded) {
        show(0);
        return;
    }

    const double interval = m_state.autoCloseInterval;
    const double window = std::min(interval * windowShare, longestWindow);
    const double remaining = interval - (m_queue.mediaTime() - m_state.lastActivity);
    const bool isInWindow = remaining < window && !m_state.isPinned;
    show(isInWindow ? std::max(remaining / window * fullSize.width(), 0.0) : 0);

    // Activity starts the time anew without telling, so a line that has run out stays watchful.
    const bool shrinks = isInWindow && remaining > 0;
    const double untilWindow = remaining > 0 ? remaining - window : interval - window;
    m_next = m_queue.after(shrinks ? stepSeconds : std::max(untilWindow, stepSeconds), this,
                           [this] { updateBar(); });
}

void CountdownBar::show(double barWidth)
{
    if (barWidth == m_barWidth)
        return;
    m_barWidth = barWidth;
    setVisible(barWidth > 0);
    update();
}

} // namespace tirlo
