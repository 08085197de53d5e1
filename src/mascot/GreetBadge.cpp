#include "GreetBadge.h"

#include "GreetColor.h"

#include <QLinearGradient>
#include <QPainterPath>

namespace tirlo {

void drawCheckBadge(QPainter &painter, double r)
{
    // The dark ring cuts the badge out of the head, as it does with the other badges.
    painter.setPen(Qt::NoPen);
    painter.setBrush(gHex(u"#0B1B3A"));
    painter.drawEllipse(QPointF(), r * 0.34, r * 0.34);

    QLinearGradient blue(0, -r * 0.28, 0, r * 0.28);
    blue.setColorAt(0, gHex(u"#6CC0FF"));
    blue.setColorAt(1, gHex(u"#3BA0F5"));
    painter.setBrush(blue);
    painter.drawEllipse(QPointF(), r * 0.28, r * 0.28);

    QPainterPath check(QPointF(-0.12 * r, 0.01 * r));
    check.lineTo(-0.035 * r, 0.1 * r);
    check.lineTo(0.125 * r, -0.085 * r);
    painter.strokePath(check,
                       QPen(Qt::white, r * 0.075, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

} // namespace tirlo
