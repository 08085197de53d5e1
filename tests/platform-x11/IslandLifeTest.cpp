#include "OtherApplication.h"

#include "e2e/kit/Desktop.h"
#include "island/Island.h"
#include "island/IslandWindowController.h"
#include "platform/linux/QtPointer.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/XcbInputMonitor.h"
#include "platform/linux/XcbWindowList.h"
#include "platform/linux/XcbWindowShape.h"
#include "support/FakeApplications.h"
#include "support/ManualFrameDriver.h"
#include "support/StoreParts.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace tirlo;
using namespace tirlo::e2e;
using tirlo::x11test::OtherApplication;

namespace {

/// The island's real panel under the real pointer and keys, in a time that the test moves.
class IslandLifeTest : public testing::Test, protected StoreParts
{
protected:
    void SetUp() override
    {
        movePointer(screenMiddle(), 700);
        controller.showWindow();
        ASSERT_TRUE(other.isActive());
    }

    /// Lets time pass by sixtieths, each with its look at the pointer, until the island is in the mode.
    bool comesTo(IslandMode mode, double seconds = 1)
    {
        waitUntil([] { return false; }, 30);
        for (double left = seconds; left > 0 && state.mode != mode; left -= 1.0 / 60)
            queue.advance(1.0 / 60);
        waitUntil([] { return false; }, 30);
        return state.mode == mode;
    }

    /// What the window manager is told of the panel's kind.
    [[nodiscard]] QByteArray hints()
    {
        QProcess xprop;
        xprop.start("xprop",
                    {"-id", QString::number(controller.panel().winId()), "_NET_WM_WINDOW_TYPE",
                     "_NET_WM_STATE", "_NET_WM_DESKTOP", "_MOTIF_WM_HINTS", "WM_NORMAL_HINTS"});
        xprop.waitForFinished();
        return xprop.readAll();
    }

    OtherApplication other{"Below", QRect(300, 60, 700, 400)};
    Island island{state, notifications, sounds, queue};
    QtScreens screens;
    XcbWindowShape shape;
    QtPointer pointer;
    XcbInputMonitor input;
    XcbWindowList windows;
    FakeApplications applications;
    ManualFrameDriver driver{queue};
    IslandWindowController controller{
        {screens, shape, pointer, input, windows, applications, driver},
        island,
        state,
        notifications,
        sounds,
        queue};
};

TEST_F(IslandLifeTest, PeeksOpensAndFallsBackOnEveryDesktopAndStaysADockWithTheKeyboard)
{
    QProcess::execute("xdotool", {"set_num_desktops", "2"});
    QProcess::execute("xdotool", {"set_desktop", "1"});
    movePointer(screenMiddle(), 0);
    ASSERT_TRUE(comesTo(IslandMode::compact));
    clickAt(screenMiddle(), 10);
    ASSERT_TRUE(comesTo(IslandMode::expanded));
    ASSERT_TRUE(waitUntil([this] { return hints().contains("_STATE_ABOVE"); }));
    const QByteArray before = hints();
    EXPECT_TRUE(before.contains("_WINDOW_TYPE_DOCK")) << before.toStdString();

    island.show(IslandView::prompt);
    EXPECT_TRUE(waitUntil([this] { return controller.panel().isActiveWindow(); }));
    EXPECT_EQ(hints(), before);
    island.show(IslandView::overview);
    QProcess::execute("xdotool", {"set_desktop", "0"});
    clickAt(screenMiddle(), 440);
    EXPECT_TRUE(waitUntil([this] { return other.isActive(); }));
    EXPECT_EQ(hints(), before);

    EXPECT_FALSE(comesTo(IslandMode::compact, 14.5));
    EXPECT_TRUE(comesTo(IslandMode::compact)) << "15 s after the pointer has left";
    EXPECT_TRUE(comesTo(IslandMode::hidden, 61)) << "a minute later it is out of the way";
}

} // namespace
