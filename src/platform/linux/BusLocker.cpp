#include "BusLocker.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace tirlo {

namespace {

const QString loginManager = QStringLiteral("org.freedesktop.login1");
const QString loginSession = QStringLiteral("org.freedesktop.login1.Session");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString lockedHint = QStringLiteral("LockedHint");

/// The names of screen savers on the session bus; each has an interface of its own name.
const QLatin1String screenSavers[]{
    QLatin1String("org.freedesktop.ScreenSaver"), QLatin1String("org.gnome.ScreenSaver"),
    QLatin1String("org.xfce.ScreenSaver"),        QLatin1String("org.mate.ScreenSaver"),
    QLatin1String("org.cinnamon.ScreenSaver"),
};

QString pathOf(QString service)
{
    return '/' + service.replace('.', '/');
}

QDBusMessage call(const QString &service, const QString &path, const QString &interface,
                  const QString &method, const QVariantList &arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    // Nobody is started only to be asked.
    message.setAutoStartService(false);
    return message;
}

} // namespace

BusLocker::BusLocker(const QDBusConnection &system, const QDBusConnection &session)
    : m_system(system)
    , m_session(session)
{
    if (m_system.isConnected())
        followLoginManager();
    if (m_session.isConnected())
        followScreenSavers();
}

void BusLocker::followLoginManager()
{
    // A program that the user's service manager has started is in no session of its own.
    const QString known = qEnvironmentVariable("XDG_SESSION_ID");
    const QString manager = QStringLiteral("org.freedesktop.login1.Manager");
    ask(m_system,
        call(loginManager, pathOf(loginManager), manager, QStringLiteral("GetSession"),
             {known.isEmpty() ? QStringLiteral("auto") : known}),
        [this](const QVariant &answer) {
            const QString path = answer.value<QDBusObjectPath>().path();
            if (path.isEmpty())
                return;
            m_system.connect(loginManager, path, properties, QStringLiteral("PropertiesChanged"),
                             this, SLOT(loginSessionChanged(QString, QVariantMap)));
            ask(m_system,
                call(loginManager, path, properties, QStringLiteral("Get"),
                     {loginSession, lockedHint}),
                [this](const QVariant &hint) {
                    setHolds(loginManager, hint.value<QDBusVariant>().variant().toBool());
                });
        });
}

void BusLocker::followScreenSavers()
{
    auto *watcher = new QDBusServiceWatcher(this);
    watcher->setConnection(m_session);
    watcher->setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this,
            [this](const QString &service) { setHolds(service, false); });
    for (const QString service : screenSavers) {
        watcher->addWatchedService(service);
        m_session.connect(service, QString(), service, QStringLiteral("ActiveChanged"), this,
                          SLOT(screenSaverChanged(bool, QDBusMessage)));
        ask(m_session, call(service, pathOf(service), service, QStringLiteral("GetActive")),
            [this, service](const QVariant &isActive) { setHolds(service, isActive.toBool()); });
    }
}

void BusLocker::screenSaverChanged(bool isActive, const QDBusMessage &message)
{
    setHolds(message.interface(), isActive);
}

void BusLocker::loginSessionChanged(const QString &interface, const QVariantMap &changes)
{
    if (interface == loginSession && changes.contains(lockedHint))
        setHolds(loginManager, changes.value(lockedHint).toBool());
}

void BusLocker::setHolds(const QString &holder, bool holds)
{
    if (m_holders.contains(holder) == holds)
        return;
    const bool wasLocked = isLocked();
    if (holds)
        m_holders.append(holder);
    else
        m_holders.removeAll(holder);
    if (isLocked() != wasLocked)
        Q_EMIT changed();
}

/// Takes the first value of the answer when it comes; one that is an error is none.
template<typename Take>
void BusLocker::ask(const QDBusConnection &bus, const QDBusMessage &question, Take take)
{
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, take] {
        answer->deleteLater();
        if (!answer->isError())
            take(answer->reply().arguments().value(0));
    });
}

} // namespace tirlo
