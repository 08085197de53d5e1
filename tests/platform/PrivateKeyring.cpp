#include "PrivateKeyring.h"

#include <QFile>
#include <QTest>

#include <libsecret/secret.h>

#include <csignal>

namespace tirlo {

namespace {

constexpr char service[] = "org.skerryapp.Skerry";

/// A bus that starts no service by itself.
QByteArray configuration(const QString &folder)
{
    return "<busconfig><type>session</type><listen>unix:dir=" + folder.toUtf8()
        + "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
          "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/><allow own=\"*\"/>"
          "</policy></busconfig>";
}

const SecretSchema *schema()
{
    static const SecretSchema *value = secret_schema_new(
        service, SECRET_SCHEMA_DONT_MATCH_NAME, "service", SECRET_SCHEMA_ATTRIBUTE_STRING,
        "account", SECRET_SCHEMA_ATTRIBUTE_STRING, nullptr);
    return value;
}

bool isThere()
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

} // namespace

PrivateKeyring::PrivateKeyring()
    : m_busBefore(qgetenv("DBUS_SESSION_BUS_ADDRESS"))
{
    QFile file(m_home.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("No place for the private bus.");
    file.write(configuration(m_home.path()));
    file.close();
    m_bus.start(QStringLiteral("dbus-daemon"),
                {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                 QStringLiteral("--config-file=") + file.fileName()});
    if (!m_bus.waitForReadyRead(10'000))
        qFatal("The private bus did not start.");
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
}

PrivateKeyring::~PrivateKeyring()
{
    stop();
    m_bus.terminate();
    m_bus.waitForFinished();
    if (m_busBefore.isNull())
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    else
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_busBefore);
}

bool PrivateKeyring::start()
{
    return launch({QStringLiteral("--unlock")});
}

bool PrivateKeyring::startLocked()
{
    return launch({});
}

void PrivateKeyring::stop()
{
    if (m_daemon.state() == QProcess::NotRunning)
        return;
    ::kill(pid_t(m_daemon.processId()), SIGCONT);
    m_daemon.terminate();
    m_daemon.waitForFinished();
}

void PrivateKeyring::freeze()
{
    ::kill(pid_t(m_daemon.processId()), SIGSTOP);
}

int PrivateKeyring::count(const QByteArray &account) const
{
    GList *items
        = secret_password_search_sync(schema(), SECRET_SEARCH_ALL, nullptr, nullptr, "service",
                                      service, "account", account.constData(), nullptr);
    const int count = int(g_list_length(items));
    g_list_free_full(items, g_object_unref);
    secret_service_disconnect();
    return count;
}

void PrivateKeyring::putBytes(const QByteArray &account, const QByteArray &bytes) const
{
    SecretValue *value = secret_value_new(bytes.constData(), bytes.size(), "text/plain");
    secret_password_store_binary_sync(schema(), SECRET_COLLECTION_DEFAULT, "Put by a test", value,
                                      nullptr, nullptr, "service", service, "account",
                                      account.constData(), nullptr);
    secret_value_unref(value);
    secret_service_disconnect();
}

bool PrivateKeyring::launch(const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), m_home.path());
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_home.path());
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home.path());
    m_daemon.setProcessEnvironment(environment);
    m_daemon.start(
        QStringLiteral("gnome-keyring-daemon"),
        QStringList{QStringLiteral("--foreground"), QStringLiteral("--components=secrets")}
            + arguments);
    m_daemon.write("password");
    m_daemon.closeWriteChannel();
    return QTest::qWaitFor(isThere, 10'000);
}

} // namespace tirlo
