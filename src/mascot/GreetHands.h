#pragma once

#include <QPainter>

namespace tirlo {

struct GreetPose;

// The painter's origin is the body's centre, and `hw` and `hh` are half the body's width and
// height.

/// Draws the left hand, which bobs a little during the wave.
void drawHandL(QPainter &painter, double hw, double hh, const GreetPose &pose);

/// Draws the right hand, which waves.
void drawHandR(QPainter &painter, double hw, double hh, const GreetPose &pose);

} // namespace tirlo
