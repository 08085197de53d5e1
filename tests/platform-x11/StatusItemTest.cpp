#include "e2e/kit/Desktop.h"
#include "e2e/kit/TrayHost.h"
#include "e2e/kit/TrayItem.h"
#include "platform/linux/TrayStatusItem.h"

#include <QDBusArgument>
#include <QIcon>
#include <QPixmap>

#include <gtest/gtest.h>

using namespace tirlo;
using namespace tirlo::e2e;

namespace {

QString toolTipOf(const QDBusArgument &toolTip)
{
    QString iconName;
    QVariant picture;
    QString title;
    QString text;
    toolTip.beginStructure();
    toolTip >> iconName >> picture >> title >> text;
    toolTip.endStructure();
    return title;
}

TEST(StatusItemTest, TheTrayGetsThePictureTheNameAndAMenuThatActs)
{
    const TrayHost host;
    ASSERT_TRUE(host.isReady());

    QPixmap picture(24, 18);
    picture.fill(Qt::red);
    QString chosen;
    TrayStatusItem item;
    item.show(QIcon(picture), "Tirlo",
              {{"Open Tirlo", "", [&] { chosen = "open"; }},
               {},
               {"Settings…", "Ctrl+,", [&] { chosen = "settings"; }},
               {},
               {"Quit", "Ctrl+Q", [&] { chosen = "quit"; }}});
    ASSERT_TRUE(waitUntil([&] { return host.items().size() == 1; }));

    const TrayItem trayItem(host, host.items().first());
    const QVariantMap properties = trayItem.properties();
    EXPECT_EQ(toolTipOf(properties.value("ToolTip").value<QDBusArgument>()), "Tirlo");
    EXPECT_TRUE(properties.contains("IconPixmap"));

    const QList<TrayRow> rows = trayItem.menu();
    QStringList titles;
    for (const TrayRow &row : rows)
        titles << row.properties.value("label", row.properties.value("type")).toString();
    ASSERT_EQ(titles, QStringList({"Open Tirlo", "separator", "Settings…", "separator", "Quit"}));
    EXPECT_TRUE(rows[4].properties.contains("shortcut"));
    EXPECT_FALSE(rows[0].properties.contains("shortcut"));

    trayItem.choose(rows[2]);
    EXPECT_TRUE(waitUntil([&] { return chosen == "settings"; })) << chosen.toStdString();
}

} // namespace
