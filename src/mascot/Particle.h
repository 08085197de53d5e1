#pragma once

namespace tirlo {

/// Something small that rises from the mascot and fades. Its place follows from its age.
struct Particle
{
    enum class ParticleType { heart, star, spark, sweat, z };

    ParticleType type = ParticleType::heart;
    /// Birthplace from the body's centre, and velocity a second; in body radii, y downward.
    double x = 0;
    double y = 0;
    double vx = 0;
    double vy = 0;
    /// Seconds; not yet born while negative.
    double age = 0;
    /// Seconds.
    double life = 0;
    /// Radians.
    double rot = 0;
    /// In body radii.
    double size = 0;

    bool operator==(const Particle &) const = default;
};

} // namespace tirlo
