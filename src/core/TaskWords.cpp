#include "TaskWords.h"

#include "AgentCatalog.h"

namespace tirlo {

QString inWords(BotState mood)
{
    switch (mood) {
    case BotState::idle:
        return QStringLiteral("idle");
    case BotState::working:
        return QStringLiteral("working");
    case BotState::thinking:
        return QStringLiteral("thinking");
    case BotState::searching:
        return QStringLiteral("searching");
    case BotState::approval:
        return QStringLiteral("needs permission");
    case BotState::question:
        return QStringLiteral("is asking a question");
    case BotState::error:
        return QStringLiteral("failed");
    case BotState::finished:
        return QStringLiteral("finished");
    case BotState::ratelimit:
        return QStringLiteral("at its limit");
    case BotState::sleeping:
        return QStringLiteral("asleep");
    case BotState::dizzy:
        return QStringLiteral("dizzy");
    }
    return {};
}

QString inWords(const AgentTask &task)
{
    QStringList words;
    if (const AgentDefinition *agent = AgentCatalog::ofPill(task.id))
        words.append(agent->name);
    if (!task.name.isEmpty() && !words.contains(task.name))
        words.append(task.name);
    words.append(inWords(task.state));
    return words.join(QStringLiteral(", "));
}

} // namespace tirlo
