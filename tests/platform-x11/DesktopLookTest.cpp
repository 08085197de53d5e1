#include "platform/linux/DesktopLook.h"
#include "Portal.h"

#include "e2e/kit/Desktop.h"
#include "e2e/kit/TrayHost.h"
#include "platform/linux/QtMainQueue.h"
#include "platform/linux/TrayStatusItem.h"

#include <QApplication>
#include <QIcon>
#include <QPixmap>

#include <gtest/gtest.h>

using namespace tirlo;
using namespace tirlo::e2e;
using tirlo::x11test::Portal;

namespace {

const QString gnome = "org.gnome.desktop.interface";
const QString appearance = "org.freedesktop.appearance";

TEST(DesktopLookTest, FollowsAPortalThatComesLaterAndTellsOnlyOfChanges)
{
    DesktopLook look;
    int changes = 0;
    QObject::connect(&look, &DesktopLook::changed, [&] { ++changes; });
    const auto becomes = [&](bool reducesMotion, bool hasDarkBar) {
        return waitUntil([&] {
            return look.reducesMotion() == reducesMotion && look.hasDarkBar() == hasDarkBar;
        });
    };
    ASSERT_TRUE(becomes(false, true)) << "nobody says anything";

    Portal portal({{gnome, {{"enable-animations", false}}}, {appearance, {{"color-scheme", 1U}}}});
    EXPECT_TRUE(becomes(true, true));
    portal.tell(gnome, "enable-animations", true);
    portal.tell(appearance, "color-scheme", 2U);
    EXPECT_TRUE(becomes(false, false));
    portal.tell(appearance, "reduced-motion", 1U);
    EXPECT_TRUE(becomes(true, false));

    const int before = changes;
    // What is of another type, of another group, or no news.
    portal.tell(gnome, "enable-animations", "false");
    portal.tell(appearance, "reduced-motion", "0");
    portal.tell("org.example", "reduced-motion", 0U);
    portal.tell(appearance, "reduced-motion", 1U);
    portal.tell(appearance, "color-scheme", 0U);
    EXPECT_TRUE(becomes(true, true));
    EXPECT_EQ(changes, before + 1);
}

TEST(DesktopLookTest, PlasmasBarTakesTheProgramsColoursAndGnomesIsBlack)
{
    const QPalette light = QApplication::palette();
    for (const char *name : {"KDE", "ubuntu:GNOME"}) {
        qputenv("XDG_CURRENT_DESKTOP", name);
        const DesktopLook look;
        const bool isGnome = look.hasDarkBar();
        EXPECT_EQ(isGnome, QByteArray(name) != "KDE");
        QApplication::setPalette(QPalette(Qt::black));
        EXPECT_TRUE(waitUntil([&] { return look.hasDarkBar(); }));
        QApplication::setPalette(light);
        EXPECT_TRUE(waitUntil([&] { return look.hasDarkBar() == isGnome; }));
    }
    qunsetenv("XDG_CURRENT_DESKTOP");
}

TEST(TrayStatusItemTest, AppearsInATrayThatComesLaterAndOpensOnAClick)
{
    QtMainQueue queue;
    TrayStatusItem item(queue);
    int opened = 0;
    item.setPicture(QIcon(QPixmap(24, 24)));
    item.show("Tirlo", [&] { ++opened; }, {{"Open Tirlo", {}, [] {}}});
    rest(200);
    TrayHost tray;
    ASSERT_TRUE(tray.waitForItem());
    EXPECT_EQ(tray.menu().size(), 1);
    tray.click();
    EXPECT_TRUE(waitUntil([&] { return opened == 1; }));
}

} // namespace
