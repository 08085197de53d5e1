#include "mascot/GreetParticles.h"

#include <QImage>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tirlo {

namespace {

constexpr double pi = std::numbers::pi;
constexpr double close = 1e-6;

QImage burstAt(double t)
{
    QImage image(640, 150, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(320, 75);
    drawParticles(painter, greetParticles(), t);
    return image;
}

/// How far from the middle the outermost lit pixel lies, sideways and up or down.
QPoint reach(const QImage &image)
{
    QPoint most;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).lightness() < 10)
                continue;
            most.rx() = std::max(most.x(), std::abs(x - 320));
            most.ry() = std::max(most.y(), std::abs(y - 75));
        }
    }
    return most;
}

TEST(GreetParticlesTest, TheBurstIsTheSameAtEveryRun)
{
    const GreetParticles burst = makeGreetParticles();
    EXPECT_EQ(burst, makeGreetParticles());
    EXPECT_EQ(burst, greetParticles());

    ASSERT_EQ(burst.rings.size(), 5);
    // Worked out by hand: the dice begin at 7 and show 1282168116, 642666333 and so on.
    const GRingDot &first = burst.rings[0].dots[0];
    EXPECT_NEAR(first.a, 2 * pi * 1282168116 / 2147483647, close);
    EXPECT_NEAR(first.j, 0.22 * (642666333 / 2147483647.0 - 0.5), close);
    // And the last of 3464: no throw is lost or made twice on the way.
    ASSERT_EQ(burst.streaks.size(), 16);
    EXPECT_NEAR(burst.streaks.back().t0, 0.08 + 0.14 * 0.2168411609, close);
    EXPECT_EQ(burst.streaks[4].col, QStringLiteral("#A78BFA"));
    std::vector<double> births;
    for (const GRing &ring : burst.rings) {
        births.push_back(ring.t0);
        EXPECT_EQ(ring.dots.size(), 170);
    }
    EXPECT_EQ(births, (std::vector{0.1, 0.2, 0.3, 0.45, 0.6}));
}

TEST(GreetParticlesTest, TheBurstIsAFlatDiscThatWidensAndGoes)
{
    EXPECT_EQ(reach(burstAt(0.05)), QPoint());
    const QPoint early = reach(burstAt(0.25));
    const QPoint late = reach(burstAt(0.5));
    EXPECT_GT(early.x(), 60);
    EXPECT_GT(late.x(), early.x());
    EXPECT_LT(early.y(), early.x() / 2);
    EXPECT_EQ(reach(burstAt(1.96)), QPoint());
    EXPECT_EQ(burstLeft(0.6), 1);
    EXPECT_EQ(burstLeft(1.95), 0);
}

} // namespace

} // namespace tirlo
