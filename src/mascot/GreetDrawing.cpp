#include "GreetDrawing.h"

#include "GreetColor.h"
#include "GreetMinis.h"
#include "GreetParticles.h"
#include "GreetPebbo.h"
#include "GreetPose.h"
#include "PainterScope.h"

#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>

namespace tirlo {

namespace {

constexpr QPointF stage(320, 90);

/// The card in the film's frame; the island's outline cuts off what it does not reach.
constexpr QRectF cardRect(10, 36, 620, 104);
constexpr double cardRadius = 20;
constexpr QStringView cardColor = u"#141518";
constexpr double cardEdgeOpacity = 0.035;

QPainterPath cardPath()
{
    QPainterPath path;
    path.addRoundedRect(cardRect, cardRadius, cardRadius);
    return path;
}

/// A flat disc of light, the painter's origin in its middle.
void fillDisc(QPainter &painter, double radius, double flatness, const QGradientStops &stops)
{
    const PainterScope scope(painter);
    QRadialGradient light(QPointF(), radius);
    light.setStops(stops);
    painter.scale(1, flatness);
    painter.fillRect(QRectF(-radius, -radius, 2 * radius, 2 * radius), light);
}

void drawBurst(QPainter &painter, const QPainterPath &card, const GreetPose &pose, double t)
{
    const double left = burstLeft(t) * (1 - pose.fold);
    const PainterScope scope(painter);
    painter.setClipPath(card, Qt::IntersectClip);
    painter.translate(stage);
    fillDisc(painter, 300, 0.3,
             {{0, gHex(u"#5566FF", 0.34 * pose.bloom * left)},
              {0.5, gHex(u"#7A5CFF", 0.12 * pose.bloom * left)},
              {1, gHex(u"#7A5CFF", 0)}});
    painter.setOpacity(painter.opacity() * (1 - pose.fold));
    drawParticles(painter, greetParticles(), t);
}

/// The card closes in from its edges as the burst thins, so that the sparks sink into it.
void drawCard(QPainter &painter, const QPainterPath &card, const GreetPose &pose, double t)
{
    const double present = pose.flash2 * (1 - pose.fold * pose.fold * pose.fold);
    if (present <= 0)
        return;
    const PainterScope scope(painter);
    painter.setOpacity(painter.opacity() * present);
    const double veil = 1 - burstLeft(t);
    if (veil >= 1) {
        painter.fillPath(card, gHex(cardColor));
    } else {
        const PainterScope clip(painter);
        painter.setClipPath(card, Qt::IntersectClip);
        painter.translate(stage);
        fillDisc(painter, 330, 0.24,
                 {{0, gHex(cardColor, veil)}, {0.35, gHex(cardColor, veil)}, {1, gHex(cardColor)}});
    }
    painter.strokePath(card, QPen(gHex(u"#FFFFFF", cardEdgeOpacity), 1));
}

/// The minis come in over the second half of the fold, when the island is nearly theirs.
double minisOpacity(double t, double tc)
{
    return t < tc ? 0 : std::clamp(2 * (t - tc) / greetFoldTime - 1, 0.0, 1.0);
}

} // namespace

void drawGreeting(QPainter &painter, QSizeF size, double t, double tc,
                  const IslandRestingLayout &compact, const GreetCast &cast)
{
    const GreetPose now = pose(t, tc, compact);
    const PainterScope scope(painter);
    painter.scale(size.width() / greetFrame.width(), size.height() / greetFrame.height());

    const QPainterPath card = cardPath();
    drawBurst(painter, card, now, t);
    drawCard(painter, card, now, t);
    drawMinis(painter, cast, compact, minisOpacity(t, tc));
    drawPebbo(painter, now, cast);
}

} // namespace tirlo
