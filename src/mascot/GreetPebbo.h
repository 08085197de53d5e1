#pragma once

#include <QPainter>
#include <QPainterPath>

namespace tirlo {

struct GreetCast;
struct GreetPose;

/// The body's outline around the origin: 96 segments of a superellipse a little squarer than the
/// engine's, with half the width and height given.
[[nodiscard]] QPainterPath pebboPath(double hw, double hh);

/// Draws the greeting's mascot with its glow, hands and badge; nothing while it is but a speck.
void drawPebbo(QPainter &painter, const GreetPose &pose, const GreetCast &cast);

} // namespace tirlo
