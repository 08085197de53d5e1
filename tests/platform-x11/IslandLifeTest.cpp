#include "OtherApplication.h"

#include "core/AppState.h"
#include "core/Notifications.h"
#include "e2e/kit/Desktop.h"
#include "island/IslandWindowController.h"
#include "platform/linux/QtPointer.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/XcbInputMonitor.h"
#include "platform/linux/XcbWindowList.h"
#include "platform/linux/XcbWindowShape.h"
#include "support/FakeApplications.h"
#include "support/ManualFrameDriver.h"
#include "support/ManualQueue.h"
#include "support/MemoryStore.h"
#include "support/RecordingSoundEngine.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace tirlo;
using namespace tirlo::e2e;
using tirlo::x11test::OtherApplication;

namespace {

/// The island's real panel under the real pointer and keys, in a time that the test moves.
class IslandLifeTest : public testing::Test
{
protected:
    void SetUp() override
    {
        movePointer(screenMiddle(), 700);
        controller.showWindow();
        ASSERT_TRUE(other.isActive());
    }

    /// Lets time pass by sixtieths, so that each poll sees where the pointer is.
    void pass(double seconds)
    {
        waitUntil([] { return false; }, 30);
        for (double left = seconds; left > 1e-9; left -= 1.0 / 60)
            queue.advance(std::min(left, 1.0 / 60));
        waitUntil([] { return false; }, 30);
    }

    /// Lets a little time pass until the island is in the mode.
    bool comesTo(IslandMode mode)
    {
        return waitUntil([&] {
            queue.advance(1.0 / 60);
            return state.mode == mode;
        });
    }

    OtherApplication other{"Below", QRect(300, 60, 700, 400)};
    ManualQueue queue;
    MemoryStore store;
    AppState state{store, queue};
    Notifications notifications;
    RecordingSoundEngine sounds;
    QtScreens screens;
    XcbWindowShape shape;
    QtPointer pointer;
    XcbInputMonitor input;
    XcbWindowList windows;
    FakeApplications applications;
    ManualFrameDriver driver{queue};
    IslandWindowController controller{
        {screens, shape, pointer, input, windows, applications, driver},
        state,
        notifications,
        sounds,
        queue};
};

TEST_F(IslandLifeTest, PeeksAtTheTopEdgeOpensOnAClickAndFallsBackStepByStepOnEveryDesktop)
{
    QProcess::execute("xdotool", {"set_num_desktops", "2"});
    QProcess::execute("xdotool", {"set_desktop", "1"});
    movePointer(screenMiddle(), 0);
    pass(0.2);
    EXPECT_EQ(controller.fsm().state(), IslandStateMachine::State::petit);
    clickAt(screenMiddle(), 10);
    ASSERT_TRUE(comesTo(IslandMode::expanded));

    pass(20);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded) << "it stays open under the pointer";
    movePointer(screenMiddle(), 700);
    pass(14.5);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
    pass(1);
    EXPECT_EQ(state.mode.value(), IslandMode::compact) << "15 s after the pointer has left";
    pass(61);
    EXPECT_EQ(state.mode.value(), IslandMode::hidden) << "a minute later it is out of the way";
    movePointer(screenMiddle(), 0);
    EXPECT_TRUE(comesTo(IslandMode::compact));
    QProcess::execute("xdotool", {"set_desktop", "0"});
}

} // namespace
