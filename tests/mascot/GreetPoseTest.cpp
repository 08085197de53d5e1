#include "mascot/GreetPose.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <tuple>
#include <vector>

using namespace tirlo;

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
    using P = GreetPose;
    const std::tuple<const char *, double P::*, std::vector<std::pair<double, double>>> rows[] = {
        {"d", &P::d, {{0, 3}, {0.45, 58}}},
        {"w", &P::w, {{0, 184}, {0.25, 184 + 456 * g}, {0.5, 640}}},
        {"h", &P::h, {{0, 32}, {0.25, 32 + 118 * g}, {0.5, 150}}},
        {"x", &P::x, {{1, 320}, {1.52, 320}, {2.81, 320}}},
        {"y", &P::y, {{0, 16}, {1.385, 90 + 0.22 * 58}, {2.89, 90 + 0.12 * 58}, {14, 90}}},
        {"lift", &P::lift, {{1.24, 0}, {1.385, 1}}},
        {"sy", &P::sy, {{1.385, 0.94}}},
        {"open", &P::open, {{1.94, 1}, {2.01, 0.06}, {2.08, 1}, {3.86, 0.06}}},
        {"lookX", &P::lookX, {{1.26, 0}, {1.53, 0.55}, {2.46, -0.3}, {3.375, -0.15}, {3.56, 0}}},
        {"lookY", &P::lookY, {{0.83, -0.2}, {1.53, -0.45}, {2.46, 0.6}, {3.56, 0}}},
        {"handR", &P::handR, {{1.38, 0}, {1.54, 1}, {2.705, 0.875}, {2.8, 0}}},
        {"wave", &P::wave, {{1.51, -1}, {2.52, 1}, {2.59, -1}}},
        {"rot", &P::rot, {{1.52, 0.05 * std::sin(0.6)}, {2.81, 0}}},
        {"badge", &P::badge, {{2.72, 0}, {3, 1}}},
        {"fold", &P::fold, {{3.85, 0}, {4, 0.3}, {4.2, 0.6}}},
    };
    for (const auto &[name, member, moments] : rows) {
        for (const auto &[t, value] : moments)
            EXPECT_NEAR(at(t).*member, value, close) << name << " at " << t;
    }
    for (const auto &[t, eye] :
         {std::pair(0.61, GreetEye::surprised), std::pair(1.53, GreetEye::open),
          std::pair(2.46, GreetEye::happy), std::pair(2.6, GreetEye::open),
          std::pair(2.86, GreetEye::happy), std::pair(3.56, GreetEye::open)})
        EXPECT_EQ(at(t).eye, eye) << t;
    EXPECT_GT(at(0.3).d, 58) << "it overshoots";
    EXPECT_GT(at(1.45).handL, 1) << "so does a hand";
    EXPECT_NE(at(2).x, 320);
    for (const double tc : {never, 100.0})
        EXPECT_EQ(pose(100, tc, notched), at(14.6)) << "it stands still at its last moment";
}

TEST(GreetPoseTest, ACallToFoldBlendsThePoseIntoTheRestingForm)
{
    EXPECT_EQ(pose(1.99, 2, notched), at(1.99)) << "nothing before its time";
    EXPECT_EQ(pose(2, 2, notched), at(2)) << "nothing jumps";
    EXPECT_NEAR(pose(2.17, 2, notched).w, (640 + 344) / 2.0, close);

    using P = GreetPose;
    for (const auto &[member, value] :
         {std::pair(&P::w, 344), std::pair(&P::h, 32), std::pair(&P::x, 320 - 172 + 40),
          std::pair(&P::y, 16), std::pair(&P::d, 17), std::pair(&P::handR, 0),
          std::pair(&P::rot, 0), std::pair(&P::open, 1)}) {
        EXPECT_NEAR(pose(2 + greetFoldTime, 2, notched).*member, value, close) << value;
        EXPECT_NEAR(pose(9, 2, notched).*member, value, close) << value;
    }
    EXPECT_NEAR(pose(3, 2, {.width = 240, .height = 16}).d, 8.5, close) << "a thin bar";
}

} // namespace
