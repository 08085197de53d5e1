#include "GreetHands.h"

#include "BotColor.h"
#include "Easing.h"
#include "GreetPose.h"
#include "PainterScope.h"

#include <QLinearGradient>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

/// Seconds from rest to the top of the wave, and back.
constexpr double raiseTime = 0.18;
constexpr double lowerTime = 0.22;
constexpr double waveLength = 1.06;

void drawHand(QPainter &painter, QPointF at, double rotation, double hh, double size)
{
    if (size <= 0.01)
        return;
    const double halfWidth = hh * 0.33 * size;
    const double halfHeight = hh * 0.29 * size;
    QLinearGradient skin(halfWidth * 0.7, halfHeight * -0.85, halfWidth * -0.8, halfHeight * 0.9);
    skin.setColorAt(0, PebboConst::baseTop.lightened(0.5).paint());
    skin.setColorAt(1, PebboConst::baseBottom.lightened(0.25).paint());

    const PainterScope scope(painter);
    // A hand comes out from behind the body as it grows, and slips back.
    painter.translate(at * std::min(1.0, 0.7 + 0.3 * size));
    painter.rotate(degrees(rotation));
    painter.setPen(QPen(BotColor{0, 0, 0}.paint(0.08), 1));
    painter.setBrush(skin);
    painter.drawEllipse(QRectF(-halfWidth, -halfHeight, 2 * halfWidth, 2 * halfHeight));
}

/// How far the waving hand is up, from 0 to 1.
double raised(double wave)
{
    const double up = easeOutCubic(std::clamp(wave / raiseTime, 0.0, 1.0));
    const double down = std::clamp((waveLength - wave) / lowerTime, 0.0, 1.0);
    return up * easeInOutCubic(down);
}

} // namespace

void drawHandL(QPainter &painter, double hw, double hh, const GreetPose &pose)
{
    const double bob = pose.wave < 0 ? 0 : 2 * hh * 0.04 * std::sin(6 * pose.wave);
    drawHand(painter, {-1.1 * hw, 0.68 * hh + bob}, 0, hh, pose.handL);
}

void drawHandR(QPainter &painter, double hw, double hh, const GreetPose &pose)
{
    const QPointF rest(1.1 * hw, 0.68 * hh);
    if (pose.wave < 0)
        return drawHand(painter, rest, 0, hh, pose.handR);

    const double e = raised(pose.wave);
    const double s = std::sin(13 * pose.wave);
    const double c = std::cos(13 * pose.wave);
    const QPointF target(1.2 * hw + 2 * hh * 0.06 * c, -0.3 * hh - 2 * hh * 0.14 * s);
    drawHand(painter, rest + e * (target - rest), e * (0.35 * s - 0.5), hh, pose.handR);
}

} // namespace tirlo
