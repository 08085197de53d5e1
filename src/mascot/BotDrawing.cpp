#include "BotDrawing.h"

#include "BotBadge.h"
#include "BotBody.h"
#include "BotEngine.h"
#include "BotEyes.h"
#include "BotHands.h"
#include "BotParticles.h"
#include "BotShapes.h"
#include "PainterScope.h"

namespace tirlo {

namespace {

/// A badge has no place on the box form.
constexpr double badgeMorphLimit = 0.25;

} // namespace

void draw(QPainter &painter, const BotEngine &engine, QSizeF size)
{
    const BotFrame frame = BotFrame::of(engine, size);
    const PainterScope scope(painter);
    painter.translate(frame.cx, frame.cy);
    painter.rotate(degrees(engine.tilt));
    painter.scale(engine.sx, engine.sy);

    const QPainterPath path = pebboPath(frame.rx, frame.ry, engine.morph, frame.R);
    drawBody(painter, engine, path, frame);

    // All that lies on the body ends where it ends.
    painter.setClipPath(path, Qt::IntersectClip);
    drawCheeks(painter, engine, frame);
    drawEyes(painter, engine, frame);
    drawSlot(painter, engine, frame);
}

void drawHandsBehind(QPainter &painter, const BotEngine &engine, QSizeF size)
{
    drawHands(painter, engine, BotFrame::of(engine, size));
}

void drawHandsAndExtras(QPainter &painter, const BotEngine &engine, QSizeF size)
{
    const BotFrame frame = BotFrame::of(engine, size);
    if (engine.badge && engine.badgeS > 0.01 && engine.morph < badgeMorphLimit)
        drawBadge(painter, engine, frame);
    drawParticles(painter, engine, frame);
}

} // namespace tirlo
