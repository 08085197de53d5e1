#pragma once

#include <QColor>
#include <QLatin1String>

class QIcon;
class QPainter;
class QRectF;

/// The program's own small pictures, each drawn in one colour.
namespace tirlo::Icon {

/// Draws the icon of that name, such as "checkmark", into the rectangle.
void draw(QPainter &painter, QLatin1String name, const QRectF &rect, const QColor &color);

/// The program's picture for the desktop's bar, 24 by 18 points: a template in one colour.
[[nodiscard]] QIcon menuBarIcon(const QColor &color);

} // namespace tirlo::Icon
