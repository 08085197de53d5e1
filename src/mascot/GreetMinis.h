#pragma once

#include <QPainter>

namespace tirlo {

struct GreetCast;
struct IslandRestingLayout;

/// Draws the minis of the resting island in the film's frame, at an opacity from 0 to 1.
void drawMinis(QPainter &painter, const GreetCast &cast, const IslandRestingLayout &compact,
               double opacity);

} // namespace tirlo
