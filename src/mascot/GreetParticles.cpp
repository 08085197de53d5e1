#include "GreetParticles.h"

#include "Easing.h"
#include "GreetColor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace tirlo {

namespace {

using std::numbers::pi;

constexpr std::array ringBirths{0.1, 0.2, 0.3, 0.45, 0.6};
constexpr int dotsPerRing = 170;
constexpr int streakCount = 16;
constexpr std::array<QStringView, 5> streakColors{u"#3B9EFF", u"#F29B38", u"#FF5A4E", u"#2EC4A0",
                                                  u"#A78BFA"};

constexpr double ringLife = 1.35;
constexpr double streakLife = 0.6;
// The burst is a disc seen from the side.
constexpr double ringFlatness = 0.34;
constexpr double streakFlatness = 0.42;
constexpr double dotSide = 1.8;

/// Throws numbers from 0 to 1, the same row each time.
class SeededDice
{
public:
    double roll()
    {
        m_state = m_state * 1103515245U + 12345U;
        return double(m_state & 0x7fffffffU) / 2147483647;
    }

private:
    std::uint32_t m_state = 7;
};

/// A ring appears quickly and thins out while it widens.
double ringOpacity(double p)
{
    return p < 0.08 ? p / 0.08 : 1 - (p - 0.08) / 0.92;
}

/// Each ring is white with a breath of one streak's colour.
BotColor ringColor(std::size_t ring)
{
    const auto hue = cgColorFromHex(streakColors[ring % streakColors.size()]);
    return hue->lightened(0.55);
}

void drawRing(QPainter &painter, const GRing &ring, const BotColor &color, double t)
{
    const double p = (t - ring.t0) / ringLife;
    if (p <= 0 || p >= 1)
        return;
    const double radius = 14 + 366 * easeOutCubic(p);
    const double opacity = ringOpacity(p);
    for (const GRingDot &dot : ring.dots) {
        const double reach = radius * (1 + dot.j);
        const double side = dotSide * dot.s;
        const QPointF at(reach * std::cos(dot.a), reach * std::sin(dot.a) * ringFlatness);
        painter.fillRect(QRectF(at.x() - side / 2, at.y() - side / 2, side, side),
                         color.paint(opacity * dot.al));
    }
}

void drawStreak(QPainter &painter, const GStreak &streak, double t)
{
    const double p = (t - streak.t0) / streakLife;
    if (p <= 0 || p >= 1)
        return;
    const double q = 1 - p;
    const double inner = 10 + streak.sp * (t - streak.t0);
    const QPointF direction(std::cos(streak.a), std::sin(streak.a) * streakFlatness);
    painter.setPen(QPen(gHex(streak.col, q), 1 + q, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(direction * inner, direction * (inner + streak.len));
}

} // namespace

GreetParticles makeGreetParticles()
{
    SeededDice dice;
    GreetParticles made;
    for (const double birth : ringBirths) {
        GRing ring{.t0 = birth, .dots = {}};
        for (int i = 0; i < dotsPerRing; ++i) {
            // A braced list rolls from left to right.
            ring.dots.push_back(GRingDot{.a = 2 * pi * dice.roll(),
                                         .j = 0.22 * (dice.roll() - 0.5),
                                         .s = 0.7 + 0.9 * dice.roll(),
                                         .al = 0.45 + 0.55 * dice.roll()});
        }
        made.rings.push_back(std::move(ring));
    }
    for (int i = 0; i < streakCount; ++i) {
        made.streaks.push_back(
            GStreak{.a = 2 * pi * i / streakCount + 0.3 * (dice.roll() - 0.5),
                    .sp = 230 + 260 * dice.roll(),
                    .len = 6 + 9 * dice.roll(),
                    .t0 = 0.08 + 0.14 * dice.roll(),
                    .col = streakColors[std::size_t(i) % streakColors.size()].toString()});
    }
    return made;
}

const GreetParticles &greetParticles()
{
    static const GreetParticles particles = makeGreetParticles();
    return particles;
}

double burstLeft(double t)
{
    return 1 - easeInOutCubic(std::clamp((t - ringBirths.back()) / ringLife, 0.0, 1.0));
}

void drawParticles(QPainter &painter, const GreetParticles &particles, double t)
{
    for (std::size_t i = 0; i < particles.rings.size(); ++i)
        drawRing(painter, particles.rings[i], ringColor(i), t);
    for (const GStreak &streak : particles.streaks)
        drawStreak(painter, streak, t);
}

} // namespace tirlo
