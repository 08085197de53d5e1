#include "mascot/GreetPose.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace tirlo {

namespace {

constexpr double never = std::numeric_limits<double>::infinity();
constexpr double close = 1e-9;
constexpr IslandRestingLayout notched{.width = 344, .height = 32, .cornerRadius = 14};

GreetPose at(double t)
{
    return greetPose(t, notched);
}

TEST(GreetPoseTest, TheMascotGrowsOutOfTheNotch)
{
    EXPECT_NEAR(at(0).d, 3, close);
    EXPECT_NEAR(at(0).y, 16, close);
    EXPECT_NEAR(at(0).w, 184, close);
    EXPECT_NEAR(at(0).h, 32, close);
    EXPECT_GT(at(0.3).d, 58) << "it overshoots";
    for (const double t : {0.45, 1.0, 14.0}) {
        EXPECT_NEAR(at(t).d, 58, close);
        EXPECT_NEAR(at(t).x, 320, close);
        EXPECT_NEAR(at(t).y, 90, close);
    }
    // A quarter of a second is half of the way in time: the sine of an eighth turn, and a little.
    const double g = std::numbers::sqrt2 / 2 + 0.02;
    EXPECT_NEAR(at(0.25).w, 184 + 456 * g, close);
    EXPECT_NEAR(at(0.25).h, 32 + 118 * g, close);
    EXPECT_NEAR(at(0.5).w, 640, close);
    EXPECT_NEAR(at(0.5).h, 150, close);
}

TEST(GreetPoseTest, TheBowIsDeepestInItsMiddle)
{
    EXPECT_EQ(at(1.24).lift, 0);
    const GreetPose deepest = at(1.385);
    EXPECT_NEAR(deepest.sx, 1.04, close);
    EXPECT_NEAR(deepest.sy, 0.94, close);
    EXPECT_NEAR(deepest.lift, 1, close);
    EXPECT_NEAR(deepest.y, 90 + 0.22 * 58, close);
    EXPECT_EQ(at(1.53).sx, 1);
}

TEST(GreetPoseTest, EyesAndLidsFollowTheirTimes)
{
    using enum GreetEye;
    struct Row
    {
        double t;
        GreetEye eye;
        double lookX;
        double lookY;
    };
    for (const auto &[t, eye, lookX, lookY] :
         {Row{0.59, open, 0, 0}, Row{0.61, surprised, 0, 0}, Row{0.83, open, 0, -0.2},
          Row{1.26, open, 0, 0}, Row{1.53, open, 0.55, -0.45}, Row{2.44, open, 0.55, -0.45},
          Row{2.46, happy, -0.3, 0.6}, Row{2.6, open, -0.3, 0.6}, Row{2.86, happy, -0.3, 0.6},
          Row{3.375, open, -0.15, 0.3}, Row{3.56, open, 0, 0}}) {
        SCOPED_TRACE(t);
        EXPECT_EQ(at(t).eye, eye);
        EXPECT_NEAR(at(t).lookX, lookX, close);
        EXPECT_NEAR(at(t).lookY, lookY, close);
    }
    EXPECT_EQ(at(1.94).open, 1);
    EXPECT_NEAR(at(2.01).open, 0.06, close);
    EXPECT_EQ(at(2.08).open, 1);
    EXPECT_NEAR(at(3.86).open, 0.06, close);
}

TEST(GreetPoseTest, HandsComeForTheWaveAndGo)
{
    EXPECT_NEAR(at(1.36).handL, 0, close);
    EXPECT_NEAR(at(1.38).handR, 0, close);
    EXPECT_GT(at(1.45).handL, 1) << "it overshoots";
    EXPECT_NEAR(at(1.54).handR, 1, close);
    EXPECT_EQ(at(1.51).wave, -1);
    EXPECT_NEAR(at(2.52).wave, 1, close);
    EXPECT_EQ(at(2.59).wave, -1);
    EXPECT_NEAR(at(2.675).handL, 0.875, close);
    EXPECT_NEAR(at(2.705).handR, 0.875, close);
    EXPECT_NEAR(at(2.8).handL, 0, close);
    EXPECT_NEAR(at(2.8).handR, 0, close);
}

TEST(GreetPoseTest, TheSwayDiesOutAndTheHopFollowsIt)
{
    const GreetPose swaying = at(1.52);
    EXPECT_NEAR(swaying.rot, 0.05 * std::sin(0.6), close);
    EXPECT_NEAR(swaying.x, 320, close);
    EXPECT_NE(at(2).x, 320);
    EXPECT_EQ(at(2.81).rot, 0);
    EXPECT_EQ(at(2.81).x, 320);
    EXPECT_NEAR(at(2.89).y, 90 + 0.12 * 58, close) << "the middle of the hop";
    EXPECT_NEAR(at(3.2).y, 90, close);
}

TEST(GreetPoseTest, BadgeAndLightsComeAndTheSceneDims)
{
    EXPECT_NEAR(at(2.72).badge, 0, close);
    EXPECT_NEAR(at(3).badge, 1, close);
    EXPECT_EQ(at(0.3).bloom, 0);
    EXPECT_NEAR(at(0.5).bloom, 0.875, close);
    EXPECT_NEAR(at(0.475).flash1, 0.5, close);
    EXPECT_NEAR(at(0.305).flash2, 0.5, close);
    EXPECT_EQ(at(3.85).fold, 0);
    EXPECT_NEAR(at(4).fold, 0.3, close);
    EXPECT_NEAR(at(4).foldT, 0.5, close);
    EXPECT_NEAR(at(4.2).fold, 0.6, close);
}

TEST(GreetPoseTest, ACallToFoldBlendsThePoseIntoTheRestingForm)
{
    EXPECT_EQ(pose(1.99, 2, notched), at(1.99)) << "nothing before its time";
    EXPECT_EQ(pose(2, 2, notched), at(2)) << "nothing jumps";

    const GreetPose half = pose(2.17, 2, notched);
    EXPECT_NEAR(half.w, (640 + 344) / 2.0, close);
    EXPECT_NEAR(half.h, (150 + 32) / 2.0, close);

    for (const double t : {2 + greetFoldTime, 9.0}) {
        const GreetPose folded = pose(t, 2, notched);
        EXPECT_NEAR(folded.w, 344, close);
        EXPECT_NEAR(folded.h, 32, close);
        EXPECT_NEAR(folded.x, 320 - 172 + 40, close);
        EXPECT_NEAR(folded.y, 16, close);
        EXPECT_NEAR(folded.d, 17, close);
        EXPECT_NEAR(folded.handR, 0, close);
        EXPECT_NEAR(folded.rot, 0, close);
        EXPECT_NEAR(folded.open, 1, close);
    }
    EXPECT_NEAR(pose(3, 2, {.width = 240, .height = 16}).d, 8.5, close) << "a thin bar";
}

TEST(GreetPoseTest, TheFilmStandsStillAtItsLastMoment)
{
    EXPECT_EQ(pose(100, never, notched), at(14.6));
    EXPECT_EQ(pose(100, 100, notched), at(14.6));
}

} // namespace

} // namespace tirlo
