#pragma once

#include "GreetCast.h"
#include "IslandRestingLayout.h"

#include <QPainter>
#include <QSizeF>

namespace tirlo {

/// Draws the greeting at `t` seconds, told at `tc` to fold (infinite: never), over a black island.
///
/// The film's frame of 640 by 150 points is fitted to `size` at the painter's origin. The painter
/// is left as it was.
void drawGreeting(QPainter &painter, QSizeF size, double t, double tc,
                  const IslandRestingLayout &compact, const GreetCast &cast);

} // namespace tirlo
