#pragma once

#include "HookContext.h"
#include "HookRouting.h"
#include "core/model/ApprovalAnswer.h"
#include "core/model/ApprovalInfo.h"
#include "platform/FileDescriptor.h"
#include "platform/MainQueue.h"

#include <QJsonObject>
#include <QObject>

#include <memory>
#include <optional>

namespace tirlo {

class HookTasks;
class ReadSource;
class SessionBook;
struct SessionKey;
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
    ApprovalDesk(const HookContext &context, HookTasks &tasks, SessionBook &sessions,
                 ThreadGroup &writers);
    ~ApprovalDesk() override;

    /// Puts the request on show; one that is not for the island is handed back with "ask".
    void processPermissionRequest(FileDescriptor connection, const QJsonObject &payload);

    /// Answers the waiting agent.
    void sendApprovalDecision(const ApprovalAnswer &answer);

    /// Whether an event may go on; one of the session on show may first dismiss its card.
    ///
    /// Nothing moves a session that waits for an answer, here or in its terminal, except what shows
    /// that the answer was given.
    [[nodiscard]] bool admits(const QString &event, const HookRoute &route,
                              const HookOrigin &origin, const QJsonObject &payload);

    /// Takes the session's request off, since nobody is left to be answered.
    void withdraw(const SessionKey &session);

private:
    /// Whether the session goes on by itself, or asks in its own terminal.
    enum class Then { goesOn, asksInTerminal };

    void watch(FileDescriptor connection, const QString &place);
    void dismissApprovalCard(const QString &note, Then then);
    void settle(Then then);
    void hand(const ApprovalInfo &approval, Then then);
    void answer(std::shared_ptr<ReadSource> source, const QByteArray &reply);
    void refuse(FileDescriptor connection);

    HookContext m_context;
    HookTasks &m_tasks;
    SessionBook &m_sessions;
    ThreadGroup &m_writers;
    /// The connection of the request on show; null without one.
    std::shared_ptr<ReadSource> m_source;
    std::optional<QString> m_focusBeforeApproval;
    WorkItem m_noteEnd;
    /// Of the requests of this run.
    quint64 m_lastId = 0;
};

/// Canonical text of a tool's input, the same for the same members in any order; "" when empty.
[[nodiscard]] QString approvalInputKey(const QJsonObject &input);

} // namespace tirlo
