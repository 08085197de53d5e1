#include "platform/linux/DesktopApplications.h"
#include "platform/linux/DesktopLook.h"
#include "platform/linux/QtPointer.h"
#include "platform/linux/TrayStatusItem.h"
#include "platform/linux/XcbCompositor.h"
#include "platform/linux/XcbHotkey.h"
#include "platform/linux/XcbInputMonitor.h"
#include "platform/linux/XcbLocker.h"
#include "platform/linux/XcbPanels.h"
#include "platform/linux/XcbWindowList.h"
#include "platform/linux/XcbWindowShape.h"
#include "support/ManualQueue.h"

#include "support/ManualQueue.h"

#include <QIcon>
#include <QPixmap>
#include <QWindow>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

TEST(WithoutDesktopTest, EveryServiceStaysSilentWithoutAnXServer)
{
    const XcbInputMonitor input;
    ManualQueue queue;
    const XcbStack stack(queue);
    const XcbWindowList windows(stack);
    EXPECT_FALSE(windows.isFullScreen(QRectF(0, 0, 800, 800)));
    EXPECT_EQ(XcbPanels(stack).depthAt(QRect(0, 0, 800, 800), true), 0);
    const XcbLocker locker(stack, queue);
    queue.advance(1);
    EXPECT_FALSE(locker.isLocked());
    XcbHotkey hotkey(queue);
    hotkey.hold(KeyPress{45, 0});
    EXPECT_FALSE(hotkey.isTaken());
    const XcbCompositor compositor;
    EXPECT_TRUE(compositor.isRunning()) << "the panel keeps its see-through corners";

    DesktopApplications applications;
    EXPECT_TRUE(applications.running().empty());
    EXPECT_FALSE(applications.activate({1, "com.microsoft.VSCode", "Code"}));
    EXPECT_FALSE(applications.open("com.example.unknown"));

    QWindow window;
    XcbWindowShape shape;
    shape.setInputRegion(window, QRegion(0, 0, 5, 5));

    TrayStatusItem item(queue);
    item.setPicture(QIcon(QPixmap(24, 18)));
    item.show("Tirlo", [] {}, {{"Open", "", [] {}}, {}, {"Quit", "Ctrl+Q", [] {}}});
    EXPECT_FALSE(DesktopLook().reducesMotion());
    EXPECT_TRUE(QRectF(-1e5, -1e5, 2e5, 2e5).contains(QtPointer().position()));
}

} // namespace
