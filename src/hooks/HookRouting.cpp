#include "HookRouting.h"

#include "EditorHosts.h"
#include "core/AgentCatalog.h"
#include "core/Json.h"
#include "core/Text.h"

#include <QHash>

#include <algorithm>

namespace tirlo {

namespace {

constexpr qsizetype longestAgentName = 24;
/// No agent from outside: its hooks come without a tag.
constexpr QLatin1String reservedAgentName("claude");

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

std::optional<ProcessId> processOf(const QJsonObject &payload)
{
    const auto told = Json::object(payload, QLatin1String("tirlo_process"));
    if (!told)
        return std::nullopt;
    const auto pid = Json::integer(*told, QLatin1String("pid"));
    const auto start = Json::integer(*told, QLatin1String("start"));
    if (!pid || !start || *pid <= 0 || *start < 0)
        return std::nullopt;
    return ProcessId{*pid, std::uint64_t(*start), textOr(*told, "space")};
}

/// The agent whose hooks come from such a host without a tag; null for a plain terminal.
const AgentDefinition *agentHostedIn(const HookOrigin &origin)
{
    for (const AgentDefinition &agent : AgentCatalog::all) {
        if (agent.tag.isEmpty()
            && origin.bundle.compare(agent.application, Qt::CaseInsensitive) == 0)
            return &agent;
    }
    for (const AgentDefinition &agent : AgentCatalog::all) {
        const QLatin1String word = agent.hostWord;
        if (!word.isEmpty()
            && (origin.terminal.contains(word, Qt::CaseInsensitive)
                || origin.bundle.contains(word, Qt::CaseInsensitive)))
            return &agent;
    }
    return nullptr;
}

} // namespace

HookOrigin HookOrigin::of(const QJsonObject &payload)
{
    HookOrigin origin;
    origin.sessionId
        = textOr(payload, "session_id",
                 textOr(payload, "conversation_id", QString(HookOrigin::unknownSession)));
    origin.cwd = textOr(payload, "cwd");
    origin.projectName = projectNameOf(origin.cwd);
    origin.agentTag = textOr(payload, "tirlo_agent");
    origin.terminal = textOr(payload, "term_program");
    origin.bundle = textOr(payload, "bundle_id");
    if (origin.bundle.isEmpty())
        origin.bundle = editorOf(payload);
    origin.process = processOf(payload);
    origin.transcript = textOr(payload, "transcript_path");
    return origin;
}

std::optional<HookRoute> routeOf(const HookOrigin &origin, bool anyTerminal)
{
    const AgentDefinition *tagged = AgentCatalog::ofTag(origin.agentTag);
    if (tagged && tagged->answersOnIsland)
        return HookRoute{tagged->pill.id, {}, tagged->pill.name};
    if (const auto outside = validateAgent(origin.agentTag))
        return HookRoute{QStringLiteral("agent_") + *outside, outside, *outside};
    if (const AgentDefinition *hosted = agentHostedIn(origin))
        return HookRoute{hosted->pill.id, {}, hosted->pill.name};
    if (anyTerminal)
        return HookRoute{
            AgentCatalog::pillId(AgentId::claudeCode), {}, QStringLiteral("the terminal")};
    return std::nullopt;
}

std::optional<QString> validateAgent(const QString &tag)
{
    const bool fits = !tag.isEmpty() && tag.size() <= longestAgentName && tag != reservedAgentName
        && std::ranges::all_of(tag, isAgentNameCharacter);
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
