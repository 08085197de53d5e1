#include "Canvas.h"

#include "mascot/GreetDrawing.h"
#include "mascot/GreetParticles.h"
#include "mascot/GreetPose.h"
#include "support/StoreParts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

using namespace tirlo;

namespace {

constexpr double never = std::numeric_limits<double>::infinity();
constexpr IslandRestingLayout notched{.width = 344, .height = 32, .cornerRadius = 14};

/// A moment of the film, on red to show what the film leaves alone.
QImage moment(double t, double tc = never, const GreetCast &cast = {},
              Qt::GlobalColor ground = Qt::red)
{
    QImage image(640, 150, QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    drawGreeting(painter, image.size(), t, tc, notched, cast);
    return image;
}

/// How many pixels of the area are lighter than that, on the black island as the user sees it.
int lit(double t, const QRect &area, int lightness)
{
    return count(moment(t, never, {}, Qt::black), area,
                 [lightness](const QColor &color) { return color.lightness() > lightness; });
}

TEST(GreetDrawingTest, TheBurstFliesOverTheCardAndLeavesNothingBehind)
{
    const QRect left(20, 40, 220, 90);
    EXPECT_EQ(lit(0.05, left, 40), 0);
    EXPECT_GT(lit(0.35, left, 60), 40);
    EXPECT_GT(count(moment(0.35, never, {}, Qt::black), QRect(20, 40, 600, 90),
                    [](const QColor &c) { return c.hsvSaturation() > 100 && c.value() > 90; }),
              30)
        << "coloured streaks";
    EXPECT_EQ(lit(2.5, left, 60), 0);
    for (const double t : {0.3, 0.5, 0.8})
        EXPECT_EQ(lit(t, QRect(20, 0, 200, 35), 30), 0) << "above the card at " << t;
}

TEST(GreetDrawingTest, TheBurstIsTheSameAtEveryRun)
{
    const GreetParticles burst = makeGreetParticles();
    EXPECT_EQ(burst, makeGreetParticles());
    // Worked out by hand: the dice begin at 7 and show 1282168116, 642666333 and so on.
    const GRingDot &first = burst.rings.at(0).dots.at(0);
    EXPECT_NEAR(first.a, 2 * std::numbers::pi * 1282168116 / 2147483647, 1e-6);
    EXPECT_NEAR(first.j, 0.22 * (642666333 / 2147483647.0 - 0.5), 1e-6);
    // And the last of 3464: no throw is lost or made twice on the way.
    EXPECT_NEAR(burst.streaks.back().t0, 0.08 + 0.14 * 0.2168411609, 1e-6);
}

TEST(GreetDrawingTest, TheMascotHasTwoEyesThatABowHides)
{
    const auto ink = [](double t) { return count(moment(t), QRect(285, 60, 70, 60), isInk); };
    const QImage open = moment(1.1);
    EXPECT_GT(open.pixelColor(320, 75).lightness(), 200);
    EXPECT_TRUE(isInk(open.pixelColor(309, 92)));
    EXPECT_TRUE(isInk(open.pixelColor(331, 92)));
    EXPECT_GT(ink(0.7), ink(1.1)) << "surprise opens the eyes wide";
    EXPECT_LT(ink(2.01), ink(1.1)) << "a blink";
    EXPECT_EQ(ink(1.385), 0);
}

TEST(GreetDrawingTest, TheFoldEndsInTheRestingIslandsCast)
{
    const GreetCast cast{.body = BotColor{0, 1, 0}, .minis = {{0, 0, 1}, {1, 1, 0}, {0, 1, 1}}};
    const QImage folded = moment(2.34, 2, cast);
    const double left = 320 - notched.width / 2;
    EXPECT_EQ(folded.pixelColor(int(left) + 40, 12), QColor(Qt::green));
    const int gridX = int(left + notched.width) - 40;
    const auto isLike = [](const QColor &a, const QColor &b) {
        return std::abs(a.red() - b.red()) < 8 && std::abs(a.green() - b.green()) < 8
            && std::abs(a.blue() - b.blue()) < 8;
    };
    EXPECT_TRUE(isLike(folded.pixelColor(gridX - 8, 6), Qt::blue));
    EXPECT_TRUE(isLike(folded.pixelColor(gridX + 8, 6), Qt::yellow));
    EXPECT_TRUE(isLike(folded.pixelColor(gridX - 8, 22), Qt::cyan));
    EXPECT_TRUE(isLike(moment(2, 2, cast).pixelColor(gridX - 8, 6), Qt::red)) << "not at once";
}

TEST(GreetDrawingTest, TheCastIsTheFocusAndTheOthers)
{
    StoreParts parts;
    AppState &state = parts.state;
    QList<AgentTask> tasks;
    for (int i = 0; i < 3; ++i) {
        AgentTask task;
        task.id = QString::number(i);
        task.color = QStringLiteral("#0000%1").arg(10 + i);
        task.isIntegration = i == 1;
        tasks.append(task);
    }
    state.tasks = tasks;
    state.focusId = QStringLiteral("1");
    const GreetCast cast = greetCast(state);
    EXPECT_EQ(cast.body, cgColorFromHex(u"#000011"));
    EXPECT_EQ(cast.minis, (std::vector{*cgColorFromHex(u"#000010"), *cgColorFromHex(u"#000012")}));
    state.focusId = QStringLiteral("0");
    EXPECT_EQ(greetCast(state).body, std::nullopt);
}

} // namespace
