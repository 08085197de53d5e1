#include "ui/motion/TimingCurve.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tirlo {
namespace {

// Gentle, steep, standing still in the middle or at an end, overshooting.
const TimingCurve curves[] = {
    TimingCurve::linear(2),    TimingCurve::easeIn(2),  TimingCurve::easeOut(2),
    TimingCurve::easeInOut(2), {0.45, 0, 0.2, 1, 0.34}, {1, 0, 0, 1, 0.5},
    {0, 1, 1, 0, 3},           {1, 0.2, 1, 0.9, 1},     {0, 0.3, 0, 0.8, 1},
    {0.3, -0.6, 0.7, 1.6, 1},
};

double cubic(double p1, double p2, double s)
{
    return 3 * (1 - s) * (1 - s) * s * p1 + 3 * (1 - s) * s * s * p2 + s * s * s;
}

TEST(TimingCurveTest, PassesThroughThePointsOfItsBezier)
{
    for (const TimingCurve &curve : curves) {
        for (int step = 0; step <= 1000; ++step) {
            const double s = step / 1000.0;
            // The steepest of these curves turn a rounding of time into a millionth of the way.
            EXPECT_NEAR(curve.progressAt(cubic(curve.x1, curve.x2, s) * curve.duration),
                        cubic(curve.y1, curve.y2, s), 1e-5)
                << curve.x1 << ' ' << curve.x2 << " at " << s;
        }
    }
}

TEST(TimingCurveTest, HasExactEndsAndStandsStillBeyondThem)
{
    for (const TimingCurve &curve : curves) {
        for (const double early : {-1.0, 0.0})
            EXPECT_EQ(curve.progressAt(early), 0);
        for (const double late : {curve.duration, curve.duration + 5})
            EXPECT_EQ(curve.progressAt(late), 1);
        EXPECT_EQ(curve.speedAt(-0.01), 0);
        EXPECT_EQ(curve.speedAt(curve.duration), 0);
    }
    EXPECT_EQ(TimingCurve::easeIn(0).progressAt(0), 1);
}

TEST(TimingCurveTest, SpeedIsTheSlopeOfProgress)
{
    for (const TimingCurve &curve :
         {TimingCurve::linear(2), TimingCurve::easeOut(0.3), TimingCurve::easeInOut(1),
          TimingCurve{0.45, 0, 0.2, 1, 0.34}}) {
        const double h = curve.duration * 1e-5;
        for (const double share : {0.05, 0.3, 0.5, 0.8, 0.95}) {
            const double time = curve.duration * share;
            const double slope
                = (curve.progressAt(time + h) - curve.progressAt(time - h)) / (2 * h);
            EXPECT_NEAR(curve.speedAt(time), slope, 1e-4 / curve.duration);
        }
    }
    EXPECT_NEAR(TimingCurve::linear(2).speedAt(0), 0.5, 1e-9);
    EXPECT_NEAR(TimingCurve::easeIn(2).speedAt(0), 0, 1e-4);
    EXPECT_NEAR(TimingCurve::easeOut(2).speedAt(0), 1 / 0.58 / 2, 1e-4);
}

} // namespace
} // namespace tirlo
