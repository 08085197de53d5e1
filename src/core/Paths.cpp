#include "Paths.h"

#include "AgentCatalog.h"

#include <QFile>

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <utility>

namespace tirlo {

namespace {

const QString support = QStringLiteral("/Library/Application Support/Skerry");

/// The text as it stands between a shell's quotation marks.
QString inQuotes(const QString &text)
{
    QString quoted;
    for (const QChar character : text) {
        if (QStringLiteral("\"\\$`").contains(character))
            quoted += u'\\';
        quoted += character;
    }
    return quoted;
}

} // namespace

Paths::Paths(QString home)
    : m_home(std::move(home))
{
}

Paths Paths::ofUser()
{
    QByteArray name = qgetenv("HOME");
    if (name.isEmpty()) {
        if (const passwd *entry = getpwuid(getuid()))
            name = entry->pw_dir;
    }
    Paths paths(QFile::decodeName(name));
    if (QFile::encodeName(paths.m_home) == name)
        return paths;
    const int home = open(name.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (home >= 0) {
        paths.m_home = QStringLiteral("/proc/self/fd/%1").arg(home);
        paths.m_isNamed = false;
    }
    return paths;
}

QString Paths::supportFolder() const
{
    return m_home + support;
}

QString Paths::socketPath() const
{
    return supportFolder() + QStringLiteral("/qv.sock");
}

QString Paths::commandSocketPath() const
{
    return supportFolder() + QStringLiteral("/ui.sock");
}

QString Paths::lockPath() const
{
    return supportFolder() + QStringLiteral("/tirlo.lock");
}

QString Paths::hookScriptPath() const
{
    return hookScriptIn(m_home);
}

QString Paths::hookScriptWord() const
{
    const QString path = hookScriptIn(m_isNamed ? inQuotes(m_home) : QStringLiteral("$HOME"));
    return u'"' + path + u'"';
}

QString Paths::hookScriptShown() const
{
    return hookScriptIn(m_isNamed ? m_home : QStringLiteral("~"));
}

QString Paths::relayScriptPath() const
{
    return supportFolder() + QStringLiteral("/qv-hook.py");
}

QString Paths::settingsPath() const
{
    return supportFolder() + QStringLiteral("/settings.json");
}

QString Paths::agentSettingsPath(const AgentDefinition &agent) const
{
    return m_home + u'/' + agent.settingsPath;
}

QString Paths::secretsPath() const
{
    return supportFolder() + QStringLiteral("/secrets.json");
}

QString Paths::logFolder() const
{
    return m_home + QStringLiteral("/Library/Logs/Skerry");
}

QString Paths::hookScriptIn(const QString &home)
{
    return home + support + QStringLiteral("/qv-hook");
}

} // namespace tirlo
