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

TEST(StatusItemTest, TheTrayGetsThePictureTheNameAndAMenuThatActs)
{
    const TrayHost host;
    ASSERT_TRUE(host.isReady());

    QPixmap picture(24, 18);
    picture.fill(Qt::red);
    QString chosen;
    TrayStatusItem item;
    item.show(QIcon(picture), "Tirlo",
              {{"Open", "", [&] { chosen = "open"; }}, {}, {"Quit", "Ctrl+Q", [] {}}});
    ASSERT_TRUE(waitUntil([&] { return host.items().size() == 1; }));

    const TrayItem trayItem(host, host.items().first());
    const QVariantMap properties = trayItem.properties();
    const auto toolTip = properties.value("ToolTip").value<QDBusArgument>();
    QString iconName;
    QVariant iconPicture;
    QString title;
    toolTip.beginStructure();
    toolTip >> iconName >> iconPicture >> title;
    EXPECT_EQ(title, "Tirlo");
    EXPECT_TRUE(properties.contains("IconPixmap"));

    const QList<TrayRow> rows = trayItem.menu();
    QStringList titles;
    for (const TrayRow &row : rows)
        titles << row.properties.value("label", row.properties.value("type")).toString();
    ASSERT_EQ(titles, QStringList({"Open", "separator", "Quit"}));
    EXPECT_TRUE(rows[2].properties.contains("shortcut"));
    EXPECT_FALSE(rows[0].properties.contains("shortcut"));
    trayItem.choose(rows[0]);
    EXPECT_TRUE(waitUntil([&] { return chosen == "open"; }));
}

} // namespace
