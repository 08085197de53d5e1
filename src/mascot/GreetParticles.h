#pragma once

#include <QPainter>
#include <QString>

#include <vector>

namespace tirlo {

/// A dot of a ring, around the ring's own radius.
struct GRingDot
{
    /// Radians.
    double a = 0;
    /// The dot's distance from the ring, as a share of the radius.
    double j = 0;
    /// Factors of size and opacity.
    double s = 0;
    double al = 0;

    bool operator==(const GRingDot &) const = default;
};

/// A ring of dots that widens from its birth, `t0` seconds into the film.
struct GRing
{
    double t0 = 0;
    std::vector<GRingDot> dots;

    bool operator==(const GRing &) const = default;
};

/// A coloured line that flies outward.
struct GStreak
{
    /// Radians.
    double a = 0;
    /// Points a second.
    double sp = 0;
    /// Points.
    double len = 0;
    /// Seconds into the film.
    double t0 = 0;
    /// A text such as "#3B9EFF".
    QString col;

    bool operator==(const GStreak &) const = default;
};

/// The burst that greets: the same at every start.
struct GreetParticles
{
    std::vector<GRing> rings;
    std::vector<GStreak> streaks;

    bool operator==(const GreetParticles &) const = default;
};

/// Throws the dice of the burst, which always fall alike.
[[nodiscard]] GreetParticles makeGreetParticles();

/// The burst, thrown once.
[[nodiscard]] const GreetParticles &greetParticles();

/// How much of the burst's light is left, 1 until its last ring is born and 0 once that is gone.
[[nodiscard]] double burstLeft(double t);

/// Draws the burst around the painter's origin; the painter's clip bounds it.
void drawParticles(QPainter &painter, const GreetParticles &particles, double t);

} // namespace tirlo
