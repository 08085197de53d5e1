#include "ViewFixture.h"

#include "views/CountdownBar.h"

#include <QCoreApplication>

#include <limits>

namespace tirlo {

namespace {

class CountdownBarTest : public ViewFixture
{
protected:
    CountdownBarTest()
    {
        state.view = IslandView::note;
        state.mode = IslandMode::expanded;
    }

    [[nodiscard]] double barWidth() const { return root->findChild<CountdownBar *>()->barWidth(); }
};

TEST_F(CountdownBarTest, ItRunsOutWithTheTimeToClose)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case
    {
        double interval;
        double passed;
        double width;
    };
    for (const auto &[interval, passed, width] :
         {Case{5, 1.95, 0}, Case{5, 2.15, 153}, Case{5, 3.5, 80}, Case{5, 5.1, 0}, Case{5, 30, 0},
          Case{60, 49.9, 0}, Case{60, 50.15, 158}, Case{0, 1, 0}, Case{-3, 1, 0},
          Case{nan, 1, 0}}) {
        state.autoCloseInterval = interval;
        state.lastActivity = queue.mediaTime();
        queue.advance(passed);
        EXPECT_NEAR(barWidth(), width, 6) << interval << ' ' << passed;
    }
    EXPECT_EQ(state.mode.value(), IslandMode::expanded) << "it closes nothing";
}

TEST_F(CountdownBarTest, APinnedOrClosedIslandHasNone)
{
    state.autoCloseInterval = 5;
    state.isPinned = true;
    queue.advance(4);
    EXPECT_EQ(barWidth(), 0);
    state.isPinned = false;
    EXPECT_NEAR(barWidth(), 1.0 / 3 * 160, 1);
    state.mode = IslandMode::compact;
    EXPECT_EQ(barWidth(), 0);
}

TEST_F(CountdownBarTest, TheLineIsCentredOnTheLowerEdge)
{
    state.autoCloseInterval = 5;
    queue.advance(3.5);
    QCoreApplication::processEvents();
    const QImage image = picture();
    const auto lightness = [&](int x) { return image.pixelColor(x, 159).lightness(); };
    EXPECT_GT(lightness(360), 60);
    EXPECT_GT(lightness(360 - 35), 60);
    EXPECT_GT(lightness(360 + 34), 60);
    EXPECT_EQ(lightness(360 - 50), 0);
    EXPECT_EQ(lightness(360 + 50), 0);
}

} // namespace

} // namespace tirlo
