#pragma once

namespace tirlo {

/// A cubic Bézier from (0, 0) to (1, 1) that maps the share of time to the share of the way.
struct TimingCurve
{
    /// The two control points; x1 and x2 within 0...1, y1 and y2 may overshoot.
    double x1 = 0;
    double y1 = 0;
    double x2 = 1;
    double y2 = 1;
    /// Seconds; 0 or less arrives at once.
    double duration = 0;

    [[nodiscard]] static constexpr TimingCurve linear(double seconds)
    {
        return {0, 0, 1, 1, seconds};
    }
    [[nodiscard]] static constexpr TimingCurve easeIn(double seconds)
    {
        return {0.42, 0, 1, 1, seconds};
    }
    [[nodiscard]] static constexpr TimingCurve easeOut(double seconds)
    {
        return {0, 0, 0.58, 1, seconds};
    }
    [[nodiscard]] static constexpr TimingCurve easeInOut(double seconds)
    {
        return {0.42, 0, 0.58, 1, seconds};
    }

    /// The share of the way after `seconds`: exactly 0 until the start, exactly 1 from the end.
    [[nodiscard]] double progressAt(double seconds) const;

    /// How fast the share grows after `seconds`, per second; 0 before the start and from the end.
    [[nodiscard]] double speedAt(double seconds) const;

    bool operator==(const TimingCurve &) const = default;
};

} // namespace tirlo
