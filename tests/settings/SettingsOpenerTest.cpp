#include "settings/SettingsOpener.h"
#include "settings/SettingsPlacement.h"

#include "hooks/installers/HookInstallers.h"
#include "platform/Screens.h"
#include "support/ManualQueue.h"

#include <QApplication>
#include <QPointer>
#include <QTemporaryDir>
#include <QWindow>

#include <gtest/gtest.h>

namespace tirlo {

namespace {

ScreenInfo screenOf(const QRectF &frame, double barHeight, double dockHeight = 0)
{
    ScreenInfo screen;
    screen.frame = frame;
    screen.visibleFrame = frame.adjusted(0, barHeight, 0, -dockHeight);
    return screen;
}

TEST(SettingsPlacementTest, StandsBelowTheIslandAndShrinksToFit)
{
    const auto place = [](const ScreenInfo &screen) {
        return placeBelowIsland(screen, QSizeF(480, 720), QSizeF(420, 320));
    };
    // Room for all of it: right below the panel, in the middle.
    EXPECT_EQ(place(screenOf({0, 0, 1920, 1200}, 24)), QRectF(720, 332, 480, 720));
    // A second screen has an origin of its own.
    EXPECT_EQ(place(screenOf({1920, 100, 1920, 1200}, 0)), QRectF(2640, 432, 480, 720));
    // Too little room: it shrinks, and its lower edge keeps the margin.
    EXPECT_EQ(place(screenOf({0, 0, 1440, 900}, 24, 60)), QRectF(480, 332, 480, 496));
    // Less room than it needs at the least: it reaches up over the island.
    EXPECT_EQ(place(screenOf({0, 0, 1024, 600}, 0)), QRectF(272, 268, 480, 320));
    EXPECT_EQ(place(screenOf({0, 0, 480, 800}, 0)), QRectF(12, 332, 456, 456));
    EXPECT_EQ(place(screenOf({1280, 0, 320, 480}, 0)), QRectF(1292, 148, 420, 320));
}

QList<SettingsWindow *> windows()
{
    QList<SettingsWindow *> found;
    for (QWidget *each : QApplication::topLevelWidgets()) {
        if (auto *window = qobject_cast<SettingsWindow *>(each))
            found.append(window);
    }
    return found;
}

TEST(SettingsOpenerTest, AWindowIsReusedUnlessItWasClosed)
{
    const auto screen = screenOf({0, 0, 1920, 1200}, 24);
    const QTemporaryDir home;
    const Paths paths(home.path());
    const ManualQueue queue;
    HookInstallers hooks(paths, queue);
    SettingsOpener opener(hooks, paths);
    opener.open(screen);
    ASSERT_EQ(windows().size(), 1);
    const QPointer<SettingsWindow> first = windows().first();
    const QMargins frame = first->nativeWindow()->frameMargins();
    EXPECT_EQ(first->geometry(), QRect(720, 332 + frame.top(), 480, 720));

    first->showMinimized();
    opener.open(screen);
    EXPECT_EQ(windows(), QList<SettingsWindow *>{first})
        << "what was under review in it is not lost";
    EXPECT_FALSE(first->isMinimized());
    first->close();
    opener.open(std::nullopt);
    EXPECT_FALSE(first) << "a closed window is not brought back";
    ASSERT_EQ(windows().size(), 1);
    EXPECT_TRUE(windows().first()->isVisible());
}

} // namespace

} // namespace tirlo
