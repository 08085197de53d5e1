#include "ApprovalReply.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace tirlo {

QByteArray replyLine(const ApprovalAnswer &answer)
{
    const Decision decision = answer.decision;
    QJsonObject reply{{QStringLiteral("permissionDecision"), rawText(decision)}};
    if (decision == Decision::deny && !answer.message.isEmpty())
        reply.insert(QLatin1String("message"), answer.message);
    const bool approves = decision == Decision::allow || decision == Decision::always;
    if (approves && answer.updatedInput)
        reply.insert(QLatin1String("updatedInput"), *answer.updatedInput);
    if (decision == Decision::always) {
        QJsonArray kept;
        for (const QJsonObject &suggestion : answer.updatedPermissions)
            kept.append(suggestion);
        reply.insert(QLatin1String("updatedPermissions"), kept);
    }
    return QJsonDocument(reply).toJson(QJsonDocument::Compact);
}

} // namespace tirlo
