#include "FocusRing.h"

#include "Style.h"

#include <QPainter>
#include <QWidget>

namespace tirlo::FocusRing {

bool isShown(const QWidget &control)
{
    return control.hasFocus() && control.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

void draw(QPainter &painter, const QRectF &edge, double radius)
{
    constexpr double half = Style::focusRingWidth / 2;
    painter.setPen(QPen(Style::focusRing, Style::focusRingWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(edge.adjusted(half, half, -half, -half), radius - half, radius - half);
}

} // namespace tirlo::FocusRing
