#include "BotBadge.h"

#include "BotEngine.h"
#include "BotGlyph.h"
#include "BotShapes.h"
#include "PainterScope.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tirlo {

namespace {

using std::numbers::pi;

constexpr double miniScale = 1.25;
/// Turns a second of the typing wave.
constexpr double waveRate = 2.4;

double fraction(double value)
{
    return value - std::floor(value);
}

void fillCircle(QPainter &painter, QPointF center, double radius, const QColor &color)
{
    painter.setBrush(color);
    painter.drawEllipse(center, radius, radius);
}

void drawSign(QPainter &painter, const BotEngine &engine, double R, const QColor &color, QChar sign)
{
    fillCircle(painter, {}, R * 0.3, Qt::black);
    fillCircle(painter, {}, R * 0.23, color);
    if (!engine.isMini)
        drawGlyph(painter, sign, QFont::Black, {0, R * 0.02}, R * 0.32, Qt::white);
}

void drawDot(QPainter &painter, double R, const QColor &color)
{
    fillCircle(painter, {}, R * 0.2, Qt::black);
    fillCircle(painter, {}, R * 0.135, color);
}

/// Three dots that swell one after the other, as if it were typing.
void drawTyping(QPainter &painter, double R, const QColor &color, double time)
{
    const QSizeF size(R * 0.82, R * 0.36);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF({-size.width() / 2, -size.height() / 2}, size),
                            size.height() / 2, size.height() / 2);
    for (int i = 0; i < 3; ++i) {
        const double swell = std::max(0.0, std::sin(2 * pi * fraction(waveRate * time - 0.22 * i)));
        fillCircle(painter, {R * 0.18 * (i - 1), 0}, R * 0.055 * (1 + 0.4 * swell), Qt::white);
    }
}

void drawPulse(QPainter &painter, double R, const QColor &color, double time)
{
    const double swell = std::sin(2 * pi * fraction(waveRate * time));
    fillCircle(painter, {}, R * 0.2, Qt::black);
    fillCircle(painter, {}, R * 0.22 * (1 + 0.25 * swell), color);
}

} // namespace

void drawBadge(QPainter &painter, const BotEngine &engine, const BotFrame &frame)
{
    const double R = frame.R;
    const QColor color = engine.badge->color.paint();
    const double scale = engine.badgeS * (engine.isMini ? miniScale : 1);

    const PainterScope scope(painter);
    painter.translate(frame.cx - R * 0.72 * engine.sx, frame.cy - R * 0.72 * engine.sy);
    painter.scale(scale, scale);
    painter.setPen(Qt::NoPen);

    using enum BadgeType::Kind;
    switch (engine.badge->kind) {
    case bang:
        return drawSign(painter, engine, R, color, u'!');
    case question:
        return drawSign(painter, engine, R, color, u'?');
    case dot:
        return drawDot(painter, R, color);
    case dots:
        if (engine.isMini)
            return drawPulse(painter, R, color, engine.lastTime);
        return drawTyping(painter, R, color, engine.lastTime);
    }
}

} // namespace tirlo
