#pragma once

#include "ApprovalDesk.h"
#include "HookContext.h"
#include "HookEventProcessor.h"
#include "HookSocketServer.h"
#include "HookTasks.h"
#include "SessionBook.h"
#include "TroubleNote.h"
#include "core/Paths.h"
#include "platform/ThreadGroup.h"

#include <QObject>

namespace tirlo {

/// The hooks of AI coding agents: takes their events and permission requests and answers them.
///
/// Everything here belongs to the main thread.
class HookServer : public QObject
{
    Q_OBJECT

public:
    /// A server for the socket and scripts at these paths; the context outlives it.
    HookServer(const HookContext &context, const Paths &paths, QObject *parent = nullptr);

    /// Writes the relay scripts and begins to listen; called once.
    void start();

    /// Answers the request on show.
    void sendApprovalDecision(const ApprovalAnswer &answer);

    /// The last session that started, prompted, ran a tool or asked; none once it has ended.
    [[nodiscard]] std::optional<QString> activeSessionId() const;

private:
    void setTrouble(const QString &trouble);

    const Paths m_paths;
    HookTasks m_tasks;
    SessionBook m_sessions;
    ThreadGroup m_writers;
    ApprovalDesk m_desk;
    HookEventProcessor m_processor;
    TroubleNote m_trouble;
    HookSocketServer m_sockets;
};

} // namespace tirlo
