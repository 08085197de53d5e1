#include "ViewFixture.h"

#include "mascot/BotCanvasView.h"
#include "mascot/GreetingCanvasView.h"
#include "views/BotPlacement.h"

#include <QCoreApplication>

#include <cmath>

namespace tirlo {

namespace {

class GreetingTest : public ViewFixture
{
protected:
    GreetingTest()
    {
        QObject::connect(&notifications, &Notifications::greetComplete, &notifications,
                         [this] { ++completions; });
        state.mode = IslandMode::compact;
        queue.advance(2);
        frames.setRate(100);
    }

    void start()
    {
        state.view = IslandView::greeting;
        state.mode = IslandMode::expanded;
        QCoreApplication::processEvents();
    }

    /// What the island does when its state machine leaves the greeting.
    void leave()
    {
        Q_EMIT notifications.greetingInterrupt();
        state.mode = IslandMode::compact;
        state.view = IslandView::empty;
        QCoreApplication::processEvents();
    }

    const GreetingCanvasView &film() const { return *root->findChild<GreetingCanvasView *>(); }
    const BotCanvasView &mascot() const
    {
        return *root->findChild<BotPlacement *>()->findChild<BotCanvasView *>();
    }

    int completions = 0;
};

TEST_F(GreetingTest, AnotherCardEndsTheFilmAtOnceAndTheGreetingAtItsTime)
{
    start();
    queue.advance(1);
    state.view = IslandView::note;
    EXPECT_FALSE(film().isVisible());
    EXPECT_TRUE(mascot().isVisible());
    EXPECT_EQ(completions, 0);
    queue.advance(20);
    EXPECT_TRUE(sounds.played.isEmpty());
    EXPECT_EQ(completions, 1);
}

TEST_F(GreetingTest, APointerThatEntersCallsALateFoldOff)
{
    start();
    queue.advance(5.25);
    leave();
    queue.advance(0.1);
    Q_EMIT notifications.greetingHover();
    EXPECT_TRUE(std::isinf(film().tc()));
    queue.advance(20);
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(film().isVisible()) << "a closed island has no stage";
    EXPECT_TRUE(mascot().isVisible());
}

TEST_F(GreetingTest, WithReducedMotionOnePictureStandsForTheFilm)
{
    frames.setReducesMotion(true);
    start();
    const GreetPose still = film().presentPose();
    EXPECT_EQ(still.w, 640);
    EXPECT_EQ(still.badge, 1);
    queue.advance(1);
    EXPECT_EQ(film().presentPose(), still);
    queue.advance(4);
    EXPECT_EQ(completions, 1);
    leave();
    queue.advance(0.1);
    EXPECT_FALSE(film().isVisible());
    EXPECT_TRUE(mascot().isVisible());
}

} // namespace

} // namespace tirlo
