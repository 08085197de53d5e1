#pragma once

#include "AgentSession.h"
#include "BotState.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace tirlo {

/// Where a task comes from.
enum class AgentSource { claudeCode, n8n, agent };

/// The small mark on a pill that is not in focus.
enum class PillBadge { approval, finished, error };

/// One pill: an agent's session, a chat provider or a service.
struct AgentTask
{
    /// A catalogue id, or "agent_" followed by an agent's name.
    QString id;
    /// The shown name: a project's, an agent's or the catalogue row's.
    QString name;
    /// "#" and six hexadecimal digits.
    QString color;
    BotState state = BotState::idle;
    /// Index of the step on show: the last one's, 0 without steps.
    qsizetype stepIndex = 0;
    /// The most recent steps, oldest first, at most 20.
    QStringList steps;
    AgentSource source = AgentSource::agent;
    /// False only for tasks of agents from outside the catalogue's road.
    bool isIntegration = false;
    std::optional<BotEmote> emote;
    std::optional<EyeShape> miniEye;
    /// The badge while the task is not in focus.
    std::optional<PillBadge> pillBadge;
    /// What the last turn came to: the agent's last words, or those of the error that ended it.
    QString outcome;
    /// The folder of the session whose turn that was; empty without one.
    QString outcomeFolder;
    /// The session's working directory.
    std::optional<QString> sessionCwd;
    /// The agent's sessions, in the order in which they came; empty while it has none.
    QList<AgentSession> sessions;

    bool operator==(const AgentTask &) const = default;
};

} // namespace tirlo
