#include "TrayHost.h"

#include <QDBusMessage>

namespace tirlo::e2e {

TrayHost::TrayHost()
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "tray-host"))
{
    moveToThread(&m_thread);
    m_thread.start();
    m_isReady = m_bus.registerObject("/StatusNotifierWatcher", this,
                                     QDBusConnection::ExportAllProperties
                                         | QDBusConnection::ExportAllSlots)
        && m_bus.registerService("org.kde.StatusNotifierWatcher");
}

TrayHost::~TrayHost()
{
    QDBusConnection::disconnectFromBus("tray-host");
    m_thread.quit();
    m_thread.wait();
}

QStringList TrayHost::items() const
{
    const QMutexLocker guard(&m_lock);
    return m_items;
}

void TrayHost::RegisterStatusNotifierItem(const QString &service)
{
    const QMutexLocker guard(&m_lock);
    m_items.append(service);
}

} // namespace tirlo::e2e
