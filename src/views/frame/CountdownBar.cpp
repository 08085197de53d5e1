#include "CountdownBar.h"

#include "core/AppState.h"
#include "ui/Color.h"
#include "ui/Style.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

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
    m_observers.follow(m_state.isPinned, changed);
    m_observers.follow(m_state.lastActivity, changed);
    m_observers.follow(m_state.autoCloseInterval, changed);
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
    const double interval = m_state.autoCloseInterval;
    const bool runs = m_state.mode == IslandMode::expanded && !m_state.isPinned && interval > 0
        && std::isfinite(interval);
    if (!runs) {
        show(0);
        return;
    }

    const double window = std::min(interval * windowShare, longestWindow);
    const double remaining = interval - (m_queue.mediaTime() - m_state.lastActivity);
    const bool isInWindow = remaining < window;
    show(isInWindow ? std::max(remaining / window * fullSize.width(), 0.0) : 0);
    if (remaining <= 0)
        return;
    m_next = m_queue.after(isInWindow ? stepSeconds : std::max(remaining - window, stepSeconds),
                           this, [this] { updateBar(); });
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
