#pragma once

#include <QProcess>
#include <QTemporaryDir>

namespace tirlo {

/// A session bus of the test's own, on which a real keyring can come and go.
///
/// While it lives it is the process's session bus. The keyring's files last as long.
class PrivateKeyring
{
public:
    PrivateKeyring();
    ~PrivateKeyring();

    /// Starts the keyring, unlocked, and waits for it; false when it does not come.
    bool start();
    /// Starts it again with its collection locked.
    bool startLocked();
    void stop();
    /// Makes a running keyring deaf until it is stopped.
    void freeze();

    /// How many unlocked items stand under the account.
    [[nodiscard]] int count(const QByteArray &account) const;
    /// Adds an item with these bytes, past the code under test.
    void putBytes(const QByteArray &account, const QByteArray &bytes) const;

private:
    bool launch(const QStringList &arguments);

    QTemporaryDir m_home;
    QByteArray m_busBefore;
    QProcess m_bus;
    QProcess m_daemon;
};

} // namespace tirlo
