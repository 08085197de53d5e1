#include "settings/SettingsIslandView.h"

#include "core/Notifications.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace tirlo {

namespace {

TEST(SettingsIslandViewTest, LeadsToTheSettingsAndOutOfTheProgramByMouseAndKeys)
{
    Notifications notifications;
    int opened = 0;
    QObject::connect(&notifications, &Notifications::openFullSettings, [&] { ++opened; });
    SettingsIslandView card(notifications);
    const auto button = [&](const char *name) -> QPushButton * {
        for (auto *each : card.findChildren<QPushButton *>()) {
            if (each->accessibleName() == QLatin1String(name))
                return each;
        }
        return nullptr;
    };
    QPushButton *settings = button("Settings");
    QPushButton *quit = button("Quit");
    ASSERT_TRUE(settings && quit);
    card.resize(620, 98);
    card.show();
    card.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&card));

    QTest::mouseClick(settings, Qt::LeftButton);
    settings->setFocus(Qt::TabFocusReason);
    QTest::keyClick(settings, Qt::Key_Space);
    EXPECT_EQ(opened, 2);
    QTest::keyClick(settings, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), quit);
    QTimer::singleShot(0, quit, &QPushButton::click);
    QTimer::singleShot(3000, quit, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
}

} // namespace

} // namespace tirlo
