#include "ui/motion/Animated.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <utility>

namespace tirlo {
namespace {

const Spring bouncy{0.5, 0.72};
const TimingCurve closing{0.45, 0, 0.2, 1, 0.34};

TEST(AnimatedTest, StandsStillUntilToldOtherwise)
{
    Animated<double> width(184);
    EXPECT_TRUE(width.isAtRest(0));
    width.animateTo(640, bouncy, 3);
    EXPECT_EQ(width.valueAt(3), 184);
    EXPECT_FALSE(width.isAtRest(3));

    width.jumpTo(200);
    EXPECT_EQ(width.valueAt(3.1), 200);
    EXPECT_EQ(width.velocityAt(3.1), 0);
    EXPECT_TRUE(width.isAtRest(3.1));

    for (const Animation &animation : {Animation::none(), Animation(Spring{0, 0.7})}) {
        width.jumpTo(184);
        width.animateTo(640, animation, 5);
        EXPECT_EQ(width.valueAt(5), 640);
        EXPECT_TRUE(width.isAtRest(5));
    }
    width.animateTo(640, bouncy, 5);
    EXPECT_TRUE(width.isAtRest(5)) << "it is there";
    width.animateTo(184, closing, 5);
    width.animateTo(184, closing, 5.2);
    EXPECT_TRUE(width.isAtRest(5.35)) << "a target already approached is left to arrive";
}

TEST(AnimatedTest, RetargetedSpringKeepsValueAndVelocity)
{
    for (const double moment : {0.03, 0.12, 0.3, 0.42}) {
        for (const Animation &first : {Animation(bouncy), Animation(closing)}) {
            Animated<double> width(184);
            width.animateTo(640, first, 0);
            const double value = width.valueAt(moment);
            const double velocity = width.velocityAt(moment);
            width.animateTo(80, Spring{0.3, 1.2}, moment);
            EXPECT_NEAR(width.valueAt(moment), value, 1e-9);
            EXPECT_NEAR(width.velocityAt(moment), velocity, 1e-9);
            EXPECT_NEAR((width.valueAt(moment + 1e-6) - value) / 1e-6, velocity, 0.5);
        }
    }
}

TEST(AnimatedTest, RetargetedCurveStartsFromThePresentValue)
{
    Animated<double> width(184);
    width.animateTo(640, bouncy, 0);
    double last = width.valueAt(0.1);
    width.animateTo(184, closing, 0.1);
    EXPECT_EQ(width.valueAt(0.1), last);
    for (double time = 0.1; time < 0.44; time += 0.001) {
        EXPECT_FALSE(width.isAtRest(time));
        EXPECT_LE(width.valueAt(time), std::exchange(last, width.valueAt(time)));
    }
    EXPECT_TRUE(width.isAtRest(0.441));
    EXPECT_EQ(width.valueAt(0.441), 184);
}

TEST(AnimatedTest, RestComesAtLastAndNeverWhileMoreThanATraceIsLeft)
{
    using Row = std::tuple<Spring, double, double>;
    for (const auto &[spring, from, to] : {Row{bouncy, 184, 640},
                                           {bouncy, 1, 1 - 1e-9},
                                           {{0.3, 0.05}, 0, 1},
                                           {{0.55, 1}, 0, 360},
                                           {{0.4, 3}, 0, 640},
                                           {{0.25, 0.4}, -1e6, 1e6}}) {
        SCOPED_TRACE(testing::Message() << spring.response << '/' << spring.dampingFraction);
        const double distance = from - to;
        const double trace = std::min(0.05, std::abs(distance) * 0.001);
        Animated<double> value(from);
        value.animateTo(to, spring, 0);

        double rest = 0;
        while (!value.isAtRest(rest) && rest < 10)
            rest += 0.001;
        ASSERT_TRUE(rest > 0 && rest < 10);
        EXPECT_EQ(value.valueAt(rest), to);
        EXPECT_EQ(value.velocityAt(rest), 0);
        for (double time = rest; time < rest + 3; time += 0.003)
            EXPECT_LE(std::abs(distance * spring.factorsAt(time).valuePerDisplacement),
                      trace * (1 + 1e-9));
        // Nor does it dawdle: a moment before, the energy left was still worth drawing.
        const auto [a, b, c, d] = spring.factorsAt(rest - 0.002);
        EXPECT_GT(std::hypot(a, c / spring.frequency()) * std::abs(distance), trace);
    }
}

TEST(AnimatedTest, DelayHoldsThePresentValueAndThenStartsFromStandstill)
{
    Animated<double> opacity(0);
    opacity.animateTo(1, TimingCurve::linear(1), 0);
    opacity.animateTo(0, Animation(bouncy, 0.2), 0.4);

    EXPECT_NEAR(opacity.valueAt(0.4), 0.4, 1e-9);
    EXPECT_NEAR(opacity.valueAt(0.59), 0.4, 1e-9);
    EXPECT_EQ(opacity.velocityAt(0.59), 0);
    EXPECT_FALSE(opacity.isAtRest(0.59));
    EXPECT_NEAR(opacity.velocityAt(0.6 + 1e-6), 0, 1e-3);
    EXPECT_LT(opacity.valueAt(0.7), 0.39);
}

TEST(SpringTest, StaysFiniteAndDiesAwayOverLongTimes)
{
    for (const double nearlyOne : {1 - 1e-7, 1 + 1e-7, 1 - 1e-13, 1 + 1e-13}) {
        for (const double time : {0.008, 0.1, 0.37, 1.0})
            EXPECT_NEAR(Spring({0.35, nearlyOne}).factorsAt(time).valuePerDisplacement,
                        Spring({0.35, 1}).factorsAt(time).valuePerDisplacement, 1e-5);
    }
    for (const double damping : {0.05, 1.0, 4.0, 60.0}) {
        const auto [a, b, c, d] = Spring{0.2, damping}.factorsAt(10'000);
        for (const double factor : {a, b, c, d})
            EXPECT_NEAR(factor, 0, 1e-12) << damping;
    }
}

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

} // namespace
} // namespace tirlo
