#include "TrayItem.h"

#include "Desktop.h"
#include "TrayHost.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>

#include <utility>

namespace tirlo::e2e {

namespace {

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

} // namespace

TrayItem::TrayItem(const TrayHost &host, QString service)
    : m_host(host)
    , m_service(std::move(service))
{
}

QVariantMap TrayItem::properties() const
{
    const QVariantList reply = ask("/StatusNotifierItem", "org.freedesktop.DBus.Properties",
                                   "GetAll", {"org.kde.StatusNotifierItem"});
    return qdbus_cast<QVariantMap>(reply.value(0));
}

QList<TrayRow> TrayItem::menu() const
{
    return rowsOf(ask(menuPath(), "com.canonical.dbusmenu", "GetLayout", {0, -1, QStringList()}));
}

void TrayItem::choose(const TrayRow &row) const
{
    static_cast<void>(ask(menuPath(), "com.canonical.dbusmenu", "Event",
                          {row.id, "clicked", QVariant::fromValue(QDBusVariant("")), 0U}));
}

QVariantList TrayItem::ask(const QString &path, const QString &interface, const QString &method,
                           const QVariantList &arguments) const
{
    auto message = QDBusMessage::createMethodCall(m_service, path, interface, method);
    message.setArguments(arguments);
    // The item may belong to this very program, which has to answer meanwhile.
    const QDBusPendingCall call = m_host.bus().asyncCall(message);
    waitUntil([&] { return call.isFinished(); });
    return call.reply().arguments();
}

QString TrayItem::menuPath() const
{
    return properties().value("Menu").value<QDBusObjectPath>().path();
}

} // namespace tirlo::e2e
