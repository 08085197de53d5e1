#include "ViewFixture.h"

#include "views/CountdownBar.h"

#include <QCoreApplication>

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
    state.autoCloseInterval = 5;
    queue.advance(1.95);
    EXPECT_EQ(barWidth(), 0);
    queue.advance(0.15);
    EXPECT_NEAR(barWidth(), 160, 6) << "full length at once";
    queue.advance(1.45);
    EXPECT_NEAR(barWidth(), 1.5 / 3 * 160, 6);
    queue.advance(1.55);
    EXPECT_EQ(barWidth(), 0);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded) << "it closes nothing";
}

TEST_F(CountdownBarTest, ALongIntervalShowsItsLastTenSeconds)
{
    state.autoCloseInterval = 60;
    queue.advance(49.9);
    EXPECT_EQ(barWidth(), 0);
    queue.advance(0.3);
    EXPECT_GT(barWidth(), 155);
}

TEST_F(CountdownBarTest, ActivityStartsItAnewEvenOnceItHasRunOut)
{
    state.autoCloseInterval = 5;
    queue.advance(3);
    EXPECT_GT(barWidth(), 0);
    state.lastActivity = queue.mediaTime();
    queue.advance(0.1);
    EXPECT_EQ(barWidth(), 0);
    queue.advance(20);
    EXPECT_EQ(barWidth(), 0);
    state.lastActivity = queue.mediaTime();
    queue.advance(3.5);
    EXPECT_NEAR(barWidth(), 1.5 / 3 * 160, 6);
}

TEST_F(CountdownBarTest, APinnedOrClosedIslandHasNone)
{
    state.autoCloseInterval = 5;
    state.isPinned = true;
    setApproval(QStringLiteral("ls"), QStringLiteral("a"));
    queue.advance(4);
    EXPECT_EQ(barWidth(), 0);
    state.isPinned = false;
    state.pendingApproval = std::nullopt;
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
