#include "ViewFixture.h"

#include "views/frame/BotPlacement.h"
#include "views/frame/IslandContentView.h"

using namespace tirlo;

namespace {

/// What lies on the island, as it comes, goes and is hit.
class IslandLayersTest : public ViewFixture
{
protected:
    /// How light the card's surface is, far from its glow and text, on the black of the island.
    [[nodiscard]] int surface() { return picture().pixelColor(60, 100).lightness(); }

    /// How much of a mascot there is around the point of the island.
    [[nodiscard]] int brightAround(int x, int y)
    {
        int bright = 0;
        const QImage image = picture().copy(40 + x - 30, y - 30, 60, 60);
        for (int i = 0; i < 60 * 60; ++i)
            bright += image.pixelColor(i % 60, i / 60).lightness() > 170 ? 1 : 0;
        return bright;
    }
};

TEST_F(IslandLayersTest, TheOldCardFadesBeforeTheNewOneFollows)
{
    state.noteMessage = QString();
    open(IslandView::note);
    const int whole = surface();
    ASSERT_GT(whole, 15);

    island.setView(IslandView::settings);
    EXPECT_EQ(surface(), whole) << "nothing jumps";
    queue.advance(0.1);
    EXPECT_TRUE(surface() > 0 && surface() < whole);
    queue.advance(0.06);
    EXPECT_LE(surface(), 2) << "gone, and the other is yet to come";
    queue.advance(1);
    EXPECT_EQ(surface(), whole);

    frames.setReducesMotion(true);
    island.setView(IslandView::note);
    queue.advance(0.02);
    EXPECT_EQ(surface(), whole) << "at once where motion is unwanted";
}

TEST_F(IslandLayersTest, OnlyTheCardOnTopIsHit)
{
    setTasks({task("a")});
    setApproval("ls", "a");
    open(IslandView::approval);
    const QAbstractButton *deny = button("Deny");
    const QPoint where = placeOf(deny).center();

    island.setView(IslandView::note);
    queue.advance(0.05);
    ASSERT_TRUE(deny->isVisible()) << "the old card can still be seen";
    clickAt(where);
    island.setView(IslandView::approval);
    for (double seconds = 0; seconds < 0.7; seconds += 0.05) {
        queue.advance(0.05);
        clickAt(where);
    }
    EXPECT_TRUE(answers.isEmpty()) << "it has to be seen first";
    queue.advance(1);
    clickAt(where);
    EXPECT_EQ(decisions(), QStringList{"deny"});
}

TEST_F(IslandLayersTest, ACardThatGoesKeepsItsPlaceOnAnIslandThatGrows)
{
    setTasks({task("a")});
    open(IslandView::finished);
    const auto *answer = button("Dismiss");
    const QRect place = placeOf(answer);
    island.setView(IslandView::prompt);
    queue.advance(0.1);
    ASSERT_TRUE(answer->isVisible());
    EXPECT_EQ(placeOf(answer), place);
}

TEST_F(IslandLayersTest, TheContentTakesNoClicksOnceTheIslandCloses)
{
    open(IslandView::overview);
    const QPoint where = placeOf(button("Settings")).center();
    const auto *content = root->findChild<IslandContentView *>();
    island.setMode(IslandMode::compact);
    queue.advance(0.08);
    EXPECT_TRUE(content->isVisible()) << "it fades";
    clickAt(where);
    EXPECT_EQ(state.view.value(), IslandView::overview);
    queue.advance(0.3);
    EXPECT_FALSE(content->isVisible());
}

TEST_F(IslandLayersTest, OneFormOfTheMascotShrinksAwayAndTheOtherRidesAlongWithAFile)
{
    open(IslandView::choose);
    const int whole = brightAround(60, 101);
    ASSERT_GT(whole, 300);
    state.uploadStartTime = queue.mediaTime();
    state.uploadDuration = 2.4;
    island.setView(IslandView::uploading);
    EXPECT_NEAR(brightAround(60, 101), whole, 60) << "nothing jumps";
    queue.advance(1.2);
    EXPECT_EQ(brightAround(60, 101), 0);
    const auto *canvas = root->findChild<BotPlacement *>()->findChild<QWidget *>();
    EXPECT_NEAR(canvas->geometry().center().x(), 0.75 * 526 + 36, 6);
    queue.advance(1.2);
    EXPECT_NEAR(canvas->geometry().center().x(), 562, 1);
    ASSERT_GT(brightAround(562, 118), 50);

    state.isDraggingBot = true;
    queue.advance(0.1);
    EXPECT_EQ(brightAround(562, 118), 0) << "its ghost is being dragged about";
    state.uploadDuration = 0;
    queue.advance(0.1);
    EXPECT_NEAR(canvas->geometry().center().x(), 562, 1);
    state.uploadStartTime = std::nullopt;
    queue.advance(0.1);
    EXPECT_NEAR(canvas->geometry().center().x(), 36, 1) << "not on its way yet";
}

} // namespace
