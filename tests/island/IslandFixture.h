#pragma once

#include "core/AppState.h"
#include "core/Notifications.h"
#include "island/IslandWindowController.h"
#include "support/FakeApplications.h"
#include "support/FakeInputMonitor.h"
#include "support/FakePointer.h"
#include "support/FakeScreens.h"
#include "support/FakeWindowList.h"
#include "support/FakeWindowShape.h"
#include "support/ManualFrameDriver.h"
#include "support/ManualQueue.h"
#include "support/MemoryStore.h"
#include "support/RecordingSoundEngine.h"

#include <QTest>

#include <gtest/gtest.h>

namespace tirlo {

/// The island's controller over a desktop that the test plays: its panel reaches from x 360 to 1080
/// on a plain screen, with a closed island of 240 by 24 and an open one of 640 by 160.
class IslandFixture : public testing::Test
{
protected:
    /// Puts a permission request on show.
    void wait()
    {
        state.pendingApproval = ApprovalInfo{.sessionId = {},
                                             .tool = {},
                                             .command = QStringLiteral("ls"),
                                             .inputKey = {},
                                             .pillId = {}};
    }

    void show()
    {
        controller.showWindow();
        QCoreApplication::processEvents();
    }

    /// Moves the pointer to a place on the desktop and lets two polls see it.
    void point(QPointF place)
    {
        pointer.at = place;
        queue.advance(2.0 / 60);
    }

    static constexpr QPointF away{200, 700};
    static constexpr QPointF onTheTab{720, 12};

    ManualQueue queue;
    MemoryStore store;
    AppState state{store, queue};
    Notifications notifications;
    RecordingSoundEngine sounds;
    FakeScreens screens;
    FakeWindowShape shape;
    FakePointer pointer;
    FakeInputMonitor input;
    FakeWindowList windows;
    FakeApplications applications;
    ManualFrameDriver driver{queue};
    IslandWindowController controller{
        {screens, shape, pointer, input, windows, applications, driver},
        state,
        notifications,
        sounds,
        queue};
};

} // namespace tirlo
