#include "TimingCurve.h"

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

// One coordinate of the curve at the parameter s, its end points being 0 and 1.
double bezier(double p1, double p2, double s)
{
    return ((1 + 3 * (p1 - p2)) * s + 3 * (p2 - 2 * p1)) * s * s + 3 * p1 * s;
}

double bezierSlope(double p1, double p2, double s)
{
    return (3 * (1 + 3 * (p1 - p2)) * s + 6 * (p2 - 2 * p1)) * s + 3 * p1;
}

// The parameter at which the curve's x is `x`, a share of the duration. Newton's method, kept
// inside a shrinking bracket because the slope of x may vanish.
double parameterAt(const TimingCurve &curve, double x)
{
    constexpr double precision = 1e-12;
    constexpr int maximumSteps = 64;

    double low = 0;
    double high = 1;
    double s = x;
    for (int step = 0; step < maximumSteps; ++step) {
        const double miss = bezier(curve.x1, curve.x2, s) - x;
        if (std::abs(miss) < precision)
            break;
        (miss < 0 ? low : high) = s;
        const double next = s - miss / bezierSlope(curve.x1, curve.x2, s);
        s = next > low && next < high ? next : (low + high) / 2;
    }
    return s;
}

} // namespace

double TimingCurve::progressAt(double seconds) const
{
    if (seconds >= duration)
        return 1;
    if (seconds <= 0)
        return 0;
    return bezier(y1, y2, parameterAt(*this, seconds / duration));
}

double TimingCurve::speedAt(double seconds) const
{
    if (seconds < 0 || seconds >= duration)
        return 0;
    // At the ends x and y may both stand still; a hair inside, their ratio is the limit's.
    constexpr double hair = 1e-5;
    const double s = std::clamp(parameterAt(*this, seconds / duration), hair, 1 - hair);
    return bezierSlope(y1, y2, s) / bezierSlope(x1, x2, s) / duration;
}

} // namespace tirlo
