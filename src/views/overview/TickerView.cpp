#include "TickerView.h"

#include "TickerRowView.h"
#include "platform/MainQueue.h"
#include "ui/AccessibleRole.h"
#include "ui/Style.h"
#include "ui/TextLine.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QPaintEvent>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

/// Distance of the wheel's slots.
constexpr double slot = 22;
constexpr double rowHeight = 20;
constexpr int tickerHeight = 44;
/// Ends of the part of the height that is wholly seen.
constexpr double fadeTop = 0.12;
constexpr double fadeBottom = 0.85;

constexpr double settleSeconds = 0.5;
constexpr TimingCurve leaving = TimingCurve::easeOut(0.28);
constexpr TimingCurve rolling{0.4, 0, 0.2, 1, 0.38};
/// The row that leaves shrinks by that share, and rises that much further.
constexpr double leavingShrink = 0.12;
constexpr double leavingRise = 10;

QLinearGradient edges()
{
    QLinearGradient mask(0, 0, 0, tickerHeight);
    mask.setColorAt(0, Qt::transparent);
    mask.setColorAt(fadeTop, Qt::black);
    mask.setColorAt(fadeBottom, Qt::black);
    mask.setColorAt(1, Qt::transparent);
    return mask;
}

} // namespace

TickerView::TickerView(MainQueue &queue, FrameClock &frames, QWidget *parent)
    : QLabel(parent)
    , m_queue(queue)
    , m_clock(frames)
    , m_rows(rowsOf(std::nullopt))
    , m_latest(m_rows)
{
    AccessibleRole::set(*this, QAccessible::StatusBar);
    setTextInteractionFlags(Qt::NoTextInteraction);
    setFont(Style::font(Style::bodySize, QFont::Medium));
    setFixedHeight(tickerHeight);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void TickerView::setTask(const std::optional<AgentTask> &task)
{
    const Rows rows = rowsOf(task);
    if (rows == m_latest)
        return;
    m_latest = rows;
    const bool hasStep = task && !task->steps.isEmpty();
    AccessibleRole::setName(*this, hasStep ? task->steps[rows.index] : QString());
    followLatest();
}

TickerView::Rows TickerView::rowsOf(const std::optional<AgentTask> &task)
{
    const QString &placeholder = TickerRowView::placeholder;
    if (!task)
        return {.index = -1, .spent = placeholder, .live = {}};
    if (task->steps.isEmpty())
        return {.index = 0, .spent = placeholder, .live = placeholder};
    const qsizetype index = std::clamp<qsizetype>(task->stepIndex, 0, task->steps.size() - 1);
    return {.index = index,
            .spent = index == 0 ? placeholder : TextLine::displayable(task->steps[index - 1]),
            .live = TextLine::displayable(task->steps[index])};
}

void TickerView::followLatest()
{
    if (isTransitioning() || m_latest == m_rows)
        return;
    const bool hasNoStep = m_rows.index < 0 || m_latest.index < 0;
    // The last of the kept steps stays at the same index, so the text tells as well.
    const bool isSameStep = m_rows.index == m_latest.index && m_rows.live == m_latest.live;
    if (!hasNoStep && !isSameStep && isVisible() && !m_clock.reducesMotion())
        return roll();
    m_rows = m_latest;
    update();
    runOrRest();
}

void TickerView::roll()
{
    m_incoming = m_latest;
    m_rollStart = m_clock.now();
    m_queue.after(settleSeconds, this, [this] { settle(); });
    runOrRest();
}

void TickerView::settle()
{
    m_rows = m_incoming;
    m_rollStart.reset();
    update();
    followLatest();
    runOrRest();
}

void TickerView::runOrRest()
{
    const bool moves = isVisible() && (isTransitioning() || shimmers());
    if (!moves)
        m_frames.reset();
    else if (!m_frames.isActive())
        m_frames = m_clock.subscribe([this](double) { frame(); });
}

void TickerView::frame()
{
    if (isTransitioning())
        update();
    else
        update(0, int(slot), width(), tickerHeight - int(slot));
}

bool TickerView::shimmers() const
{
    return !m_clock.reducesMotion() && !m_rows.live.isEmpty()
        && m_rows.live != TickerRowView::placeholder;
}

bool TickerView::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    if (!accessibleName().isEmpty())
        TextLine::showToolTip(static_cast<QHelpEvent *>(event)->globalPos(), accessibleName(),
                              this);
    return true;
}

void TickerView::showEvent(QShowEvent *)
{
    followLatest();
    runOrRest();
}

void TickerView::hideEvent(QHideEvent *)
{
    runOrRest();
}

void TickerView::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QTransform toPixels = painter.deviceTransform();
    const double ratio = std::hypot(toPixels.m11(), toPixels.m12());
    const QSize pixels = (QSizeF(size()) * ratio).toSize();
    if (pixels.isEmpty())
        return;
    if (m_layer.size() != pixels) {
        m_layer = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        m_layer.setDevicePixelRatio(ratio);
    }
    {
        QPainter layer(&m_layer);
        layer.setClipRect(event->rect());
        layer.setCompositionMode(QPainter::CompositionMode_Clear);
        layer.fillRect(rect(), Qt::transparent);
        layer.setCompositionMode(QPainter::CompositionMode_SourceOver);
        layer.setFont(font());
        drawRows(layer, event->rect());
        layer.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        layer.fillRect(rect(), edges());
    }
    painter.setClipRect(event->rect());
    painter.drawImage(QPointF(), m_layer);
}

void TickerView::drawRows(QPainter &painter, const QRect &exposed) const
{
    const auto shimmerTime = m_clock.reducesMotion() ? std::nullopt : std::optional(m_clock.now());
    const QRectF top(0, 0, width(), rowHeight);
    const double elapsed = m_rollStart ? m_clock.now() - *m_rollStart : 0;
    const double rolled = rolling.progressAt(elapsed);
    // The light moves over the live row alone.
    if (exposed.top() < int(slot))
        drawLeavingRow(painter, leaving.progressAt(elapsed));

    const QString &spent = m_rollStart ? m_incoming.spent : m_rows.live;
    TickerRowView::draw(painter, top.translated(0, slot * (1 - rolled)),
                        {.live = m_rows.live, .spent = spent}, rolled, shimmerTime);

    if (rolled <= 0)
        return;
    painter.setOpacity(rolled);
    TickerRowView::draw(painter, top.translated(0, slot * (2 - rolled)),
                        {.live = m_incoming.live, .spent = {}}, 0, shimmerTime);
    painter.setOpacity(1);
}

void TickerView::drawLeavingRow(QPainter &painter, double share) const
{
    const QRectF top(0, 0, width(), rowHeight);
    const double middle = top.center().y();
    const double scale = 1 - share * leavingShrink;
    painter.save();
    painter.setOpacity(1 - share);
    painter.translate(0, middle - (slot + leavingRise) * share);
    painter.scale(scale, scale);
    painter.translate(0, -middle);
    TickerRowView::draw(painter, top, {.live = {}, .spent = m_rows.spent}, 1, std::nullopt);
    painter.restore();
}

} // namespace tirlo
