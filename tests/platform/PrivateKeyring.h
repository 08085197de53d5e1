#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <libsecret/secret.h>

#include <csignal>

namespace tirlo {

/// A session bus of the test's own, on which a real keyring can come and go.
///
/// While it lives it is the process's session bus. The keyring's files last as long.
class PrivateKeyring
{
public:
    PrivateKeyring()
    {
        // A bus that starts no service by itself.
        QFile file(m_home.filePath("bus.conf"));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("No place for the private bus.");
        file.write("<busconfig><type>session</type><listen>unix:dir=" + m_home.path().toUtf8()
                   + "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
                     "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/>"
                     "<allow own=\"*\"/></policy></busconfig>");
        file.close();
        m_bus.start("dbus-daemon",
                    {"--nofork", "--print-address=1", "--config-file=" + file.fileName()});
        if (!m_bus.waitForReadyRead(10'000))
            qFatal("The private bus did not start.");
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
    }

    ~PrivateKeyring()
    {
        stop();
        m_bus.terminate();
        m_bus.waitForFinished();
        if (m_busBefore.isNull())
            qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        else
            qputenv("DBUS_SESSION_BUS_ADDRESS", m_busBefore);
    }

    /// Starts the keyring, unlocked, and waits for it; false when it does not come.
    bool start() { return launch({"--unlock"}); }
    /// Starts it again with its collection locked.
    bool startLocked() { return launch({}); }
    /// Makes a running keyring deaf until it is stopped.
    void freeze() { ::kill(pid_t(m_daemon.processId()), SIGSTOP); }

    void stop()
    {
        if (m_daemon.state() == QProcess::NotRunning)
            return;
        ::kill(pid_t(m_daemon.processId()), SIGCONT);
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }

    /// How many unlocked items stand under the account.
    [[nodiscard]] int count(const char *account) const
    {
        GAsyncResult *result = nullptr;
        secret_password_search(schema, SECRET_SEARCH_ALL, nullptr, keep, &result, "service",
                               service, "account", account, nullptr);
        waitFor(result);
        GList *items = secret_password_search_finish(result, nullptr);
        const int count = int(g_list_length(items));
        g_list_free_full(items, g_object_unref);
        g_object_unref(result);
        disconnect();
        return count;
    }

    /// Adds an item with these bytes, past the code under test.
    void putBytes(const char *account, const QByteArray &bytes) const
    {
        SecretValue *value = secret_value_new(bytes.constData(), bytes.size(), "text/plain");
        GAsyncResult *result = nullptr;
        secret_password_store_binary(schema, SECRET_COLLECTION_DEFAULT, "Put by a test", value,
                                     nullptr, keep, &result, "service", service, "account", account,
                                     nullptr);
        waitFor(result);
        secret_password_store_finish(result, nullptr);
        g_object_unref(result);
        secret_value_unref(value);
        disconnect();
    }

private:
    static constexpr char service[] = "org.skerryapp.Skerry";

    static void keep(GObject *, GAsyncResult *outcome, void *place)
    {
        *static_cast<GAsyncResult **>(place) = G_ASYNC_RESULT(g_object_ref(outcome));
    }

    static void waitFor(GAsyncResult *&result)
    {
        while (!result)
            g_main_context_iteration(nullptr, TRUE);
    }

    /// What listened on the bus is given back from the context, which calls that wait by themselves
    /// do not let run.
    static void disconnect()
    {
        secret_service_disconnect();
        while (g_main_context_iteration(nullptr, FALSE)) { }
    }

    static bool isThere()
    {
        GDBusConnection *bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
        if (!bus)
            return false;
        g_dbus_connection_set_exit_on_close(bus, FALSE);
        GVariant *answer = g_dbus_connection_call_sync(
            bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "NameHasOwner", g_variant_new("(s)", "org.freedesktop.secrets"), nullptr,
            G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
        gboolean owned = FALSE;
        if (answer) {
            g_variant_get(answer, "(b)", &owned);
            g_variant_unref(answer);
        }
        g_object_unref(bus);
        return owned;
    }

    bool launch(const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *place : {"HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
            environment.insert(place, m_home.path());
        m_daemon.setProcessEnvironment(environment);
        m_daemon.start("gnome-keyring-daemon",
                       QStringList{"--foreground", "--components=secrets"} + arguments);
        m_daemon.write("password");
        m_daemon.closeWriteChannel();
        return QTest::qWaitFor(isThere, 10'000);
    }

    static inline const SecretSchema *const schema = secret_schema_new(
        service, SECRET_SCHEMA_DONT_MATCH_NAME, "service", SECRET_SCHEMA_ATTRIBUTE_STRING,
        "account", SECRET_SCHEMA_ATTRIBUTE_STRING, nullptr);
    QTemporaryDir m_home;
    QByteArray m_busBefore = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    QProcess m_bus;
    QProcess m_daemon;
};

} // namespace tirlo
