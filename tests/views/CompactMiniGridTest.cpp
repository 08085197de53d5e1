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
    EXPECT_EQ(minis().size(), 4);
    state.focusId = std::nullopt;
    EXPECT_EQ(grid().others().first().id, "t0") << "nobody is left out";
    setTasks({});
    EXPECT_TRUE(minis().isEmpty());
}

TEST_F(CompactMiniGridTest, ItStandsWithinALowBar)
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
}

} // namespace
