#pragma once

namespace tirlo {

/// Bends progress from 0 to 1; the ends stay where they are.
using Ease = double (*)(double t);

/// Slow at both ends.
[[nodiscard]] constexpr double easeInOutCubic(double t)
{
    const double back = 2 - 2 * t;
    return t < 0.5 ? 4 * t * t * t : 1 - 0.5 * back * back * back;
}

/// Fast at first, slow at the end.
[[nodiscard]] constexpr double easeOutCubic(double t)
{
    const double rest = 1 - t;
    return 1 - rest * rest * rest;
}

/// Overshoots its target a little and comes back.
[[nodiscard]] constexpr double easeOutBack(double t)
{
    const double u = t - 1;
    return 1 + 2.7 * u * u * u + 1.7 * u * u;
}

/// Overshoot with the usual constants and clamped progress, for the films.
[[nodiscard]] constexpr double easeOutBackStd(double t)
{
    const double u = (t < 0 ? 0 : t > 1 ? 1 : t) - 1;
    return 1 + 2.70158 * u * u * u + 1.70158 * u * u;
}

/// Constant speed; also holds a value for a while.
[[nodiscard]] constexpr double linearEase(double t)
{
    return t;
}

} // namespace tirlo
