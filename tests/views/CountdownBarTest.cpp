#include "ViewFixture.h"

#include "views/frame/CountdownBar.h"

#include <limits>

using namespace tirlo;

namespace {

using CountdownBarTest = ViewFixture;

TEST_F(CountdownBarTest, ItRunsOutWithTheTimeToClose)
{
    const auto width = [bar = root->findChild<CountdownBar *>()] { return bar->barWidth(); };
    island.setView(IslandView::note);
    island.setMode(IslandMode::expanded);
    struct Case
    {
        double interval;
        double passed;
        double width;
    };
    for (const auto &[interval, passed, expected] :
         {Case{5, 1.95, 0}, Case{5, 2.15, 153}, Case{5, 3.5, 80}, Case{5, 5.1, 0}, Case{5, 30, 0},
          Case{60, 49.9, 0}, Case{60, 50.15, 158}, Case{0, 1, 0}, Case{-3, 1, 0},
          Case{std::numeric_limits<double>::quiet_NaN(), 1, 0}}) {
        state.autoCloseInterval = interval;
        state.lastActivity = queue.mediaTime();
        queue.advance(passed);
        EXPECT_NEAR(width(), expected, 6) << interval << ' ' << passed;
    }
    EXPECT_EQ(state.mode.value(), IslandMode::expanded) << "it closes nothing";

    state.autoCloseInterval = 5;
    state.lastActivity = queue.mediaTime();
    state.isPinned = true;
    queue.advance(4);
    EXPECT_EQ(width(), 0);
    state.isPinned = false;
    EXPECT_NEAR(width(), 1.0 / 3 * 160, 1);
    QCoreApplication::processEvents();
    const QImage image = picture();
    for (const auto &[fromMiddle, isLit] :
         {std::pair(0, true), {-22, true}, {21, true}, {-50, false}, {50, false}})
        EXPECT_EQ(image.pixelColor(360 + fromMiddle, 159).lightness() > 60, isLit) << fromMiddle;
    island.setMode(IslandMode::compact);
    EXPECT_EQ(width(), 0);
}

} // namespace
