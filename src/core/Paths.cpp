#include "Paths.h"

#include "AgentCatalog.h"

#include <QFile>

#include <pwd.h>
#include <unistd.h>

#include <utility>

namespace tirlo {

Paths::Paths(QString home)
    : m_home(std::move(home))
{
}

Paths Paths::ofUser()
{
    QString home = qEnvironmentVariable("HOME");
    if (home.isEmpty()) {
        if (const passwd *entry = getpwuid(getuid()))
            home = QFile::decodeName(entry->pw_dir);
    }
    return Paths(home);
}

QString Paths::supportFolder() const
{
    return m_home + QStringLiteral("/Library/Application Support/Skerry");
}

QString Paths::socketPath() const
{
    return supportFolder() + QStringLiteral("/qv.sock");
}

QString Paths::hookScriptPath() const
{
    return supportFolder() + QStringLiteral("/qv-hook");
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

} // namespace tirlo
