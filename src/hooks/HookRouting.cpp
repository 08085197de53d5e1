#include "HookRouting.h"

#include "core/Json.h"
#include "core/Text.h"

#include <QHash>

#include <algorithm>

namespace tirlo {

namespace {

constexpr qsizetype longestAgentName = 24;

QString textOr(const QJsonObject &payload, const char *key, const QString &fallback = {})
{
    return Json::text(payload, QLatin1String(key)).value_or(fallback);
}

bool isAgentNameCharacter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') || c == u'-';
}

QString projectNameOf(const QString &cwd)
{
    const QString folder = lastPathComponent(cwd);
    return aliasProjectName(folder.isEmpty() ? QStringLiteral("Session") : folder);
}

} // namespace

HookOrigin HookOrigin::of(const QJsonObject &payload)
{
    HookOrigin origin;
    origin.sessionId = textOr(payload, "session_id",
                              textOr(payload, "conversation_id", QStringLiteral("unknown")));
    origin.cwd = textOr(payload, "cwd");
    origin.projectName = projectNameOf(origin.cwd);
    origin.agentTag = textOr(payload, "tirlo_agent");
    origin.terminal = textOr(payload, "term_program");
    origin.bundle = textOr(payload, "bundle_id");
    return origin;
}

std::optional<HookRoute> routeOf(const HookOrigin &origin)
{
    if (origin.agentTag == QLatin1String("codex"))
        return HookRoute{QStringLiteral("agent_codex"), {}};
    if (const auto agent = validateAgent(origin.agentTag))
        return HookRoute{QStringLiteral("agent_") + *agent, agent};

    const QString bundle = origin.bundle.toLower();
    if (bundle == QLatin1String("com.todesktop.230313mzl4w4u92"))
        return HookRoute{QStringLiteral("agent_cursor"), {}};
    const QLatin1String vscode("vscode");
    if (origin.terminal.toLower().contains(vscode) || bundle.contains(vscode))
        return HookRoute{QStringLiteral("integration_claude"), {}};
    return std::nullopt;
}

std::optional<QString> validateAgent(const QString &tag)
{
    const bool fits = !tag.isEmpty() && tag.size() <= longestAgentName
        && tag != QLatin1String("claude") && std::ranges::all_of(tag, isAgentNameCharacter);
    return fits ? std::optional(tag) : std::nullopt;
}

QString aliasProjectName(const QString &name)
{
    static const QHash<QString, QString> aliases{
        {QStringLiteral("skerry-app"), QStringLiteral("Skerry App")},
        {QStringLiteral("skerryapp"), QStringLiteral("Skerry App")},
        {QStringLiteral("skerry_app"), QStringLiteral("Skerry App")},
    };
    return aliases.value(name.toLower(), name);
}

} // namespace tirlo
