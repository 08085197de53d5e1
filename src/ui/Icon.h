#pragma once

#include <QColor>
#include <QLatin1String>

class QPixmap;
class QPainter;
class QRectF;

/// The program's own small pictures, each drawn in one colour.
namespace tirlo::Icon {

/// Draws the icon of that name, such as "checkmark", into the rectangle.
void draw(QPainter &painter, QLatin1String name, const QRectF &rect, const QColor &color);

/// The picture of that name in its square, `color` on transparent; the side is in pixels.
[[nodiscard]] QPixmap picture(QLatin1String name, int side, const QColor &color);

} // namespace tirlo::Icon
