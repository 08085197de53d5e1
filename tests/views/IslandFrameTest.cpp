#include "ViewFixture.h"

#include "mascot/GreetingCanvasView.h"
#include "views/frame/BotPlacement.h"

namespace tirlo {

namespace {

/// The mascot's face in the picture: bright pixels, as a rectangle.
QRect brightPart(const QImage &image)
{
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).lightness() > 170)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

class IslandFrameTest : public ViewFixture
{
protected:
    [[nodiscard]] QWidget *mascot() const
    {
        return root->findChild<BotPlacement *>()->findChild<QWidget *>();
    }
};

TEST_F(IslandFrameTest, AClosedIslandHoldsTheMascotAlone)
{
    island.setMode(IslandMode::compact);
    play(2);
    const QImage image = picture();
    for (int x = 60; x < 344; ++x)
        EXPECT_EQ(image.pixelColor(188 + x, 12), QColor(Qt::black)) << x;
    EXPECT_NEAR(brightPart(image).center().x(), 188 + 40, 2);
    EXPECT_TRUE(visibleButtons().isEmpty());
    for (const QPoint &outside : {QPoint(-1, 5), QPoint(344, 5), QPoint(1, 31), QPoint(172, 32)})
        EXPECT_EQ(image.pixelColor(QPoint(188, 0) + outside).alpha(), 0) << outside.x();
}

TEST_F(IslandFrameTest, TheGreetingFoldsIntoTheCompactIslandWithoutAJump)
{
    setTasks({task("a")});
    island.setMode(IslandMode::hidden);
    queue.advance(2);
    island.setView(IslandView::greeting);
    island.setMode(IslandMode::expanded);
    EXPECT_FALSE(mascot()->isVisible()) << "what the notch hid doesn't come for the film";
    queue.advance(3.4);
    QRect before = brightPart(picture());
    EXPECT_NEAR(before.center().x(), 360, 2);

    Q_EMIT notifications.greetingInterrupt();
    island.setMode(IslandMode::compact);
    island.setView(IslandView::overview);
    EXPECT_NEAR(brightPart(picture()).center().x(), before.center().x(), 2);
    for (double passed = 0; passed < 0.75; passed += 0.02) {
        queue.advance(0.02);
        SCOPED_TRACE(passed);
        const QRect now = brightPart(picture());
        EXPECT_FALSE(now.isEmpty()) << "there is always a mascot";
        EXPECT_LT((now.center() - before.center()).manhattanLength(), 60) << "and it never leaps";
        EXPECT_LE(now.bottom(), container().shape().height) << "nor is it cut";
        before = now;
    }
    EXPECT_EQ(container().shape().width, 344);
    EXPECT_NEAR(before.center().x(), 188 + 40, 2);
}

TEST_F(IslandFrameTest, ARequestDuringTheGreetingTakesTheMascotFromWhereItStands)
{
    setTasks({task("a")});
    open(IslandView::greeting);
    queue.advance(1.4);
    const QRect before = brightPart(picture());
    island.setView(IslandView::note);
    const auto *film = root->findChild<GreetingCanvasView *>();
    EXPECT_TRUE(film->isVisible()) << "it fades while the mascot appears over its own";
    ASSERT_TRUE(mascot()->isVisible());
    EXPECT_NEAR(placeOf(mascot()).center().x(), before.center().x(), 3);
    for (double passed = 0; passed < 0.3; passed += 0.05) {
        EXPECT_FALSE(brightPart(picture()).isEmpty()) << passed << ": there is always a mascot";
        queue.advance(0.05);
    }
    EXPECT_FALSE(film->isVisible());
}

TEST_F(IslandFrameTest, AGreetingThatIsCalledBackFromItsFoldStartsAnew)
{
    open(IslandView::greeting);
    Q_EMIT notifications.greetingInterrupt();
    island.setMode(IslandMode::compact);
    queue.advance(0.1);
    sounds.played.clear();
    island.setMode(IslandMode::expanded);
    queue.advance(5);
    EXPECT_EQ(container().shape().width, 640);
    EXPECT_EQ(sounds.played.size(), 2);
}

TEST_F(IslandFrameTest, AHiddenIslandDrawsNoFramesWhateverItsTasksDo)
{
    for (const bool hasNotch : {true, false}) {
        state.hasNotch = hasNotch;
        setTasks({task("a", "a", {"Liste"})});
        open(IslandView::overview);
        island.setMode(IslandMode::hidden);
        play(1);
        state.editTask("a", [](AgentTask &t) { t.state = BotState::working; });
        state.tasks = state.tasks.value() + QList{task("b")};
        play(1);
        EXPECT_FALSE(driver.isRunning) << hasNotch;
    }
}

} // namespace

} // namespace tirlo
