#include "HookServer.h"

#include "RelayScripts.h"

#include <utility>

namespace tirlo {

HookServer::HookServer(const HookContext &context, const Paths &paths, QObject *parent)
    : QObject(parent)
    , m_paths(paths)
    , m_tasks(context.state, context.notifications)
    , m_sessions(context.state, context.queue, context.processes)
    , m_desk(context, m_tasks, m_sessions, m_writers)
    , m_processor(context, m_tasks, m_sessions, m_desk)
    , m_trouble(context)
    , m_sockets(
          context.queue, paths.socketPath(),
          {.event = [this](const QString &name,
                           const QJsonObject &payload) { m_processor.processEvent(name, payload); },
           .permissionRequest =
               [this](FileDescriptor connection, const QJsonObject &payload) {
                   m_desk.processPermissionRequest(std::move(connection), payload);
               },
           .trouble = [this](const QString &trouble) { setTrouble(trouble); }})
{
}

void HookServer::start()
{
    RelayScripts::installHookScript(m_paths);
    m_sockets.start();
}

/// Whatever took the socket away may have taken the scripts that lead to it.
void HookServer::setTrouble(const QString &trouble)
{
    if (trouble.isEmpty())
        RelayScripts::installHookScript(m_paths);
    m_trouble.set(trouble);
}

void HookServer::sendApprovalDecision(const ApprovalAnswer &answer)
{
    m_desk.sendApprovalDecision(answer);
}

std::optional<QString> HookServer::activeSessionId() const
{
    return m_tasks.activeSessionId;
}

} // namespace tirlo
