#pragma once

#include <QPainterPath>
#include <QSizeF>

namespace tirlo {

class BotEngine;

/// The measures of one frame, in canvas points with y downward.
struct BotFrame
{
    /// The body radius, from which all else derives.
    double R = 0;
    /// Half the soft body's width and height.
    double rx = 0;
    double ry = 0;
    /// Centre of the body.
    double cx = 0;
    double cy = 0;

    /// The frame of an engine on a canvas of this size.
    [[nodiscard]] static BotFrame of(const BotEngine &engine, QSizeF size);
};

/// The body's outline around the origin: 73 points from a superellipse (`morph` 0) to a rounded
/// rectangle (`morph` 1).
[[nodiscard]] QPainterPath pebboPath(double rx, double ry, double morph, double R);

/// A five-pointed star around the origin, one point up.
[[nodiscard]] QPainterPath starShape(double outer, double inner);

/// A heart around the origin that fits a square of about twice the size.
[[nodiscard]] QPainterPath heartShape(double s);

} // namespace tirlo
