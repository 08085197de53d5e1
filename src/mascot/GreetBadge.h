#pragma once

#include <QPainter>

namespace tirlo {

/// Draws the closing check around the painter's origin, for a body of radius `r`.
void drawCheckBadge(QPainter &painter, double r);

} // namespace tirlo
