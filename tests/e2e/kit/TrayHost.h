#pragma once

#include <QDBusConnection>
#include <QMutex>
#include <QObject>
#include <QStringList>
#include <QThread>

namespace tirlo::e2e {

/// A desktop's tray as programs see it on the session bus: it takes note of what registers there.
///
/// It lives on a thread and a bus connection of its own, as the program asks it questions and waits.
class TrayHost : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHost)
    Q_PROPERTY(int ProtocolVersion READ version)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)

public:
    TrayHost();
    ~TrayHost() override;

    /// True when the session bus lets it be the tray.
    [[nodiscard]] bool isReady() const { return m_isReady; }
    [[nodiscard]] bool isHost() const { return true; }
    [[nodiscard]] int version() const { return 0; }
    /// The bus names of the items.
    [[nodiscard]] QStringList items() const;
    [[nodiscard]] QDBusConnection bus() const { return m_bus; }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &service);

private:
    QThread m_thread;
    QDBusConnection m_bus;
    bool m_isReady = false;
    mutable QMutex m_lock;
    QStringList m_items;
};

} // namespace tirlo::e2e
