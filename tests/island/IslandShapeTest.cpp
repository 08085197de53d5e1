#include "island/IslandShape.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

using namespace tirlo;

namespace {

/// The point at that distance from the centre, at an angle clockwise from the right, in degrees.
QPointF polar(const QPointF &centre, double distance, double degrees)
{
    const double angle = degrees * M_PI / 180;
    return centre + distance * QPointF(std::cos(angle), std::sin(angle));
}

TEST(IslandShapeTest, EachCornerIsTheArcThatTheRadiiAskFor)
{
    // Of an arc: its centre, its radius and the middle of it.
    const std::tuple<const char *, IslandShape, QPointF, double, double> rows[] = {
        {"lower right", {640, 160, 22, 0}, {618, 138}, 22, 45},
        {"lower right, near its end", {640, 160, 22, 0}, {618, 138}, 22, 85},
        {"lower left", {640, 160, 22, 0}, {22, 138}, 22, 135},
        {"upper left", {100, 60, 0, 10}, {10, 10}, 10, 225},
        {"upper right", {100, 60, 0, 10}, {90, 10}, 10, 315},
        {"at most half across", {100, 60, 0, 1000}, {30, 30}, 30, 225},
        {"left shoulder", {200, 100, 20, -12}, {0, 12}, 12, 315},
        {"right shoulder", {200, 100, 20, -12}, {200, 12}, 12, 225},
        {"below a shoulder", {200, 100, 20, -12}, {180, 80}, 20, 45},
    };
    for (const auto &[about, shape, centre, radius, degrees] : rows) {
        EXPECT_TRUE(shape.path().contains(polar(centre, radius - 0.1, degrees))) << about;
        EXPECT_FALSE(shape.path().contains(polar(centre, radius + 0.1, degrees))) << about;
    }
    const QPainterPath square = IslandShape{50, 20, -5, 0}.path();
    EXPECT_TRUE(square.contains({0.1, 0.1}) && square.contains({49.9, 19.9}));
    const QPainterPath lowered = IslandShape{200, 100, 20, -12}.path();
    EXPECT_TRUE(lowered.contains({100, 12.1}) && !lowered.contains({100, 11.9}));
}

TEST(IslandShapeTest, RegionIsThePathPixelByPixel)
{
    const IslandShape shape{.width = 60, .height = 40, .cornerRadius = 22, .topRadius = 0};
    int differences = 0;
    for (int y = -1; y < 41; ++y) {
        for (int x = -1; x < 61; ++x)
            differences += shape.region().contains(QPoint(x, y))
                != shape.path().contains(QPointF(x + 0.5, y + 0.5));
    }
    EXPECT_LE(differences, 4) << "only pixels whose centre the outline cuts may differ";
    EXPECT_TRUE(IslandShape({.width = 0, .height = 0}).region().isEmpty());
}

} // namespace
