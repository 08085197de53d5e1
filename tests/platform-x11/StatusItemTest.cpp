#include "e2e/kit/Desktop.h"
#include "e2e/kit/TrayHost.h"
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

    QPixmap picture(24, 18);
    picture.fill(Qt::red);
    QString chosen;
    TrayStatusItem item;
    item.show(QIcon(picture), "Tirlo",
              {{"Open", "", [&] { chosen = "open"; }}, {}, {"Quit", "Ctrl+Q", [] {}}});
    ASSERT_TRUE(host.waitForItem());

    const QVariantMap properties = host.properties();
    const auto toolTip = properties.value("ToolTip").value<QDBusArgument>();
    QString iconName;
    QVariant iconPicture;
    QString title;
    toolTip.beginStructure();
    toolTip >> iconName >> iconPicture >> title;
    EXPECT_EQ(title, "Tirlo");
    EXPECT_TRUE(properties.contains("IconPixmap"));

    const QList<TrayRow> rows = host.menu();
    QStringList titles;
    for (const TrayRow &row : rows)
        titles << row.properties.value("label", row.properties.value("type")).toString();
    ASSERT_EQ(titles, QStringList({"Open", "separator", "Quit"}));
    EXPECT_TRUE(rows[2].properties.contains("shortcut"));
    EXPECT_FALSE(rows[0].properties.contains("shortcut"));
    host.choose(rows[0]);
    EXPECT_TRUE(waitUntil([&] { return chosen == "open"; }));
}

} // namespace
