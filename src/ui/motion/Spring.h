#pragma once

namespace tirlo {

/// How far a spring's start still shows after some time; the motion is linear in its start.
///
/// With displacement x and velocity v at the start, the displacement now is
/// x * valuePerDisplacement + v * valuePerVelocity, and the velocity likewise.
struct SpringFactors
{
    double valuePerDisplacement = 0;
    double valuePerVelocity = 0;
    double velocityPerDisplacement = 0;
    double velocityPerVelocity = 0;
};

/// A damped harmonic oscillator of mass 1 that pulls a value toward its target.
struct Spring
{
    /// Seconds of one swing if nothing damped it; 0 or less arrives at once.
    double response = 0.5;
    /// Above 0; below 1 the value overshoots, at 1 it arrives soonest without.
    double dampingFraction = 1;

    /// Undamped angular frequency in radians a second: the square root of the stiffness.
    [[nodiscard]] double frequency() const;

    /// The exact motion `seconds` (0 or more) after the start.
    [[nodiscard]] SpringFactors factorsAt(double seconds) const;

    bool operator==(const Spring &) const = default;
};

} // namespace tirlo
