#pragma once

#include "Desktop.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QMutex>
#include <QStringList>
#include <QThread>

namespace tirlo::e2e {

/// One row of an item's menu as the tray gets it.
struct TrayRow
{
    int id = 0;
    QVariantMap properties;
};

/// A desktop's tray as programs see it on the session bus: it takes note of what registers there,
/// and asks it for its menu.
///
/// It lives on a thread and a bus connection of its own, as the program asks questions and waits.
class TrayHost : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHost)
    Q_PROPERTY(int ProtocolVersion READ version)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)

public:
    TrayHost()
    {
        moveToThread(&m_thread);
        m_thread.start();
        m_isReady = m_bus.registerObject("/StatusNotifierWatcher", this,
                                         QDBusConnection::ExportAllProperties
                                             | QDBusConnection::ExportAllSlots)
            && m_bus.registerService("org.kde.StatusNotifierWatcher");
    }

    ~TrayHost() override
    {
        QDBusConnection::disconnectFromBus("tray-host");
        m_thread.quit();
        m_thread.wait();
    }

    /// Waits for the one item that is to register; false when none does, or the bus has a tray.
    [[nodiscard]] bool waitForItem() const
    {
        return m_isReady && waitUntil([this] { return items().size() == 1; });
    }

    /// What the item says of itself.
    [[nodiscard]] QVariantMap properties() const
    {
        const QVariantList reply = ask("/StatusNotifierItem", "org.freedesktop.DBus.Properties",
                                       "GetAll", {"org.kde.StatusNotifierItem"});
        return qdbus_cast<QVariantMap>(reply.value(0));
    }

    /// The rows of the item's menu, separators included.
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

    /// Clicks the item with the left button.
    void click() const
    {
        static_cast<void>(
            ask("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate", {0, 0}));
    }

    [[nodiscard]] bool isHost() const { return true; }
    [[nodiscard]] int version() const { return 0; }
    [[nodiscard]] QStringList items() const
    {
        const QMutexLocker guard(&m_lock);
        return m_items;
    }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &service)
    {
        const QMutexLocker guard(&m_lock);
        m_items.append(service);
    }

private:
    [[nodiscard]] QVariantList ask(const QString &path, const QString &interface,
                                   const QString &method, const QVariantList &arguments) const
    {
        auto message = QDBusMessage::createMethodCall(items().first(), path, interface, method);
        message.setArguments(arguments);
        // The item may belong to this very program, which has to answer meanwhile.
        const QDBusPendingCall call = m_bus.asyncCall(message);
        waitUntil([&] { return call.isFinished(); });
        return call.reply().arguments();
    }

    [[nodiscard]] QString menuPath() const
    {
        return properties().value("Menu").value<QDBusObjectPath>().path();
    }

    QThread m_thread;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "tray-host");
    bool m_isReady = false;
    mutable QMutex m_lock;
    QStringList m_items;
};

} // namespace tirlo::e2e
