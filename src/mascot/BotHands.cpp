#include "BotHands.h"

#include "BotEngine.h"
#include "BotShapes.h"
#include "PainterScope.h"

#include <QLinearGradient>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

/// On a smaller body than this, in points, hands would be specks.
constexpr double leastRadius = 14;

/// Seconds from rest to the top of a wave.
constexpr double raiseTime = 0.18;

struct HandPose
{
    /// From the body's centre.
    QPointF at;
    /// Radians.
    double rotation = 0;
};

HandPose handPose(const BotEngine &engine, const BotFrame &frame, double side)
{
    const double X = frame.rx * engine.sx;
    const double Y = frame.ry * engine.sy;
    const QPointF rest(side * X * 1.08, Y * 0.7);

    const double now = engine.lastTime;
    const bool waving = engine.waveStart > 0 && engine.waveStart <= now && now < engine.waveUntil;
    if (!waving)
        return {rest};

    const double since = now - engine.waveStart;
    if (side < 0)
        return {rest + QPointF(0, 2 * frame.ry * 0.04 * std::sin(6 * since))};

    const double e = easeOutCubic(std::min(since / raiseTime, 1.0));
    const double s = std::sin(13 * since);
    const double c = std::cos(13 * since);
    const QPointF target(1.1 * X + 2 * frame.ry * 0.06 * c, -0.15 * Y - 2 * frame.ry * 0.14 * s);
    return {rest + e * (target - rest), e * (0.35 * s - 0.5)};
}

} // namespace

void drawHands(QPainter &painter, const BotEngine &engine, const BotFrame &frame)
{
    if (engine.hands <= 0.01 || engine.isMini || frame.R <= leastRadius)
        return;

    const double hw = frame.ry * 0.3 * engine.hands;
    const double hh = frame.ry * 0.26 * engine.hands;
    const BotColor shaded = engine.bodyColor.value_or(PebboConst::baseBottom);
    const BotColor lit = engine.bodyColor ? shaded.lightened(0.35) : PebboConst::baseTop;
    QLinearGradient skin(hw * 0.7, hh * -0.85, hw * -0.8, hh * 0.9);
    skin.setColorAt(0, lit.paint());
    skin.setColorAt(1, shaded.paint());

    const PainterScope scope(painter);
    painter.setPen(QPen(BotColor{0, 0, 0}.paint(0.08), 1));
    painter.setBrush(skin);
    painter.translate(frame.cx, frame.cy);
    painter.rotate(degrees(engine.tilt));
    const QTransform body = painter.transform();
    for (const double side : {-1, 1}) {
        const HandPose pose = handPose(engine, frame, side);
        painter.translate(pose.at);
        // A hand keeps upright while the body leans; only its own turn shows.
        painter.rotate(degrees(pose.rotation - engine.tilt));
        painter.drawEllipse(QRectF(-hw, -hh, 2 * hw, 2 * hh));
        painter.setTransform(body);
    }
}

} // namespace tirlo
