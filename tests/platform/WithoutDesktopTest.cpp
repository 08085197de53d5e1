#include "platform/linux/DesktopApplications.h"
#include "platform/linux/QtPointer.h"
#include "platform/linux/TrayStatusItem.h"
#include "platform/linux/XcbCompositor.h"
#include "platform/linux/XcbInputMonitor.h"
#include "platform/linux/XcbWindowList.h"
#include "platform/linux/XcbWindowShape.h"

#include <QIcon>
#include <QPixmap>
#include <QWindow>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

TEST(WithoutDesktopTest, EveryServiceStaysSilentWithoutAnXServer)
{
    const XcbInputMonitor input;
    const XcbWindowList windows;
    const XcbCompositor compositor;
    EXPECT_TRUE(compositor.isRunning()) << "the panel keeps its see-through corners";

    DesktopApplications applications;
    EXPECT_TRUE(applications.running().empty());
    EXPECT_FALSE(applications.activate({1, "com.microsoft.VSCode", "Code"}));
    EXPECT_FALSE(applications.open("com.example.unknown"));

    QWindow window;
    XcbWindowShape shape;
    shape.setInputRegion(window, QRegion(0, 0, 5, 5));

    TrayStatusItem item;
    item.show(QIcon(QPixmap(24, 18)), "Tirlo",
              {{"Open", "", [] {}}, {}, {"Quit", "Ctrl+Q", [] {}}});
    EXPECT_TRUE(QRectF(-1e5, -1e5, 2e5, 2e5).contains(QtPointer().position()));
}

} // namespace
