#include "SlimScrollBar.h"

#include "Color.h"
#include "Style.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace tirlo {

namespace {

constexpr int barWidth = 9;
constexpr double handleWidth = 4;
constexpr double shortestHandle = 18;
constexpr double restingOpacity = 0.22;
constexpr double hoveredOpacity = 0.4;

} // namespace

SlimScrollBar::SlimScrollBar(Qt::Orientation orientation, QWidget *parent)
    : QScrollBar(orientation, parent)
{
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setCursor(Qt::ArrowCursor);
}

void SlimScrollBar::dress(QAbstractScrollArea &area)
{
    area.setVerticalScrollBar(new SlimScrollBar(Qt::Vertical));
    area.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

QSize SlimScrollBar::sizeHint() const
{
    // A bar whose size is empty is never shown.
    constexpr int leastLength = 2 * barWidth;
    return orientation() == Qt::Vertical ? QSize(barWidth, leastLength)
                                         : QSize(leastLength, barWidth);
}

void SlimScrollBar::paintEvent(QPaintEvent *)
{
    const double range = maximum() - minimum();
    if (range <= 0)
        return;
    const bool isVertical = orientation() == Qt::Vertical;
    const double track = isVertical ? height() : width();
    const double handle = std::clamp(track * pageStep() / (range + pageStep()),
                                     std::min(shortestHandle, track), track);
    const double from = (track - handle) * (value() - minimum()) / range;
    const double inset = (barWidth - handleWidth) / 2;
    const QRectF place = isVertical ? QRectF(inset, from, handleWidth, handle)
                                    : QRectF(from, inset, handle, handleWidth);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(Style::white,
                                 underMouse() || isSliderDown() ? hoveredOpacity : restingOpacity));
    painter.drawRoundedRect(place, handleWidth / 2, handleWidth / 2);
}

bool SlimScrollBar::event(QEvent *event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    return QScrollBar::event(event);
}

} // namespace tirlo
