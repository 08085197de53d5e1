#pragma once

#include <QDBusConnection>
#include <QMutex>
#include <QStringList>
#include <QThread>

namespace tirlo::e2e {

/// A desktop's tray as programs see it on the session bus: it takes note of what registers there.
///
/// It lives on a thread and a bus connection of its own, as the program asks it questions and
/// waits.
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

    /// True when the session bus lets it be the tray.
    [[nodiscard]] bool isReady() const { return m_isReady; }
    [[nodiscard]] bool isHost() const { return true; }
    [[nodiscard]] int version() const { return 0; }
    /// The bus names of the items.
    [[nodiscard]] QStringList items() const
    {
        const QMutexLocker guard(&m_lock);
        return m_items;
    }
    [[nodiscard]] QDBusConnection bus() const { return m_bus; }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &service)
    {
        const QMutexLocker guard(&m_lock);
        m_items.append(service);
    }

private:
    QThread m_thread;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "tray-host");
    bool m_isReady = false;
    mutable QMutex m_lock;
    QStringList m_items;
};

} // namespace tirlo::e2e
