#include "PortalSettings.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace tirlo {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString gnomeInterface = QStringLiteral("org.gnome.desktop.interface");

using Groups = QMap<QString, QVariantMap>;

std::optional<uint> number(const QVariant &value)
{
    return value.typeId() == QMetaType::UInt ? std::optional(value.toUInt()) : std::nullopt;
}

} // namespace

PortalSettings::PortalSettings(const QDBusConnection &bus)
    : m_bus(bus)
    , m_arrival(service, m_bus, QDBusServiceWatcher::WatchForRegistration)
{
    if (!m_bus.isConnected())
        return;
    qDBusRegisterMetaType<Groups>();
    // A slot's types have to be known by their names before it is connected.
    qRegisterMetaType<QDBusVariant>();
    connect(&m_arrival, &QDBusServiceWatcher::serviceRegistered, this, &PortalSettings::ask);
    m_bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                  SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask();
}

void PortalSettings::settingChanged(const QString &group, const QString &key,
                                    const QDBusVariant &value)
{
    take(group, key, value.variant());
}

void PortalSettings::ask()
{
    auto question
        = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("ReadAll"));
    question << QStringList{appearance, gnomeInterface};
    question.setAutoStartService(false);
    auto *answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<Groups> reply = *answer;
        if (reply.isError())
            return;
        const Groups groups = reply.value();
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            for (auto key = group->begin(); key != group->end(); ++key)
                take(group.key(), key.key(), key.value());
        }
    });
}

/// Takes in one setting; what is not ours or of another type is passed over.
void PortalSettings::take(const QString &group, const QString &key, const QVariant &value)
{
    const auto set = [this](auto &wish, const auto &now) {
        if (wish == now)
            return;
        wish = now;
        Q_EMIT changed();
    };
    if (group == gnomeInterface && key == QStringLiteral("enable-animations")) {
        if (value.typeId() == QMetaType::Bool)
            set(m_animates, value.toBool());
    } else if (group == appearance && key == QStringLiteral("reduced-motion")) {
        if (const auto wish = number(value))
            set(m_wantsLessMotion, *wish == 1);
    } else if (group == appearance && key == QStringLiteral("color-scheme")) {
        if (const auto scheme = number(value))
            set(m_prefersDark,
                *scheme == 1 || *scheme == 2 ? std::optional(*scheme == 1) : std::nullopt);
    }
}

} // namespace tirlo
