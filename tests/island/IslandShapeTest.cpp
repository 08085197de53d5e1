#include "island/IslandShape.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tirlo {

namespace {

/// The point at that distance from the centre, at an angle clockwise from the right, in degrees.
QPointF polar(const QPointF &centre, double distance, double degrees)
{
    const double angle = degrees * M_PI / 180;
    return centre + distance * QPointF(std::cos(angle), std::sin(angle));
}

TEST(IslandShapeTest, TopIsSquareAndLowerCornersAreRound)
{
    const QPainterPath path
        = IslandShape{.width = 640, .height = 160, .cornerRadius = 22, .topRadius = 0}.path();
    EXPECT_EQ(path.boundingRect(), QRectF(0, 0, 640, 160));
    EXPECT_TRUE(path.contains({0.1, 0.1}));
    EXPECT_TRUE(path.contains({639.9, 0.1}));
    for (const double degrees : {5.0, 30.0, 45.0, 60.0, 85.0}) {
        EXPECT_TRUE(path.contains(polar({618, 138}, 21.9, degrees))) << degrees;
        EXPECT_FALSE(path.contains(polar({618, 138}, 22.1, degrees))) << degrees;
        EXPECT_TRUE(path.contains(polar({22, 138}, 21.9, 90 + degrees))) << degrees;
        EXPECT_FALSE(path.contains(polar({22, 138}, 22.1, 90 + degrees))) << degrees;
    }
}

TEST(IslandShapeTest, PositiveTopRadiusRoundsTheUpperCornersAtMostHalfAcross)
{
    IslandShape shape{.width = 100, .height = 60, .cornerRadius = 0, .topRadius = 10};
    EXPECT_FALSE(shape.path().contains(polar({10, 10}, 10.1, 225)));
    EXPECT_TRUE(shape.path().contains(polar({10, 10}, 9.9, 225)));
    EXPECT_FALSE(shape.path().contains(polar({90, 10}, 10.1, 315)));
    EXPECT_TRUE(shape.path().contains({0.1, 59.9}));

    shape.topRadius = 1000;
    EXPECT_FALSE(shape.path().contains(polar({30, 30}, 30.1, 225)));
    EXPECT_TRUE(shape.path().contains(polar({30, 30}, 29.9, 225)));
}

TEST(IslandShapeTest, NegativeTopRadiusCutsTheTopDownBetweenTwoShoulders)
{
    const QPainterPath path
        = IslandShape{.width = 200, .height = 100, .cornerRadius = 20, .topRadius = -12}.path();
    EXPECT_FALSE(path.contains({100, 11.9})) << "above the lowered edge";
    EXPECT_TRUE(path.contains({100, 12.1}));
    EXPECT_TRUE(path.contains(polar({0, 12}, 11.9, 315))) << "inside the left shoulder";
    EXPECT_FALSE(path.contains(polar({0, 12}, 12.1, 315)));
    EXPECT_TRUE(path.contains(polar({200, 12}, 11.9, 225))) << "inside the right shoulder";
    EXPECT_FALSE(path.contains(polar({200, 12}, 12.1, 225)));
    EXPECT_FALSE(path.contains(polar({180, 80}, 20.1, 45)));
    EXPECT_TRUE(path.contains(polar({180, 80}, 19.9, 45)));
}

TEST(IslandShapeTest, NegativeCornerRadiusCountsAsSquare)
{
    const QPainterPath path
        = IslandShape{.width = 50, .height = 20, .cornerRadius = -5, .topRadius = 0}.path();
    EXPECT_TRUE(path.contains({0.1, 19.9}));
    EXPECT_TRUE(path.contains({49.9, 19.9}));
    EXPECT_EQ(path.boundingRect(), QRectF(0, 0, 50, 20));
}

TEST(IslandShapeTest, RegionIsThePathPixelByPixel)
{
    const IslandShape shape{.width = 640, .height = 160, .cornerRadius = 22, .topRadius = 0};
    const QRegion region = shape.region();
    const QPainterPath path = shape.path();
    EXPECT_EQ(region.boundingRect(), QRect(0, 0, 640, 160));

    int differences = 0;
    for (int y = 0; y < 160; ++y) {
        for (int x = 0; x < 30; ++x)
            differences
                += region.contains(QPoint(x, y)) != path.contains(QPointF(x + 0.5, y + 0.5));
    }
    EXPECT_LE(differences, 2) << "only pixels whose centre the outline cuts may differ";
    EXPECT_FALSE(region.contains(QPoint(2, 158)));
    EXPECT_FALSE(region.contains(QPoint(637, 158)));
    EXPECT_TRUE(region.contains(QPoint(320, 159)));
    EXPECT_TRUE(IslandShape({.width = 0, .height = 0}).region().isEmpty());
}

} // namespace

} // namespace tirlo
