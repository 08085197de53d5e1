#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>

namespace tirlo {

/// Whether the session is locked by the word of those who tell it on the buses: the login manager,
/// and the desktop's screen saver while it is on.
///
/// Where there is no bus, or nobody who tells, it is not. Nothing waits for an answer.
class BusLocker final : public QObject
{
    Q_OBJECT

public:
    BusLocker(const QDBusConnection &system = QDBusConnection::systemBus(),
              const QDBusConnection &session = QDBusConnection::sessionBus());

    [[nodiscard]] bool isLocked() const { return !m_holders.isEmpty(); }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void screenSaverChanged(bool isActive, const QDBusMessage &message);
    void loginSessionChanged(const QString &interface, const QVariantMap &properties);

private:
    void followLoginManager();
    void followScreenSavers();
    void setHolds(const QString &holder, bool holds);
    template<typename Take>
    void ask(const QDBusConnection &bus, const QDBusMessage &question, Take take);

    QDBusConnection m_system;
    QDBusConnection m_session;
    /// Those who say that it is locked.
    QStringList m_holders;
};

} // namespace tirlo
