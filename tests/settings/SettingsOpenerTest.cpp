#include "settings/SettingsOpener.h"
#include "settings/SettingsPlacement.h"

#include "hooks/installers/HookInstallers.h"
#include "platform/Screens.h"
#include "support/ManualQueue.h"

#include <QApplication>
#include <QPointer>
#include <QTemporaryDir>

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
    const QSizeF window(480, 720);
    const double minimum = 320;
    struct Row
    {
        ScreenInfo screen;
        QRectF place;
    };
    const std::vector<Row> rows{
        // Room for all of it: right below the panel, in the middle.
        {screenOf({0, 0, 1920, 1200}, 24), {720, 332, 480, 720}},
        // A second screen has an origin of its own.
        {screenOf({1920, 100, 1920, 1200}, 0), {2640, 432, 480, 720}},
        // Too little room: it shrinks, and its lower edge keeps the margin.
        {screenOf({0, 0, 1440, 900}, 24, 60), {480, 332, 480, 496}},
        // Less room than it needs at the least: it reaches up over the island.
        {screenOf({0, 0, 1024, 600}, 0), {272, 268, 480, 320}},
    };
    for (const Row &row : rows)
        EXPECT_EQ(placeBelowIsland(row.screen, window, minimum), row.place);
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
    EXPECT_EQ(first->windowTitle(), QStringLiteral("Settings — Tirlo"));
    EXPECT_EQ(QRect(first->pos(), first->size()), QRect(720, 332, 480, 720));
    EXPECT_EQ(first->minimumSize(), QSize(420, 320));

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
