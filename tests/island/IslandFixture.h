#pragma once

#include "island/Island.h"
#include "island/IslandWindowController.h"
#include "support/FakeApplications.h"
#include "support/FakeHotkey.h"
#include "support/FakeInputMonitor.h"
#include "support/FakePanelWindow.h"
#include "support/FakePointer.h"
#include "support/FakeScreens.h"
#include "support/FakeSessionLock.h"
#include "support/FakeWindowList.h"
#include "support/FakeWindowShape.h"
#include "support/ManualFrameDriver.h"
#include "support/StoreParts.h"

#include <QTest>

#include <gtest/gtest.h>

namespace tirlo {

/// The island on a desktop that the test plays: its panel reaches from x 360 to 1080 on a plain
/// screen, with a closed island of 240 by 24 and an open one of 640 by 160.
class IslandFixture : public testing::Test, protected StoreParts
{
protected:
    /// Puts a permission request on show, as the hooks do.
    void ask()
    {
        state.pendingApproval = ApprovalInfo{};
        state.isPinned = true;
        Q_EMIT notifications.hookExpand(IslandView::approval);
    }

    [[nodiscard]] bool isOpenOn(IslandView card) const
    {
        return state.mode == IslandMode::expanded && state.view == card;
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

    Island island{state, notifications, sounds, queue};
    FakeScreens screens;
    FakeWindowShape shape;
    FakePanelWindow panelWindow;
    FakeSessionLock lock;
    FakePointer pointer;
    FakeInputMonitor input;
    FakeHotkey hotkey;
    FakeWindowList windows;
    FakeApplications applications;
    ManualFrameDriver driver{queue};
    IslandWindowController controller{
        {screens, shape, panelWindow, lock, pointer, input, hotkey, windows, applications, driver},
        island,
        state,
        notifications,
        sounds,
        queue};
};

} // namespace tirlo
