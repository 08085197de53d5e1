#include "BotBody.h"

#include "BotEngine.h"
#include "BotShapes.h"
#include "ui/ShapeLayers.h"

#include <QLinearGradient>
#include <QRadialGradient>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

constexpr BotColor black{0, 0, 0};
constexpr BotColor white{1, 1, 1};
constexpr BotColor cheekPink{1, 0.471, 0.588};
constexpr BotColor slotTop{0.027, 0.031, 0.039};
constexpr BotColor slotBottom{0.063, 0.075, 0.102};

/// A layer fainter than this is not worth its pixels.
constexpr double faint = 0.01;

void addGrey(ShapeLayers &layers, const BotFrame &frame)
{
    QLinearGradient grey(frame.rx * 0.7, frame.ry * -0.85, frame.rx * -0.8, frame.ry * 0.9);
    grey.setColorAt(0, PebboConst::baseTop.paint());
    grey.setColorAt(1, PebboConst::baseBottom.paint());
    layers.add(grey);
}

/// The state's colour rises from below.
void addTint(ShapeLayers &layers, const BotEngine &engine, double ry)
{
    const double strength = engine.tint * (1 - engine.morph);
    if (strength <= faint)
        return;
    const BotColor color{engine.col[0], engine.col[1], engine.col[2]};
    QLinearGradient tint(0, ry, 0, -ry);
    tint.setColorAt(0, color.paint(strength * 0.72));
    tint.setColorAt(1, color.paint(0));
    layers.add(tint);
}

void addRimShade(ShapeLayers &layers, double R)
{
    // From radius 0.15 R to 1.25 R, clear over the first 0.6 of the way.
    QRadialGradient shade(QPointF(), R * 1.25);
    shade.setColorAt((0.15 + 0.6 * 1.1) / 1.25, black.paint(0));
    shade.setColorAt(1, black.paint(0.2));
    layers.add(shade);
}

void addHighlight(ShapeLayers &layers, const BotFrame &frame)
{
    const QPointF center(frame.rx * 0.34, frame.ry * -0.46);
    QRadialGradient spot(center, frame.R * 0.42);
    spot.setColorAt(0, white.paint(0.55));
    spot.setColorAt(1, white.paint(0));
    layers.add(spot);
}

QPen roundPen(double opacity)
{
    return QPen(white.paint(opacity), 1, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin);
}

} // namespace

void drawBody(QPainter &painter, const BotEngine &engine, const QPainterPath &path,
              const BotFrame &frame)
{
    if (engine.bodyColor) {
        painter.fillPath(path, engine.bodyColor->paint());
        return;
    }
    ShapeLayers layers(painter, path);
    addGrey(layers, frame);
    addTint(layers, engine, frame.ry);
    addShading(layers, frame);
}

void addShading(ShapeLayers &layers, const BotFrame &frame)
{
    addRimShade(layers, frame.R);
    addHighlight(layers, frame);
}

void drawCheeks(QPainter &painter, const BotEngine &engine, const BotFrame &frame)
{
    const double strength = (1 - engine.morph) * std::max(engine.blush, engine.tint * 0.5);
    if (strength <= faint)
        return;

    const double slide = frame.rx * std::sin(engine.yaw) * 0.8;
    const QSizeF size(frame.R * 0.34, frame.R * 0.2);
    const double top = frame.ry * 0.2 - frame.R * 0.1;
    painter.setPen(Qt::NoPen);
    painter.setBrush(cheekPink.paint(strength * 0.5));
    for (const double side : {-1, 1}) {
        const double left = slide + side * frame.rx * 0.55 - frame.R * 0.17;
        painter.drawEllipse(QRectF(QPointF(left, top), size));
    }
}

void drawSlot(QPainter &painter, const BotEngine &engine, const BotFrame &frame)
{
    const double morph = engine.morph;
    if (morph <= 0.05)
        return;

    const double R = frame.R;
    const double p = morph * R * engine.slotH;
    const double top = -R * (morph * 0.06 + 0.88);
    painter.setPen(roundPen(morph * 0.55));
    painter.drawLine(QPointF(-0.9 * R * morph, top + 1), QPointF(0.9 * R * morph, top + 1));
    if (p <= 0.8)
        return;

    const double w = R * 1.8 * morph;
    const double x = -w / 2;
    const double y = top + R * 0.08 * morph;
    const double r = std::min(p / 2, w / 2);
    QLinearGradient depth(0, y, 0, y + p);
    depth.setColorAt(0, slotTop.paint());
    depth.setColorAt(1, slotBottom.paint());
    painter.setPen(Qt::NoPen);
    painter.setBrush(depth);
    painter.drawRoundedRect(QRectF(x, y, w, p), r, r);
    if (p <= 4)
        return;

    const double inset = std::min((w - 2) / 2, r);
    painter.setPen(roundPen(morph * 0.28));
    painter.drawLine(QPointF(x + inset, y + p - 0.5), QPointF(x + w - inset, y + p - 0.5));
}

} // namespace tirlo
