#include "BotParticles.h"

#include "BotEngine.h"
#include "BotGlyph.h"
#include "BotShapes.h"
#include "PainterScope.h"

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

using Type = Particle::ParticleType;

QColor colorOf(Type type)
{
    switch (type) {
    case Type::heart:
        return QColor(0xff, 0x4d, 0x6d);
    case Type::star:
        return QColor(0xf7, 0xb3, 0x2b);
    case Type::spark:
        return Qt::white;
    case Type::sweat:
        return QColor(0x7c, 0xc7, 0xff);
    case Type::z:
        return BotColor{0.82, 0.86, 0.92}.paint();
    }
    return {};
}

QPainterPath drop(double z)
{
    QPainterPath path;
    path.moveTo(0, -z);
    path.quadTo(0.8 * z, 0.2 * z, 0, 0.6 * z);
    path.quadTo(-0.8 * z, 0.2 * z, 0, -z);
    return path;
}

/// Appears over the first fifth of its life and fades over the rest.
double opacityAt(double k)
{
    return std::clamp(k < 0.2 ? k / 0.2 : 1 - (k - 0.2) / 0.8, 0.0, 1.0);
}

void drawParticle(QPainter &painter, const Particle &particle, double R)
{
    const QColor color = colorOf(particle.type);
    const double k = particle.age / particle.life;
    const double z = R * particle.size * (1 + 0.4 * k);
    painter.setOpacity(painter.opacity() * opacityAt(k));

    switch (particle.type) {
    case Type::heart:
        painter.rotate(degrees(0.3 * std::sin(6 * particle.age)));
        return painter.fillPath(heartShape(z), color);
    case Type::star:
        painter.rotate(degrees(particle.rot + 2 * particle.age));
        return painter.fillPath(starShape(z, 0.45 * z), color);
    case Type::spark:
        painter.rotate(degrees(particle.rot));
        return painter.fillPath(starShape(0.8 * z, 0.18 * z), color);
    case Type::sweat:
        return painter.fillPath(drop(z), color);
    case Type::z:
        return drawGlyph(painter, u'z', QFont::Bold, {}, 1.9 * z, color);
    }
}

} // namespace

void drawParticles(QPainter &painter, const BotEngine &engine, const BotFrame &frame)
{
    for (const Particle &particle : engine.particles) {
        if (particle.age <= 0)
            continue;
        const PainterScope scope(painter);
        painter.translate(frame.cx + frame.R * (particle.x + particle.vx * particle.age) * 1.3,
                          frame.cy + frame.R * (particle.y + particle.vy * particle.age) * 1.3);
        drawParticle(painter, particle, frame.R);
    }
}

} // namespace tirlo
