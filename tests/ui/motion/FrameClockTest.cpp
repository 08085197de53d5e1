#include "ui/motion/FrameClock.h"

#include "support/ManualFrameDriver.h"
#include "support/ManualQueue.h"
#include "ui/motion/TimerFrameDriver.h"

#include <QElapsedTimer>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <vector>

namespace tirlo {
namespace {

class FrameClockTest : public testing::Test
{
protected:
    // Half a frame on, so that the rounding of a frame's time can't move it past the edge.
    void passFrames(int count) { queue.advance((count - 0.5) / driver.rate); }

    ManualQueue queue;
    ManualFrameDriver driver{queue};
    std::optional<FrameClock> clock{std::in_place, queue, driver};
};

TEST_F(FrameClockTest, RunsFromTheFirstSubscriberToTheLastAtTheRateOfTheScreen)
{
    int first = 0;
    int second = 0;
    queue.advance(5);
    EXPECT_EQ(driver.starts, 0);
    auto a = clock->subscribe([&](double time) {
        EXPECT_EQ(time, queue.mediaTime());
        ++first;
    });
    EXPECT_EQ(driver.rate, 60);
    passFrames(3);
    auto b = clock->subscribe([&](double) { ++second; });
    queue.advance(2 / 60.0);
    EXPECT_EQ(first, 4);
    EXPECT_EQ(second, 2);
    a.reset();
    clock->setRate(144);
    EXPECT_EQ(driver.rate, 144);
    passFrames(10);
    EXPECT_EQ(second, 11);
    b = {};
    EXPECT_FALSE(driver.isRunning);
    queue.advance(5);
    EXPECT_EQ(first + second, 15);
    for (const double odd : {0.0, -1.0, std::nan(""), HUGE_VAL}) {
        clock->setRate(144);
        clock->setRate(odd);
        const auto c = clock->subscribe([](double) {});
        EXPECT_EQ(driver.rate, 60) << odd;
    }
}

TEST_F(FrameClockTest, CallbacksMayChangeWhoIsSubscribed)
{
    FrameClock::Subscription own;
    FrameClock::Subscription next;
    std::function<void(double)> change;
    // Expects of three frames those that the changer and the one after it get.
    const auto expectFrames = [&](const char *what, int changer, int later, bool runs, auto act) {
        SCOPED_TRACE(what);
        int changerFrames = 0;
        int laterFrames = 0;
        change = [&, witness = std::make_shared<int>(1)](double) {
            act();
            changerFrames += *witness;
        };
        own = clock->subscribe(change);
        next = clock->subscribe([&](double) { ++laterFrames; });
        const int starts = driver.starts;
        passFrames(4);
        EXPECT_EQ(changerFrames, changer);
        EXPECT_EQ(laterFrames, later);
        EXPECT_EQ(driver.isRunning, runs);
        EXPECT_EQ(driver.starts, starts) << "and never starts anew";
        own = {};
        next = {};
    };
    expectFrames("drops itself", 1, 3, true, [&] { own.reset(); });
    expectFrames("drops the other, still to come", 3, 0, true, [&] { next = {}; });
    expectFrames("drops both", 1, 0, false, [&] {
        own.reset();
        next.reset();
    });
    expectFrames("takes a new one for its own", 3, 3, true,
                 [&] { own = clock->subscribe(change); });
    expectFrames("ends the clock", 1, 0, false, [&] { clock.reset(); });
}

TEST_F(FrameClockTest, CallbackMayAddSubscribersThatBeginWithTheNextFrame)
{
    std::vector<FrameClock::Subscription> added;
    int addedFrames = 0;
    const auto subscription = clock->subscribe([&, text = std::string("stays in place")](double) {
        for (int count = 0; count < 20; ++count)
            added.push_back(clock->subscribe([&](double) { ++addedFrames; }));
        EXPECT_EQ(text, "stays in place");
    });
    passFrames(2);
    EXPECT_EQ(addedFrames, 0);
    queue.advance(1 / 60.0);
    EXPECT_EQ(addedFrames, 20);
}

TEST_F(FrameClockTest, CallbackMayRunFramesOfItsOwn)
{
    int outer = 0;
    int inner = 0;
    const auto modal = clock->subscribe([&](double) {
        if (++outer == 1)
            queue.advance(2.5 / 60);
    });
    FrameClock::Subscription quitter;
    quitter = clock->subscribe([&](double) {
        ++inner;
        quitter.reset();
    });
    passFrames(2);
    EXPECT_EQ(outer, 3);
    EXPECT_EQ(inner, 1);
}

TEST_F(FrameClockTest, DroppedCallbackMayOwnOtherSubscriptions)
{
    auto owned = std::make_shared<FrameClock::Subscription>(clock->subscribe([](double) {}));
    auto owner = clock->subscribe([owned](double) {});
    owned.reset();
    owner.reset();
    EXPECT_FALSE(driver.isRunning);

    // An orphan whose callback holds its own handle dies with the clock, which others may outlive.
    auto self = std::make_shared<FrameClock::Subscription>();
    *self = clock->subscribe([self](double) {});
    self.reset();
    auto survivor = clock->subscribe([](double) {});
    clock.reset();
    EXPECT_FALSE(driver.isRunning);
    EXPECT_FALSE(survivor.isActive());
    survivor.reset();
}

TEST(TimerFrameDriverTest, DrawsAtTheRateOnlyWhileRunning)
{
    TimerFrameDriver driver;
    int frames = 0;
    driver.onFrame = [&] { ++frames; };
    QTest::qWait(30);
    EXPECT_EQ(frames, 0);

    driver.start(250);
    QElapsedTimer watch;
    watch.start();
    QTest::qWait(200);
    // A busy machine may miss frames, but never gets more than the grid has.
    EXPECT_GE(frames, 5);
    EXPECT_LE(frames, int(double(watch.nsecsElapsed()) * 1e-9 * 250) + 1);

    driver.stop();
    frames = 0;
    QTest::qWait(50);
    EXPECT_EQ(frames, 0);
}

} // namespace
} // namespace tirlo
