#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QMap>
#include <QObject>
#include <QVariantMap>

#include <gtest/gtest.h>

namespace tirlo::x11test {

/// The settings of each group.
using Groups = QMap<QString, QVariantMap>;

/// A desktop's portal, on a connection of its own.
class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit Portal(const Groups &settings)
        : m_settings(settings)
    {
        qDBusRegisterMetaType<Groups>();
        EXPECT_TRUE(m_bus.registerObject("/org/freedesktop/portal/desktop", this,
                                         QDBusConnection::ExportAllSlots)
                    && m_bus.registerService("org.freedesktop.portal.Desktop"));
    }

    ~Portal() override { QDBusConnection::disconnectFromBus("portal"); }

    void tell(const QString &group, const QString &key, const QVariant &value)
    {
        auto signal = QDBusMessage::createSignal(
            "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged");
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        m_bus.send(signal);
    }

public Q_SLOTS:
    Groups ReadAll(const QStringList &) { return m_settings; }

private:
    const Groups m_settings;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "portal");
};

} // namespace tirlo::x11test
