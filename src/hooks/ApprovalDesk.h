#pragma once

#include "FileDescriptor.h"
#include "HookContext.h"
#include "HookRouting.h"
#include "core/model/ApprovalAnswer.h"

#include <QHash>
#include <QJsonObject>
#include <QObject>

#include <memory>
#include <optional>

namespace tirlo {

class HookTasks;
class ReadSource;
class ThreadGroup;

/// The one permission request on show: who waits for it, how it ends, and what ends it.
///
/// The waiting agent is a connection that stays open. A request ends by the user's answer, by the
/// agent hanging up, by an event which shows that it was settled in the agent, after 115 seconds,
/// or by a newer request.
class ApprovalDesk : public QObject
{
public:
    /// A desk whose replies are written by `writers`.
    ApprovalDesk(const HookContext &context, HookTasks &tasks, ThreadGroup &writers);
    ~ApprovalDesk() override;

    /// Puts the request on show; one that is not for the island is handed back with "ask".
    void processPermissionRequest(FileDescriptor connection, const QJsonObject &payload);

    /// Answers the waiting agent.
    void sendApprovalDecision(const ApprovalAnswer &answer);

    /// Whether an event may go on; one for the pill on show may first dismiss its card.
    ///
    /// Nothing moves a pill that waits for an answer except what shows that the answer was given.
    [[nodiscard]] bool admits(const QString &event, const HookRoute &route,
                              const HookOrigin &origin, const QJsonObject &payload);

    /// How many requests of the pill have been on show so far.
    [[nodiscard]] int requestsOf(const QString &pill) const { return m_requests.value(pill); }

private:
    void watch(FileDescriptor connection, const QString &pill);
    void dismissApprovalCard(const QString &note);
    void settle();
    void answer(std::shared_ptr<ReadSource> source, const QByteArray &reply);
    void refuse(FileDescriptor connection);

    HookContext m_context;
    HookTasks &m_tasks;
    ThreadGroup &m_writers;
    /// The connection of the request on show; null without one.
    std::shared_ptr<ReadSource> m_source;
    std::optional<QString> m_focusBeforeApproval;
    QHash<QString, int> m_requests;
    /// Of the requests of this run.
    quint64 m_lastId = 0;
};

/// Canonical text of a tool's input, the same for the same members in any order; "" when empty.
[[nodiscard]] QString approvalInputKey(const QJsonObject &input);

} // namespace tirlo
