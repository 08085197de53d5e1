#include "ViewFixture.h"

#include "views/BotPlacement.h"
#include "views/IslandContentView.h"

#include <QTest>
#include <QWindow>

namespace tirlo {

namespace {

/// What lies on the island, as it comes, goes and is hit.
class IslandLayersTest : public ViewFixture
{ };

TEST_F(IslandLayersTest, TheOldCardFadesBeforeTheNewOneFollows)
{
    state.noteMessage = QString();
    open(IslandView::note);
    // The card's surface, far from its glow and text, on the black of the island.
    const auto surface = [this] { return picture().pixelColor(60, 100).lightness(); };
    const int whole = surface();
    ASSERT_GT(whole, 15);

    state.view = IslandView::settings;
    EXPECT_EQ(surface(), whole) << "nothing jumps";
    queue.advance(0.1);
    EXPECT_GT(surface(), 0);
    EXPECT_LT(surface(), whole);
    queue.advance(0.06);
    EXPECT_LE(surface(), 2) << "gone, and the other is yet to come";
    queue.advance(0.1);
    EXPECT_GT(surface(), 2);
    EXPECT_LT(surface(), whole);
    queue.advance(1);
    EXPECT_EQ(surface(), whole);

    frames.setReducesMotion(true);
    state.view = IslandView::note;
    queue.advance(0.02);
    EXPECT_EQ(surface(), whole) << "at once where motion is unwanted";
}

TEST_F(IslandLayersTest, OnlyTheCardOnTopIsHit)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"))});
    setApproval(QStringLiteral("ls"), QStringLiteral("a"));
    open(IslandView::approval);
    const QAbstractButton *deny = button(QStringLiteral("Deny"));
    const QPoint where = deny->mapTo(root.get(), deny->rect().center());

    state.view = IslandView::note;
    queue.advance(0.05);
    ASSERT_TRUE(deny->isVisible()) << "the old card can still be seen";
    QTest::mouseClick(root->windowHandle(), Qt::LeftButton, Qt::NoModifier, where);
    EXPECT_TRUE(decisions.isEmpty());

    state.view = IslandView::approval;
    queue.advance(0.05);
    QTest::mouseClick(root->windowHandle(), Qt::LeftButton, Qt::NoModifier, where);
    EXPECT_EQ(decisions, QStringList{QStringLiteral("deny")});
}

TEST_F(IslandLayersTest, ACardThatGoesKeepsItsPlaceOnAnIslandThatGrows)
{
    open(IslandView::question);
    const auto *button = this->button(QStringLiteral("Algolia"));
    const QPoint place = button->mapTo(root.get(), QPoint());
    state.view = IslandView::prompt;
    queue.advance(0.1);
    ASSERT_TRUE(button->isVisible());
    EXPECT_EQ(button->mapTo(root.get(), QPoint()), place);
}

TEST_F(IslandLayersTest, TheContentFadesWithTheIslandAndTakesNoClicksOnceItCloses)
{
    setTasks({task(QStringLiteral("a"), QStringLiteral("a"))});
    state.mode = IslandMode::compact;
    queue.advance(2);
    const auto *content = root->findChild<IslandContentView *>();
    EXPECT_FALSE(content->isVisible());
    open(IslandView::overview);
    const QAbstractButton *settings = button(QStringLiteral("Settings"));
    const QPoint where = settings->mapTo(root.get(), settings->rect().center());
    const int whole = picture().pixelColor(60, 100).lightness();

    state.mode = IslandMode::compact;
    queue.advance(0.08);
    EXPECT_TRUE(content->isVisible());
    EXPECT_LT(picture().pixelColor(60, 100).lightness(), whole);
    QTest::mouseClick(root->windowHandle(), Qt::LeftButton, Qt::NoModifier, where);
    EXPECT_EQ(state.view.value(), IslandView::overview);
    queue.advance(0.3);
    EXPECT_FALSE(content->isVisible());
}

TEST_F(IslandLayersTest, TheMascotRidesAlongWithAFileOnItsWay)
{
    const auto *canvas = root->findChild<BotPlacement *>()->findChild<QWidget *>();
    const auto middle = [&] { return canvas->geometry().center().x(); };
    open(IslandView::choose);
    state.uploadStartTime = queue.mediaTime();
    state.uploadDuration = 2.4;
    state.view = IslandView::uploading;
    queue.advance(0.02);
    EXPECT_LE(canvas->width(), 4) << "a small one grows out of nothing";
    queue.advance(1.18);
    EXPECT_NEAR(middle(), 0.75 * 526 + 36, 6);
    EXPECT_NEAR(canvas->width(), 20 / 0.6, 1.5);
    queue.advance(1.2);
    EXPECT_NEAR(middle(), 562, 1);

    state.isDraggingBot = true;
    queue.advance(0.1);
    int bright = 0;
    const QImage image = picture();
    for (int x = 0; x < 60; ++x)
        bright += image.pixelColor(40 + 532 + x, 118).lightness() > 60 ? 1 : 0;
    EXPECT_EQ(bright, 0) << "its ghost is being dragged about";

    state.isDraggingBot = false;
    state.uploadDuration = 0;
    queue.advance(0.1);
    EXPECT_NEAR(middle(), 562, 1);
    state.uploadStartTime = std::nullopt;
    queue.advance(0.1);
    EXPECT_NEAR(middle(), 36, 1) << "not on its way yet";
}

TEST_F(IslandLayersTest, OneFormOfTheMascotShrinksAwayWhereItIsWhileTheOtherGrows)
{
    open(IslandView::choose);
    // How much of a mascot there is around the point of the island.
    const auto brightAround = [this](int x, int y) {
        int bright = 0;
        const QImage image = picture().copy(40 + x - 30, y - 30, 60, 60);
        for (int i = 0; i < 60 * 60; ++i)
            bright += image.pixelColor(i % 60, i / 60).lightness() > 170 ? 1 : 0;
        return bright;
    };
    const int whole = brightAround(60, 101);
    ASSERT_GT(whole, 300);
    state.uploadStartTime = queue.mediaTime() - 2.4;
    state.view = IslandView::uploading;
    EXPECT_NEAR(brightAround(60, 101), whole, 60) << "nothing jumps";
    queue.advance(0.08);
    EXPECT_GT(brightAround(60, 101), 20);
    EXPECT_LT(brightAround(60, 101), whole);
    queue.advance(2);
    EXPECT_EQ(brightAround(60, 101), 0);

    const int rider = brightAround(562, 118);
    ASSERT_GT(rider, 50);
    state.view = IslandView::choose;
    EXPECT_NEAR(brightAround(562, 118), rider, 30);
    queue.advance(2);
    EXPECT_EQ(brightAround(562, 118), 0);
    EXPECT_NEAR(brightAround(60, 101), whole, 60);
}

} // namespace

} // namespace tirlo
