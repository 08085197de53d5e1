#pragma once

#include "Desktop.h"
#include "TrayHost.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>

#include <utility>

namespace tirlo::e2e {

/// One row of an item's menu as the tray gets it.
struct TrayRow
{
    int id = 0;
    QVariantMap properties;
};

/// An item of the tray, asked in the tray's place.
class TrayItem
{
public:
    /// The item with this name on the bus; the host outlives it.
    TrayItem(const TrayHost &host, QString service)
        : m_host(host)
        , m_service(std::move(service))
    {
    }

    /// What the item says of itself.
    [[nodiscard]] QVariantMap properties() const
    {
        const QVariantList reply = ask("/StatusNotifierItem", "org.freedesktop.DBus.Properties",
                                       "GetAll", {"org.kde.StatusNotifierItem"});
        return qdbus_cast<QVariantMap>(reply.value(0));
    }

    /// The rows of its menu, separators included.
    [[nodiscard]] QList<TrayRow> menu() const
    {
        const QVariantList reply
            = ask(menuPath(), "com.canonical.dbusmenu", "GetLayout", {0, -1, QStringList()});
        const auto root = reply.value(1).value<QDBusArgument>();
        QList<TrayRow> rows;
        TrayRow row;
        root.beginStructure();
        root >> row.id >> row.properties;
        root.beginArray();
        while (!root.atEnd()) {
            QDBusVariant child;
            root >> child;
            const auto argument = child.variant().value<QDBusArgument>();
            argument.beginStructure();
            argument >> row.id >> row.properties;
            rows.append(row);
        }
        return rows;
    }

    /// Chooses the row of the menu as a click on it does.
    void choose(const TrayRow &row) const
    {
        static_cast<void>(ask(menuPath(), "com.canonical.dbusmenu", "Event",
                              {row.id, "clicked", QVariant::fromValue(QDBusVariant("")), 0U}));
    }

private:
    [[nodiscard]] QVariantList ask(const QString &path, const QString &interface,
                                   const QString &method, const QVariantList &arguments) const
    {
        auto message = QDBusMessage::createMethodCall(m_service, path, interface, method);
        message.setArguments(arguments);
        // The item may belong to this very program, which has to answer meanwhile.
        const QDBusPendingCall call = m_host.bus().asyncCall(message);
        waitUntil([&] { return call.isFinished(); });
        return call.reply().arguments();
    }

    [[nodiscard]] QString menuPath() const
    {
        return properties().value("Menu").value<QDBusObjectPath>().path();
    }

    const TrayHost &m_host;
    const QString m_service;
};

} // namespace tirlo::e2e
