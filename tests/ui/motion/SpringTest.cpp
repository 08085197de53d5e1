#include "ui/motion/Spring.h"

#include <gtest/gtest.h>

namespace tirlo {
namespace {

TEST(SpringTest, ObeysTheOscillatorsEquationInEveryRegime)
{
    const Spring springs[]
        = {{0.5, 0.72},      {0.3, 0.1},       {0.35, 0.9}, {0.55, 1},        {0.4, 1.6},
           {0.35, 1 - 1e-7}, {0.35, 1 + 1e-7}, {0.8, 8},    {0.5, 1 - 1e-13}, {0.5, 1 + 1e-13}};
    for (const Spring &spring : springs) {
        const SpringFactors start = spring.factorsAt(0);
        EXPECT_NEAR(start.valuePerDisplacement, 1, 1e-12);
        EXPECT_NEAR(start.valuePerVelocity, 0, 1e-12);
        EXPECT_NEAR(start.velocityPerDisplacement, 0, 1e-12);
        EXPECT_NEAR(start.velocityPerVelocity, 1, 1e-12);

        const double omega = spring.frequency();
        for (const double time : {0.008, 0.1, 0.37, 1.0, 2.5}) {
            const double h = 1e-6;
            const SpringFactors before = spring.factorsAt(time - h);
            const SpringFactors now = spring.factorsAt(time);
            const SpringFactors after = spring.factorsAt(time + h);
            const auto expectMotion = [&](auto value, auto velocity, double scale) {
                SCOPED_TRACE(testing::Message() << spring.response << '/' << spring.dampingFraction
                                                << " at " << time << " by " << scale);
                EXPECT_NEAR((after.*value - before.*value) / (2 * h), now.*velocity, scale * 1e-7);
                const double force = -omega * omega * now.*value
                    - 2 * spring.dampingFraction * omega * now.*velocity;
                EXPECT_NEAR((after.*velocity - before.*velocity) / (2 * h), force,
                            scale * omega * 1e-7);
            };
            expectMotion(&SpringFactors::valuePerDisplacement,
                         &SpringFactors::velocityPerDisplacement, omega);
            expectMotion(&SpringFactors::valuePerVelocity, &SpringFactors::velocityPerVelocity, 1);
        }
    }
}

TEST(SpringTest, StaysFiniteAndDiesAwayOverLongTimes)
{
    for (const double damping : {0.05, 1.0, 4.0, 60.0}) {
        const auto [a, b, c, d] = Spring{0.2, damping}.factorsAt(10'000);
        for (const double factor : {a, b, c, d})
            EXPECT_NEAR(factor, 0, 1e-12) << damping;
    }
}

} // namespace
} // namespace tirlo
