#include "Canvas.h"

#include "core/AppState.h"
#include "mascot/GreetDrawing.h"
#include "mascot/GreetPose.h"
#include "support/ManualQueue.h"
#include "support/MemoryStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tirlo {

namespace {

constexpr double never = std::numeric_limits<double>::infinity();
constexpr IslandRestingLayout notched{.width = 344, .height = 32, .cornerRadius = 14};

/// A moment of the film on a red ground that shows what the film leaves alone.
QImage moment(double t, double tc = never, const GreetCast &cast = {})
{
    QImage image(640, 150, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    QPainter painter(&image);
    drawGreeting(painter, image.size(), t, tc, notched, cast);
    return image;
}

/// The same as the user sees it, on the black island.
QImage frameAt(double t)
{
    QImage image(640, 150, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawGreeting(painter, image.size(), t, never, notched, {});
    return image;
}

template<typename Predicate>
int count(const QImage &image, const QRect &area, Predicate predicate)
{
    int pixels = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            pixels += predicate(image.pixelColor(x, y)) ? 1 : 0;
    }
    return pixels;
}

bool isVivid(const QColor &color)
{
    return color.hsvSaturation() > 100 && color.value() > 90;
}

TEST(GreetDrawingTest, TheBurstFliesOverTheCardAndLeavesNothingBehind)
{
    const QRect left(20, 40, 220, 90);
    EXPECT_EQ(count(frameAt(0.05), left, [](const QColor &c) { return c.lightness() > 40; }), 0);
    EXPECT_GT(count(frameAt(0.35), left, [](const QColor &c) { return c.lightness() > 60; }), 40);
    EXPECT_GT(count(frameAt(0.35), QRect(20, 40, 600, 90), isVivid), 30) << "coloured streaks";
    EXPECT_EQ(count(frameAt(2.5), left, [](const QColor &c) { return c.lightness() > 60; }), 0);
    const QRect aboveTheCard(20, 0, 200, 35);
    for (const double t : {0.3, 0.5, 0.8}) {
        EXPECT_EQ(count(frameAt(t), aboveTheCard, [](const QColor &c) { return c.value() > 30; }),
                  0)
            << t;
    }
}

TEST(GreetDrawingTest, TheMascotHasTwoEyesThatABowHides)
{
    const auto inkIn = [](const QImage &image) {
        int pixels = 0;
        for (int y = 60; y < 120; ++y) {
            for (int x = 285; x < 355; ++x)
                pixels += isInk(image.pixelColor(x, y)) ? 1 : 0;
        }
        return pixels;
    };
    const QImage open = moment(1.1);
    EXPECT_GT(open.pixelColor(320, 75).lightness(), 200);
    EXPECT_TRUE(isInk(open.pixelColor(309, 92)));
    EXPECT_TRUE(isInk(open.pixelColor(331, 92)));
    EXPECT_GT(inkIn(moment(0.7)), inkIn(open)) << "surprise opens the eyes wide";
    EXPECT_LT(inkIn(moment(2.01)), inkIn(open)) << "a blink";
    EXPECT_EQ(inkIn(moment(1.385)), 0);
}

TEST(GreetDrawingTest, TheFoldEndsInTheRestingIslandsCast)
{
    const GreetCast cast{.body = BotColor{0, 1, 0}, .minis = {{0, 0, 1}, {1, 1, 0}, {0, 1, 1}}};
    const QImage folded = moment(2.34, 2, cast);
    const double left = 320 - notched.width / 2;
    EXPECT_EQ(folded.pixelColor(int(left) + 40, 12), QColor(Qt::green));
    const int gridX = int(left + notched.width) - 40;
    const auto isLike = [](const QColor &a, const QColor &b) {
        return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                         std::abs(a.blue() - b.blue())})
            < 8;
    };
    EXPECT_TRUE(isLike(folded.pixelColor(gridX - 8, 6), Qt::blue));
    EXPECT_TRUE(isLike(folded.pixelColor(gridX + 8, 6), Qt::yellow));
    EXPECT_TRUE(isLike(folded.pixelColor(gridX - 8, 22), Qt::cyan));
    EXPECT_TRUE(isLike(moment(2, 2, cast).pixelColor(gridX - 8, 6), Qt::red)) << "not at once";
}

TEST(GreetDrawingTest, TheCastIsTheFocusAndAtMostFourOthers)
{
    ManualQueue queue;
    MemoryStore store;
    AppState state(store, queue);
    QList<AgentTask> tasks;
    for (int i = 0; i < 6; ++i) {
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
    EXPECT_EQ(cast.minis,
              (std::vector{*cgColorFromHex(u"#000010"), *cgColorFromHex(u"#000012"),
                           *cgColorFromHex(u"#000013"), *cgColorFromHex(u"#000014")}));
    state.focusId = QStringLiteral("0");
    EXPECT_EQ(greetCast(state).body, std::nullopt);
}

} // namespace

} // namespace tirlo
