#include "GreetPebbo.h"

#include "BotBody.h"
#include "BotShapes.h"
#include "GreetBadge.h"
#include "GreetCast.h"
#include "GreetColor.h"
#include "GreetHands.h"
#include "GreetPose.h"
#include "PainterScope.h"
#include "ui/ShapeLayers.h"

#include <QLinearGradient>
#include <QRadialGradient>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tirlo {

namespace {

using std::numbers::pi;

constexpr std::size_t outlineSteps = 96;
/// Two divided by the superellipse's exponent of 3.2.
constexpr double outlinePower = 0.625;

constexpr double widthPerHeight = 1.34;
/// Half the engine's body is this much wider than its body radius.
constexpr double engineWidth = 1.14;
constexpr double leastRadius = 0.4;
constexpr double leastBadge = 0.01;
/// A shut lid is still this much of an eye.
constexpr double leastOpen = 0.12;

constexpr QStringView eyeInk = u"#16171A";
constexpr QStringView nearGlow = u"#BBD3FF";
constexpr QStringView farGlow = u"#6E7BFF";
constexpr double nearGlowOpacity = 0.26;
constexpr double farGlowOpacity = 0.16;
/// Enough to read as one smooth fall, where a straight one shows its tip and its edge.
constexpr int glowSteps = 8;

double signedPower(double value)
{
    return std::copysign(std::pow(std::abs(value), outlinePower), value);
}

const std::array<QPointF, outlineSteps> &unitOutline()
{
    static const auto points = [] {
        std::array<QPointF, outlineSteps> made;
        for (std::size_t i = 0; i < outlineSteps; ++i) {
            const double angle = 2 * pi * double(i) / outlineSteps;
            made[i] = {signedPower(std::cos(angle)), signedPower(std::sin(angle))};
        }
        return made;
    }();
    return points;
}

void drawGlow(QPainter &painter, QPointF at, double radius, QStringView hex, double opacity)
{
    if (opacity <= 0)
        return;
    QRadialGradient light(at, radius);
    for (int i = 0; i <= glowSteps; ++i) {
        const double share = double(i) / glowSteps;
        light.setColorAt(share, gHex(hex, opacity * (0.5 + 0.5 * std::cos(pi * share))));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(light);
    painter.drawEllipse(at, radius, radius);
}

void drawGlows(QPainter &painter, const GreetPose &pose, double hw)
{
    const QPointF at(pose.x, pose.y);
    const double lit = 1 - pose.fold;
    drawGlow(painter, at, 2.6 * hw, nearGlow, nearGlowOpacity * pose.flash2 * lit);
    drawGlow(painter, at, 4.2 * hw, farGlow, farGlowOpacity * pose.flash1 * lit);
}

void addLight(ShapeLayers &layers, double hw, double hh, const BotColor &lit,
              const BotColor &shaded, double opacity)
{
    QLinearGradient light(0.6 * hw, -hh, -0.6 * hw, hh);
    light.setColorAt(0, lit.paint(opacity));
    light.setColorAt(1, shaded.paint(opacity));
    layers.add(light);
}

/// In the spotlight the body is brighter; it takes on its everyday look while the scene fades.
void drawGreetBody(QPainter &painter, const QPainterPath &path, double hw, double hh,
                   const GreetPose &pose, const GreetCast &cast)
{
    const BotFrame frame{.R = hw / engineWidth, .rx = hw, .ry = hh};
    ShapeLayers layers(painter, path);
    addLight(layers, hw, hh, PebboConst::baseTop.lightened(0.8),
             PebboConst::baseBottom.lightened(0.3), 1);
    addShading(layers, frame);
    if (pose.fold <= 0)
        return;
    addLight(layers, hw, hh, cast.body.value_or(PebboConst::baseTop),
             cast.body.value_or(PebboConst::baseBottom), pose.fold);
    if (!cast.body)
        addShading(layers, frame);
}

void drawEye(QPainter &painter, const GreetPose &pose)
{
    const double radius = 0.06 * pose.d;
    if (pose.eye == GreetEye::happy) {
        const double reach = radius * 1.25;
        QPainterPath arc;
        const QRectF circle(-reach, -reach * 0.6, 2 * reach, 2 * reach);
        arc.arcMoveTo(circle, 155);
        arc.arcTo(circle, 155, -130);
        painter.strokePath(arc, QPen(gHex(eyeInk), 0.057 * pose.d, Qt::SolidLine, Qt::RoundCap));
        return;
    }
    const double wide = pose.eye == GreetEye::surprised ? 1.25 : 1;
    painter.setPen(Qt::NoPen);
    painter.setBrush(gHex(eyeInk));
    painter.drawEllipse(QPointF(), radius * wide, radius * wide * std::max(pose.open, leastOpen));
}

/// The eyes end where the body ends, so a deep bow rolls them out of sight.
void drawGreetEyes(QPainter &painter, const QPainterPath &path, double hw, const GreetPose &pose)
{
    const double r = pose.d / 2;
    const double y = 0.12 * r + 0.28 * r * pose.lookY + 1.25 * r * pose.lift;
    const PainterScope scope(painter);
    painter.setClipPath(path, Qt::IntersectClip);
    painter.translate(0.42 * hw * pose.lookX - 0.19 * pose.d, y);
    drawEye(painter, pose);
    painter.translate(0.38 * pose.d, 0);
    drawEye(painter, pose);
}

} // namespace

QPainterPath pebboPath(double hw, double hh)
{
    QPainterPath path;
    path.reserve(outlineSteps + 1);
    for (std::size_t i = 0; i < outlineSteps; ++i) {
        const QPointF point(hw * unitOutline()[i].x(), hh * unitOutline()[i].y());
        if (i == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    path.closeSubpath();
    path.setFillRule(Qt::WindingFill);
    return path;
}

void drawPebbo(QPainter &painter, const GreetPose &pose, const GreetCast &cast)
{
    const double r = pose.d / 2;
    if (r <= leastRadius)
        return;
    const double hw = widthPerHeight * r;
    const double hh = r;

    const PainterScope scope(painter);
    drawGlows(painter, pose, hw);
    painter.translate(pose.x, pose.y);
    painter.rotate(degrees(pose.rot));
    painter.scale(pose.sx, pose.sy);
    drawHandL(painter, hw, hh, pose);
    drawHandR(painter, hw, hh, pose);

    const QPainterPath path = pebboPath(hw, hh);
    drawGreetBody(painter, path, hw, hh, pose, cast);
    drawGreetEyes(painter, path, hw, pose);
    if (pose.badge <= leastBadge)
        return;
    painter.translate(-0.78 * hw, -0.72 * hh);
    painter.scale(pose.badge, pose.badge);
    drawCheckBadge(painter, r);
}

} // namespace tirlo
