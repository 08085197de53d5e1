#include "ViewFixture.h"

#include "views/frame/CompactMiniGrid.h"

using namespace tirlo;

namespace {

class CompactMiniGridTest : public ViewFixture
{
protected:
    void compact(int taskCount)
    {
        island.setMode(IslandMode::compact);
        setTaskCount(taskCount);
    }

    /// Where the minis that show stand in the panel.
    [[nodiscard]] QList<QRect> minis() const
    {
        QList<QRect> rects;
        for (const auto *child : grid().findChildren<QWidget *>()) {
            if (child->isVisible())
                rects.append(placeOf(child));
        }
        return rects;
    }

    [[nodiscard]] CompactMiniGrid &grid() const { return *root->findChild<CompactMiniGrid *>(); }
};

TEST_F(CompactMiniGridTest, FourOfTheOthersStandAtTheRight)
{
    compact(1);
    EXPECT_TRUE(minis().isEmpty()) << "the one task is the focus";
    compact(6);
    // The island is 344 wide, its grid's middle 40 from the right.
    const int x = 360 + 172 - 40;
    EXPECT_EQ(
        minis(),
        (QList<QRect>{
            {x - 18, -2, 20, 20}, {x - 2, -2, 20, 20}, {x - 18, 14, 20, 20}, {x - 2, 14, 20, 20}}));
    for (const QRect &mini : minis()) {
        int bright = 0;
        const QImage image = picture().copy(mini);
        for (int i = 0; i < 20 * 20; ++i)
            bright += image.pixelColor(i % 20, i / 20).lightness() > 60 ? 1 : 0;
        EXPECT_GT(bright, 10) << mini.x();
    }

    state.focusId = std::nullopt;
    EXPECT_EQ(grid().others().first().id, "t0") << "nobody is left out";
    setTasks({});
    EXPECT_TRUE(minis().isEmpty());
}

TEST_F(CompactMiniGridTest, ItGrowsAndShrinksWithTheModeAndTheHeight)
{
    state.notchHeight = 24;
    state.hasNotch = false;
    island.setMode(IslandMode::hidden);
    compact(5);
    const QList<QRect> low = minis();
    ASSERT_EQ(low.size(), 4);
    EXPECT_EQ(low.first().size(), QSize(14, 14));
    for (const QRect &mini : low)
        EXPECT_TRUE(QRect(0, -2, 720, 28).contains(mini)) << mini.top() << " " << mini.bottom();

    island.setMode(IslandMode::hidden);
    queue.advance(0.1);
    ASSERT_EQ(minis().size(), 4);
    EXPECT_LT(minis().first().width(), 14);
    queue.advance(0.2);
    EXPECT_TRUE(minis().isEmpty());
    island.setMode(IslandMode::compact);
    queue.advance(2);
    EXPECT_EQ(minis(), low);
}

TEST_F(CompactMiniGridTest, AMiniLivesAsLongAsItsTaskIsThere)
{
    compact(4);
    const auto bots = [this] { return grid().findChildren<QWidget *>(); };
    const auto before = bots();
    state.editTask("t1", [](AgentTask &t) { t.state = BotState::working; });
    EXPECT_EQ(bots(), before);
    state.removeTask("t1");
    EXPECT_EQ(bots(), before.last(2)) << "those after it move up";
    state.editTask("t2", [](AgentTask &t) { t.color = "#123"; });
    EXPECT_EQ(bots().size(), 2);
    EXPECT_TRUE(bots().contains(before.last()));
}

} // namespace
