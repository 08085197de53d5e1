#include "mascot/GreetingCanvasView.h"
#include "support/ManualFrameDriver.h"
#include "support/StoreParts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace tirlo;

namespace {

constexpr IslandRestingLayout notched{.width = 344, .height = 32, .cornerRadius = 14};

class GreetingCanvasTest : public testing::Test, protected StoreParts
{
protected:
    GreetingCanvasTest()
    {
        QObject::connect(&notifications, &Notifications::greetComplete, &notifications,
                         [this] { completions.push_back(queue.mediaTime() - start); });
        QObject::connect(&view, &GreetingCanvasView::foldEnded, &view, [this] { ++foldsEnded; });
        view.setResting(notched);
        // Not at the clock's zero, so that a time taken from the wrong start would show.
        queue.advance(start);
        view.show();
    }

    ManualFrameDriver driver{queue};
    FrameClock frames{queue, driver};
    GreetingCanvasView view{state, notifications, sounds, queue, frames};

    const double start = 50;
    std::vector<double> completions;
    int foldsEnded = 0;
};

TEST_F(GreetingCanvasTest, PlaysItsSoundsAndCompletesOnceThenStandsStill)
{
    queue.advance(1.35);
    EXPECT_TRUE(sounds.played.isEmpty());
    queue.advance(0.02);
    EXPECT_EQ(sounds.played, QStringList{QStringLiteral("greet")});
    queue.advance(20);
    EXPECT_EQ(sounds.played.last(), QStringLiteral("blip"));
    ASSERT_EQ(completions.size(), 1);
    EXPECT_NEAR(completions[0], 4.65, 1e-6) << "not by the safety net, which is ready earlier";
    EXPECT_FALSE(driver.isRunning);

    view.hide();
    view.show();
    queue.advance(5);
    EXPECT_EQ(completions.size(), 2) << "each showing is a film of its own";
}

TEST_F(GreetingCanvasTest, AnInterruptFreezesThePoseAndFoldsItInSilence)
{
    queue.advance(2);
    const GreetPose before = view.presentPose();
    Q_EMIT notifications.greetingInterrupt();
    EXPECT_EQ(view.presentPose(), before) << "nothing jumps";

    queue.advance(0.3);
    EXPECT_EQ(foldsEnded, 0);
    Q_EMIT notifications.greetingInterrupt();
    EXPECT_NEAR(view.tc(), 2, 1e-9) << "a second call changes nothing";
    queue.advance(0.06);
    EXPECT_EQ(foldsEnded, 1);
    EXPECT_NEAR(view.presentPose().w, notched.width, 1e-9);

    queue.advance(20);
    EXPECT_EQ(sounds.played, QStringList{QStringLiteral("greet")});
    EXPECT_TRUE(completions.empty());
    EXPECT_EQ(foldsEnded, 1);
    EXPECT_FALSE(driver.isRunning);
}

TEST_F(GreetingCanvasTest, ThePointerCallsOffALateFoldOnly)
{
    queue.advance(4.8);
    Q_EMIT notifications.greetingInterrupt();
    Q_EMIT notifications.greetingHover();
    EXPECT_TRUE(std::isfinite(view.tc()));

    view.hide();
    view.show();
    queue.advance(5);
    Q_EMIT notifications.greetingInterrupt();
    Q_EMIT notifications.greetingHover();
    EXPECT_FALSE(view.isFolding());
    EXPECT_EQ(foldsEnded, 1) << "who waits for the fold is told";
    EXPECT_EQ(view.presentPose(), greetPose(5, notched));
}

TEST_F(GreetingCanvasTest, AViewThatIsHiddenOnlyEndsAtItsTime)
{
    view.hide();
    Q_EMIT notifications.greetingInterrupt();
    queue.advance(10);
    EXPECT_EQ(completions.size(), 1U);
    EXPECT_EQ(foldsEnded, 0);
}

TEST_F(GreetingCanvasTest, WithReducedMotionThereIsOnePictureAndNoFold)
{
    frames.setReducesMotion(true);
    queue.advance(0.1);
    const GreetPose still = view.presentPose();
    queue.advance(3);
    EXPECT_EQ(view.presentPose(), still);
    EXPECT_NEAR(still.d, 58, 1e-9);
    Q_EMIT notifications.greetingInterrupt();
    EXPECT_NEAR(view.presentPose().w, notched.width, 1e-9);
    queue.advance(0.04);
    EXPECT_EQ(foldsEnded, 1);
}

} // namespace
