#include "PrivateKeyring.h"

#include "platform/linux/BusLocker.h"
#include "support/SpinUntil.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

TEST(BusLockerTest, AScreenSaverLocksWhileItIsOnAndAsLongAsItIsThere)
{
    const QDBusConnection nobody(QStringLiteral("nobody"));
    EXPECT_FALSE(BusLocker(nobody, nobody).isLocked()) << "there is no bus";

    const PrivateKeyring desktop;
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    QDBusConnection saver = QDBusConnection::connectToBus(address, QStringLiteral("saver"));
    const QString name = QStringLiteral("org.xfce.ScreenSaver");
    ASSERT_TRUE(saver.registerService(name));
    const auto turn = [&](bool isOn) {
        QDBusMessage told = QDBusMessage::createSignal(QStringLiteral("/org/xfce/ScreenSaver"),
                                                       name, QStringLiteral("ActiveChanged"));
        told << isOn;
        saver.send(told);
    };

    const BusLocker locker(nobody,
                           QDBusConnection::connectToBus(address, QStringLiteral("locker")));
    // Until the bus has told who has the name, a word of it counts for nothing.
    ASSERT_TRUE(spinUntil([&] {
        turn(true);
        return locker.isLocked();
    }));
    turn(false);
    EXPECT_TRUE(spinUntil([&] { return !locker.isLocked(); }));
    turn(true);
    EXPECT_TRUE(spinUntil([&] { return locker.isLocked(); }));
    saver.unregisterService(name);
    EXPECT_TRUE(spinUntil([&] { return !locker.isLocked(); }));
    QDBusConnection::disconnectFromBus(QStringLiteral("saver"));
    QDBusConnection::disconnectFromBus(QStringLiteral("locker"));
}

} // namespace
