#pragma once

#include "Spring.h"
#include "TimingCurve.h"

#include <variant>

namespace tirlo {

/// The way in which a value goes to its target: a spring or a curve, at once or after a wait.
struct Animation
{
    // Implicit, so that a spring or a curve can be given wherever an animation is asked for.
    Animation(const Spring &spring, double delaySeconds = 0)
        : motion(spring)
        , delay(delaySeconds)
    {
    }
    Animation(const TimingCurve &curve, double delaySeconds = 0)
        : motion(curve)
        , delay(delaySeconds)
    {
    }

    /// No motion at all: the target is reached in the same instant.
    [[nodiscard]] static Animation none() { return TimingCurve{}; }

    std::variant<Spring, TimingCurve> motion;
    /// Seconds during which the value stands where it is before it sets off.
    double delay = 0;

    bool operator==(const Animation &) const = default;
};

} // namespace tirlo
