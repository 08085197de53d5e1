#include "ApprovalDesk.h"

#include "AgentQuestions.h"
#include "ApprovalReply.h"
#include "HookTasks.h"
#include "ReadSource.h"
#include "RequestReader.h"
#include "SocketLine.h"
#include "StandingGrants.h"
#include "ThreadGroup.h"
#include "core/AgentCatalog.h"
#include "core/AppState.h"
#include "core/IslandIntents.h"
#include "core/Json.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"
#include "platform/MainQueue.h"

#include <QJsonDocument>

#include <utility>

namespace tirlo {

namespace {

/// Ends before the relay's own limit of 118 seconds, so that the note can say who still waits.
constexpr double cardSeconds = 115;
constexpr double noteSeconds = 3;

/// Where the agent of that pill asks by itself.
QString appName(const QString &pillId)
{
    const AgentDefinition *agent = AgentCatalog::ofPill(pillId);
    return agent ? agent->pill.name : pillId;
}

QString handledNote(const QString &pillId)
{
    return QStringLiteral("Handled in %1.").arg(appName(pillId));
}

QString waitingNote(const QString &pillId)
{
    return QStringLiteral("Still waiting in %1.").arg(appName(pillId));
}

/// True when the event tells of the very tool call that was asked about.
bool isSameCall(const ApprovalInfo &approval, const QJsonObject &payload)
{
    const QString tool = Json::text(payload, QLatin1String("tool_name")).value_or(QString());
    const auto input = Json::object(payload, QLatin1String("tool_input"));
    return tool == approval.tool
        && approvalInputKey(input.value_or(QJsonObject())) == approval.inputKey;
}

bool endsToolCall(const QString &event)
{
    return event == QLatin1String("PostToolUse") || event == QLatin1String("PostToolUseFailure");
}

bool movesSessionOn(const QString &event)
{
    return event == QLatin1String("Stop") || event == QLatin1String("StopFailure")
        || event == QLatin1String("UserPromptSubmit") || event == QLatin1String("SessionEnd")
        || event == QLatin1String("Interrupt");
}

} // namespace

ApprovalDesk::ApprovalDesk(const HookContext &context, HookTasks &tasks, ThreadGroup &writers)
    : m_context(context)
    , m_tasks(tasks)
    , m_writers(writers)
{
}

ApprovalDesk::~ApprovalDesk() = default;

void ApprovalDesk::processPermissionRequest(FileDescriptor connection, const QJsonObject &payload)
{
    const HookOrigin origin = HookOrigin::of(payload);
    const auto route = routeOf(origin);
    // Agents from outside have an interface of their own for this.
    if (!route || route->isExternal()) {
        refuse(std::move(connection));
        return;
    }

    const QString pill = route->pillId;
    const QString tool
        = Json::text(payload, QLatin1String("tool_name")).value_or(QStringLiteral("Tool"));
    const QJsonObject input
        = Json::object(payload, QLatin1String("tool_input")).value_or(QJsonObject());
    m_context.writeLog(QStringLiteral("PermissionRequest %1 [%2]").arg(tool, pill));

    // The older agent falls back to asking by itself.
    if (m_source)
        answer(std::exchange(m_source, nullptr), replyLine({.decision = Decision::ask}));

    AppState &state = m_context.state;
    ++m_requests[pill];
    m_tasks.activeSessionId = origin.sessionId;
    m_tasks.upsertWorkspaceTask(pill, origin.projectName, origin.cwd);
    state.updateTask(pill, BotState::approval);
    const AgentDefinition *agent = AgentCatalog::ofPill(pill);
    const bool keepsGrants = agent && agent->keepsStandingApprovals;
    const ApprovalInfo request{
        .id = ++m_lastId,
        .sessionId = origin.sessionId,
        .tool = tool,
        .inputKey = approvalInputKey(input),
        .pillId = pill,
        .input = input,
        .content = requestContent(payload),
        .grants = keepsGrants ? standingGrants(payload) : QList<StandingGrant>(),
        .questions = agentQuestions(payload),
    };
    state.pendingApproval = request;
    state.isPinned = true;
    m_context.sound.play(QStringLiteral("approval"));
    if (!m_focusBeforeApproval)
        m_focusBeforeApproval = state.focusId;
    state.focusId = pill;
    Q_EMIT m_context.notifications.hookExpand(request.questions.isEmpty() ? IslandView::approval
                                                                          : IslandView::question);
    watch(std::move(connection), pill);
}

void ApprovalDesk::sendApprovalDecision(const ApprovalAnswer &answer)
{
    if (m_source)
        this->answer(std::exchange(m_source, nullptr), replyLine(answer));
    settle();
    m_context.island.leave(IslandView::approval);
    m_context.island.leave(IslandView::question);
}

bool ApprovalDesk::admits(const QString &event, const HookRoute &route, const HookOrigin &origin,
                          const QJsonObject &payload)
{
    const std::optional<ApprovalInfo> approval = m_context.state.pendingApproval;
    if (!approval || approval->pillId != route.pillId)
        return true;

    const bool isSettled = origin.sessionId == approval->sessionId
        && (movesSessionOn(event) || (endsToolCall(event) && isSameCall(*approval, payload)));
    if (isSettled)
        dismissApprovalCard(handledNote(route.pillId));
    return isSettled;
}

/// Waits for the agent to hang up, since a relay writes nothing after its line, and for the time to
/// run out. Both mean this very request: a later one may well get the same descriptor.
void ApprovalDesk::watch(FileDescriptor connection, const QString &pill)
{
    m_source = std::make_shared<ReadSource>(
        std::move(connection), [this, pill] { dismissApprovalCard(handledNote(pill)); });
    const std::weak_ptr<ReadSource> watched = m_source;
    m_context.queue.after(cardSeconds, this, [this, watched, pill] {
        if (m_source && m_source == watched.lock())
            dismissApprovalCard(waitingNote(pill));
    });
}

void ApprovalDesk::dismissApprovalCard(const QString &note)
{
    if (const auto source = std::exchange(m_source, nullptr))
        source->cancel();
    settle();
    m_context.island.say(note);
    m_context.queue.after(noteSeconds, this,
                          [this] { Q_EMIT m_context.notifications.islandCollapse(); });
}

/// Takes the request off the store; its agent goes on.
void ApprovalDesk::settle()
{
    AppState &state = m_context.state;
    const std::optional<ApprovalInfo> approval = state.pendingApproval;
    const QString pill
        = approval ? approval->pillId : QString(AgentCatalog::pillId(AgentId::claudeCode));
    state.pendingApproval = std::nullopt;
    state.isPinned = false;
    state.updateTask(pill, BotState::working);
    m_tasks.clearPillBadge(pill);

    // Focus goes back unless the user moved it meanwhile or there is nothing to go back to.
    const auto prior = std::exchange(m_focusBeforeApproval, std::nullopt);
    if (prior && state.focusId.value() == pill && state.task(*prior))
        state.focusId = prior;
}

/// Writes the reply off the main thread; the source closes the connection afterwards.
void ApprovalDesk::answer(std::shared_ptr<ReadSource> source, const QByteArray &reply)
{
    source->suspend();
    m_writers.start([&queue = m_context.queue, source = std::move(source), reply]() mutable {
        sendLine(source->descriptor(), reply);
        queue.post([source = std::move(source)] { source->cancel(); });
    });
}

/// Leaves the question to the agent, which never had a card.
void ApprovalDesk::refuse(FileDescriptor connection)
{
    const auto shared = std::make_shared<FileDescriptor>(std::move(connection));
    m_writers.start([shared] { sendLine(shared->get(), replyLine({.decision = Decision::ask})); });
}

QString approvalInputKey(const QJsonObject &input)
{
    // Objects keep their members sorted by key.
    return input.isEmpty() ? QString()
                           : QString::fromUtf8(QJsonDocument(input).toJson(QJsonDocument::Compact));
}

} // namespace tirlo
