#include "ui/motion/Animated.h"

#include <gtest/gtest.h>

#include <cmath>

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
    const double value = width.valueAt(0.1);
    width.animateTo(184, closing, 0.1);

    EXPECT_EQ(width.valueAt(0.1), value);
    double last = value;
    for (double time = 0.1; time < 0.5; time += 0.001) {
        EXPECT_LE(width.valueAt(time), last);
        last = width.valueAt(time);
    }
    EXPECT_FALSE(width.isAtRest(0.1 + 0.339));
    EXPECT_TRUE(width.isAtRest(0.1 + 0.341));
    EXPECT_EQ(width.valueAt(0.441), 184);
}

TEST(AnimatedTest, RestComesAtLastAndNeverWhileMoreThanATraceIsLeft)
{
    const struct
    {
        Spring spring;
        double from;
        double to;
    } rows[]
        = {{bouncy, 184, 640},  {bouncy, 0, 1},     {bouncy, 1, 1 - 1e-9},   {{0.3, 0.05}, 0, 1},
           {{0.55, 1}, 0, 360}, {{0.4, 3}, 0, 640}, {{0.25, 0.4}, -1e6, 1e6}};
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << row.spring.response << '/' << row.spring.dampingFraction
                                        << ' ' << row.from << " to " << row.to);
        const double distance = row.from - row.to;
        const double trace = std::min(0.05, std::abs(distance) * 0.001);
        Animated<double> value(row.from);
        value.animateTo(row.to, row.spring, 0);

        double rest = 0;
        while (!value.isAtRest(rest) && rest < 10)
            rest += 0.001;
        ASSERT_LT(rest, 10);
        ASSERT_GT(rest, 0);
        EXPECT_EQ(value.valueAt(rest), row.to);
        EXPECT_EQ(value.velocityAt(rest), 0);
        for (double time = rest; time < rest + 3; time += 0.003) {
            EXPECT_TRUE(value.isAtRest(time));
            EXPECT_LE(std::abs(distance * row.spring.factorsAt(time).valuePerDisplacement),
                      trace * (1 + 1e-9));
        }
        // Nor does it dawdle: a moment before, the energy left was still worth drawing.
        const SpringFactors before = row.spring.factorsAt(rest - 0.002);
        EXPECT_GT(std::hypot(before.valuePerDisplacement,
                             before.velocityPerDisplacement / row.spring.frequency())
                      * std::abs(distance),
                  trace);
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

} // namespace
} // namespace tirlo
