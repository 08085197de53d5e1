#include "ui/motion/Spring.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tirlo {
namespace {

struct Motion
{
    double value;
    double velocity;
};

// The oscillator's own equation, stepped by the classical fourth-order method.
Motion integrate(const Spring &spring, Motion motion, double seconds)
{
    const double stiffness = std::pow(2 * std::numbers::pi / spring.response, 2);
    const double damping = 4 * std::numbers::pi * spring.dampingFraction / spring.response;
    const auto rate = [&](const Motion &at) {
        return Motion{at.velocity, -stiffness * at.value - damping * at.velocity};
    };
    const auto moved = [](const Motion &from, const Motion &by, double share) {
        return Motion{from.value + by.value * share, from.velocity + by.velocity * share};
    };

    const int steps = int(std::ceil(seconds / 1e-4));
    const double h = seconds / std::max(steps, 1);
    for (int step = 0; step < steps; ++step) {
        const Motion a = rate(motion);
        const Motion b = rate(moved(motion, a, h / 2));
        const Motion c = rate(moved(motion, b, h / 2));
        const Motion d = rate(moved(motion, c, h));
        motion.value += h / 6 * (a.value + 2 * b.value + 2 * c.value + d.value);
        motion.velocity += h / 6 * (a.velocity + 2 * b.velocity + 2 * c.velocity + d.velocity);
    }
    return motion;
}

TEST(SpringTest, FollowsTheIntegratedOscillatorInEveryRegime)
{
    const Spring springs[]
        = {{0.5, 0.72},      {0.3, 0.1},       {0.35, 0.9}, {0.55, 1},        {0.4, 1.6},
           {0.35, 1 - 1e-7}, {0.35, 1 + 1e-7}, {0.8, 8},    {0.5, 1 - 1e-13}, {0.5, 1 + 1e-13}};
    const Motion starts[] = {{-480, 0}, {0, 900}, {60, -2500}, {1, 3}};

    for (const Spring &spring : springs) {
        for (const Motion &start : starts) {
            const double scale = std::abs(start.value) + std::abs(start.velocity);
            for (const double time : {0.0, 0.008, 0.1, 0.37, 1.0, 2.5}) {
                SCOPED_TRACE(testing::Message()
                             << spring.response << '/' << spring.dampingFraction << " from "
                             << start.value << ", " << start.velocity << " at " << time);
                const Motion expected = integrate(spring, start, time);
                const SpringFactors factors = spring.factorsAt(time);
                EXPECT_NEAR(start.value * factors.valuePerDisplacement
                                + start.velocity * factors.valuePerVelocity,
                            expected.value, scale * 1e-8);
                EXPECT_NEAR(start.value * factors.velocityPerDisplacement
                                + start.velocity * factors.velocityPerVelocity,
                            expected.velocity, scale * spring.frequency() * 1e-8);
            }
        }
    }
}

TEST(SpringTest, StaysFiniteAndDiesAwayOverLongTimes)
{
    for (const double damping : {0.05, 1.0, 4.0, 60.0}) {
        const SpringFactors factors = Spring{0.2, damping}.factorsAt(10'000);
        EXPECT_NEAR(factors.valuePerDisplacement, 0, 1e-12) << damping;
        EXPECT_NEAR(factors.valuePerVelocity, 0, 1e-12) << damping;
        EXPECT_NEAR(factors.velocityPerDisplacement, 0, 1e-12) << damping;
        EXPECT_NEAR(factors.velocityPerVelocity, 0, 1e-12) << damping;
    }
}

} // namespace
} // namespace tirlo
