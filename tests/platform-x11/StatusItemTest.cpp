#include "TrayHost.h"

#include "e2e/kit/Desktop.h"
#include "platform/linux/TrayStatusItem.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QIcon>
#include <QPixmap>

#include <gtest/gtest.h>

using namespace tirlo;
using namespace tirlo::e2e;

namespace {

/// One row of a menu as the tray gets it.
struct TrayRow
{
    int id = 0;
    QVariantMap properties;
};

/// Asks the item's program, which is this one, and lets it answer.
QVariantList ask(const QDBusConnection &bus, const QString &service, const QString &path,
                 const QString &interface, const QString &method, const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    const QDBusPendingCall call = bus.asyncCall(message);
    waitUntil([&] { return call.isFinished(); });
    return call.reply().arguments();
}

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

QList<TrayRow> rowsOf(const QVariantList &layout)
{
    QList<TrayRow> rows;
    const auto root = layout.value(1).value<QDBusArgument>();
    int rootId = 0;
    QVariantMap rootProperties;
    root.beginStructure();
    root >> rootId >> rootProperties;
    root.beginArray();
    while (!root.atEnd()) {
        QDBusVariant child;
        root >> child;
        const auto argument = child.variant().value<QDBusArgument>();
        TrayRow row;
        QVariantList subMenu;
        argument.beginStructure();
        argument >> row.id >> row.properties >> subMenu;
        argument.endStructure();
        rows.append(row);
    }
    root.endArray();
    root.endStructure();
    return rows;
}

TEST(StatusItemTest, TheTrayGetsThePictureTheNameAndAMenuThatActs)
{
    const x11test::TrayHost host;
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

    const QString service = host.items().first();
    const QVariantList reply
        = ask(host.bus(), service, "/StatusNotifierItem", "org.freedesktop.DBus.Properties",
              "GetAll", {"org.kde.StatusNotifierItem"});
    const auto properties = qdbus_cast<QVariantMap>(reply.value(0));
    const QString menu = properties.value("Menu").value<QDBusObjectPath>().path();
    EXPECT_EQ(toolTipOf(properties.value("ToolTip").value<QDBusArgument>()), "Tirlo");
    EXPECT_TRUE(properties.contains("IconPixmap"));

    const auto rows = rowsOf(ask(host.bus(), service, menu, "com.canonical.dbusmenu", "GetLayout",
                                 {0, -1, QStringList()}));
    QStringList titles;
    for (const TrayRow &row : rows)
        titles << row.properties.value("label", row.properties.value("type")).toString();
    ASSERT_EQ(titles, QStringList({"Open Tirlo", "separator", "Settings…", "separator", "Quit"}));
    EXPECT_TRUE(rows[4].properties.contains("shortcut"));
    EXPECT_FALSE(rows[0].properties.contains("shortcut"));

    ask(host.bus(), service, menu, "com.canonical.dbusmenu", "Event",
        {rows[2].id, "clicked", QVariant::fromValue(QDBusVariant("")), 0U});
    EXPECT_TRUE(waitUntil([&] { return chosen == "settings"; })) << chosen.toStdString();
}

} // namespace
