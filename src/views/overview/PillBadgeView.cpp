#include "PillBadgeView.h"

#include "ui/Color.h"
#include "ui/Icon.h"
#include "ui/Style.h"

#include <QPainter>

namespace tirlo::PillBadgeView {

namespace {

constexpr double diameter = 14;
constexpr double ringWidth = 2;
constexpr double fillOpacity = 0.6;
constexpr double glyphSize = 6;

QColor badgeColor(PillBadge badge)
{
    switch (badge) {
    case PillBadge::approval:
        return Style::waiting;
    case PillBadge::finished:
        return Style::success;
    case PillBadge::error:
        return Style::failure;
    }
    return {};
}

QLatin1String glyph(PillBadge badge)
{
    switch (badge) {
    case PillBadge::approval:
        return QLatin1String("exclamationmark");
    case PillBadge::finished:
        return QLatin1String("checkmark");
    case PillBadge::error:
        return QLatin1String("xmark");
    }
    return {};
}

} // namespace

void draw(QPainter &painter, const QPointF &centre, PillBadge badge, const QColor &taskColor)
{
    constexpr double outer = diameter / 2;
    constexpr double inner = outer - ringWidth;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Style::badgeRing);
    painter.drawEllipse(centre, outer, outer);
    painter.setBrush(taskColor);
    painter.drawEllipse(centre, inner, inner);
    painter.setBrush(withOpacity(badgeColor(badge), fillOpacity));
    painter.drawEllipse(centre, inner, inner);

    const QPointF half(glyphSize / 2, glyphSize / 2);
    Icon::draw(painter, glyph(badge), QRectF(centre - half, centre + half), Qt::black);
}

} // namespace tirlo::PillBadgeView
