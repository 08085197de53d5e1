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

TEST(GreetPoseTest, EachMemberFollowsItsTimes)
{
    // A quarter of a second is half of the way in time: the sine of an eighth turn, and a little.
    const double g = std::numbers::sqrt2 / 2 + 0.02;
    struct Row
    {
        const char *what;
        double GreetPose::*member;
        double t;
        double value;
    };
    using P = GreetPose;
    for (const auto &[what, member, t, value] : {
             Row{"d out of the notch", &P::d, 0, 3},
             Row{"y in the notch", &P::y, 0, 16},
             Row{"w of the notch", &P::w, 0, 184},
             Row{"h of the notch", &P::h, 0, 32},
             Row{"w on its way", &P::w, 0.25, 184 + 456 * g},
             Row{"h on its way", &P::h, 0.25, 32 + 118 * g},
             Row{"w open", &P::w, 0.5, 640},
             Row{"h open", &P::h, 0.5, 150},
             Row{"d grown", &P::d, 0.45, 58},
             Row{"x stands", &P::x, 1, 320},
             Row{"y stands", &P::y, 14, 90},
             Row{"lift before the bow", &P::lift, 1.24, 0},
             Row{"lift deepest", &P::lift, 1.385, 1},
             Row{"sx deepest", &P::sx, 1.385, 1.04},
             Row{"sy deepest", &P::sy, 1.385, 0.94},
             Row{"y deepest", &P::y, 1.385, 90 + 0.22 * 58},
             Row{"sx after the bow", &P::sx, 1.53, 1},
             Row{"open before a blink", &P::open, 1.94, 1},
             Row{"open in a blink", &P::open, 2.01, 0.06},
             Row{"open after a blink", &P::open, 2.08, 1},
             Row{"open in the second blink", &P::open, 3.86, 0.06},
             Row{"no left hand yet", &P::handL, 1.36, 0},
             Row{"no right hand yet", &P::handR, 1.38, 0},
             Row{"right hand there", &P::handR, 1.54, 1},
             Row{"no wave yet", &P::wave, 1.51, -1},
             Row{"end of the wave", &P::wave, 2.52, 1},
             Row{"after the wave", &P::wave, 2.59, -1},
             Row{"left hand goes", &P::handL, 2.675, 0.875},
             Row{"right hand goes", &P::handR, 2.705, 0.875},
             Row{"left hand gone", &P::handL, 2.8, 0},
             Row{"right hand gone", &P::handR, 2.8, 0},
             Row{"sway", &P::rot, 1.52, 0.05 * std::sin(0.6)},
             Row{"sway's way", &P::x, 1.52, 320},
             Row{"sway died out", &P::rot, 2.81, 0},
             Row{"x after the sway", &P::x, 2.81, 320},
             Row{"the middle of the hop", &P::y, 2.89, 90 + 0.12 * 58},
             Row{"y after the hop", &P::y, 3.2, 90},
             Row{"no badge yet", &P::badge, 2.72, 0},
             Row{"badge", &P::badge, 3, 1},
             Row{"no bloom yet", &P::bloom, 0.3, 0},
             Row{"bloom", &P::bloom, 0.5, 0.875},
             Row{"first flash", &P::flash1, 0.475, 0.5},
             Row{"second flash", &P::flash2, 0.305, 0.5},
             Row{"not dim yet", &P::fold, 3.85, 0},
             Row{"dims", &P::fold, 4, 0.3},
             Row{"time of the dimming", &P::foldT, 4, 0.5},
             Row{"dim", &P::fold, 4.2, 0.6},
         })
        EXPECT_NEAR(at(t).*member, value, close) << what;
    EXPECT_GT(at(0.3).d, 58) << "it overshoots";
    EXPECT_GT(at(1.45).handL, 1) << "so does a hand";
    EXPECT_NE(at(2).x, 320);
}

TEST(GreetPoseTest, EyesFollowTheirTimes)
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
