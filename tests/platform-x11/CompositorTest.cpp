#include "e2e/kit/Desktop.h"
#include "platform/linux/XcbCompositor.h"
#include "platform/linux/XcbWindowShape.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

using namespace tirlo;
using namespace tirlo::e2e;

namespace {

QColor colorAt(int x, int y)
{
    const QImage pixel = QGuiApplication::primaryScreen()->grabWindow(0, x, y, 1, 1).toImage();
    return pixel.pixelColor(0, 0);
}

TEST(WindowShapeTest, AWindowIsCutToItsShapeOnlyWhileNobodyBlends)
{
    XcbWindowShape shape;
    QWidget panel(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    panel.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
    panel.setStyleSheet("background: #00ff00");
    panel.setGeometry(500, 0, 200, 100);
    const QColor green("#00ff00");
    const auto corner = [] { return colorAt(690, 90); };
    const auto middle = [] { return colorAt(600, 20); };

    const QColor wallpaper = corner();
    panel.show();
    ASSERT_TRUE(waitUntil([&] { return corner() == green && middle() == green; }));
    shape.setInputRegion(*panel.windowHandle(), QRegion(50, 0, 100, 40));
    EXPECT_TRUE(waitUntil([&] { return corner() == wallpaper && middle() == green; }));
    EXPECT_FALSE(XcbCompositor().isRunning());
    {
        QProcess compositor;
        compositor.start("picom", {"--backend", "xrender", "--config", "/dev/null"});
        EXPECT_TRUE(waitUntil([&] { return corner() == green; })) << "its edges stay jagged";
        EXPECT_TRUE(XcbCompositor().isRunning()) << "one that was there before";
        compositor.terminate();
        compositor.waitForFinished();
    }
    EXPECT_TRUE(waitUntil([&] { return corner() == wallpaper && middle() == green; }));
}

} // namespace
