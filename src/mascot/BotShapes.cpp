#include "BotShapes.h"

#include "BotEngine.h"

#include <array>
#include <cmath>
#include <numbers>

namespace tirlo {

namespace {

constexpr int pebboSteps = 72;
constexpr double superellipse = 2 / 2.7;
/// Below this morph the body is soft to the eye.
constexpr double softMorph = 0.005;

struct Ray
{
    /// Direction.
    QPointF d;
    /// Point of the unit superellipse on it.
    QPointF unit;
};

double signedPower(double value)
{
    return std::copysign(std::pow(std::abs(value), superellipse), value);
}

/// The outline's rays, the last equal to the first.
const std::array<Ray, pebboSteps + 1> &rays()
{
    static const auto all = [] {
        std::array<Ray, pebboSteps + 1> made;
        for (int i = 0; i <= pebboSteps; ++i) {
            const double angle = 2 * std::numbers::pi * (i % pebboSteps) / pebboSteps;
            const double c = std::cos(angle);
            const double s = std::sin(angle);
            made[std::size_t(i)] = {{c, s}, {signedPower(c), signedPower(s)}};
        }
        return made;
    }();
    return all;
}

/// Where a ray from the centre leaves the box form.
QPointF boxPoint(QPointF d, double R)
{
    constexpr double e = 0.000001;
    const double hh = 0.94 * R;
    const double cr = 0.42 * R;
    const double ix = R - cr;
    const double iy = hh - cr;
    const double signX = d.x() < 0 ? -1 : 1;
    const double signY = d.y() < 0 ? -1 : 1;

    const QPointF corner(ix * signX, iy * signY);
    const double b = QPointF::dotProduct(d, corner);
    const double D = b * b + cr * cr - QPointF::dotProduct(corner, corner);
    if (D >= 0) {
        const double u = b + std::sqrt(D);
        if (u > e && std::abs(d.x() * u) >= ix - e && std::abs(d.y() * u) >= iy - e)
            return d * u;
    }
    if (std::abs(d.y()) > e) {
        const double u = hh * signY / d.y();
        if (u > e && std::abs(d.x() * u) <= ix + e)
            return {d.x() * u, hh * signY};
    }
    if (std::abs(d.x()) > e) {
        const double u = R * signX / d.x();
        if (u > e && std::abs(d.y() * u) <= iy + e)
            return {R * signX, d.y() * u};
    }
    return {R * signX, hh * signY};
}

} // namespace

BotFrame BotFrame::of(const BotEngine &engine, QSizeF size)
{
    const double R = size.width() * 0.3;
    return {.R = R,
            .rx = R * 1.14,
            .ry = R * 0.88,
            .cx = size.width() / 2 + R * engine.ox,
            .cy = size.height() / 2 + engine.particleOverhang / 2 + R * engine.oy + R * 0.06};
}

QPainterPath pebboPath(double rx, double ry, double morph, double R)
{
    const auto pointOn = [=](const Ray &ray) {
        const QPointF soft(rx * ray.unit.x(), ry * ray.unit.y());
        return morph < softMorph ? soft : soft + morph * (boxPoint(ray.d, R) - soft);
    };

    QPainterPath path;
    path.reserve(pebboSteps + 2);
    path.moveTo(pointOn(rays().front()));
    for (std::size_t i = 1; i < rays().size(); ++i)
        path.lineTo(pointOn(rays()[i]));
    path.closeSubpath();
    path.setFillRule(Qt::WindingFill);
    return path;
}

QPainterPath starShape(double outer, double inner)
{
    QPainterPath path(QPointF(0, -outer));
    for (int i = 1; i < 10; ++i) {
        const double angle = (i * 0.2 - 0.5) * std::numbers::pi;
        const double radius = i % 2 == 0 ? outer : inner;
        path.lineTo(radius * std::cos(angle), radius * std::sin(angle));
    }
    path.closeSubpath();
    return path;
}

QPainterPath heartShape(double s)
{
    QPainterPath path;
    path.moveTo(0, 0.38 * s);
    path.cubicTo(-1.05 * s, -0.15 * s, -0.5 * s, -0.95 * s, 0, -0.38 * s);
    path.cubicTo(0.5 * s, -0.95 * s, 1.05 * s, -0.15 * s, 0, 0.38 * s);
    path.closeSubpath();
    return path;
}

} // namespace tirlo
