#include "ApprovalDesk.h"

#include "AgentQuestions.h"
#include "ApprovalReply.h"
#include "HookTasks.h"
#include "ReadSource.h"
#include "RequestReader.h"
#include "SessionBook.h"
#include "StandingGrants.h"
#include "core/AgentCatalog.h"
#include "core/AppState.h"
#include "core/IslandIntents.h"
#include "core/Json.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"
#include "platform/MainQueue.h"
#include "platform/SocketLine.h"
#include "platform/ThreadGroup.h"

#include <QJsonDocument>

#include <utility>

namespace tirlo {

namespace {

/// Ends before the relay's own limit of 118 seconds, so that the note can say who still waits.
constexpr double cardSeconds = 115;
constexpr double noteSeconds = 3;

QString handledNote(const QString &place)
{
    return QStringLiteral("Handled in %1.").arg(place);
}

QString waitingNote(const QString &place)
{
    return QStringLiteral("Still waiting in %1.").arg(place);
}

SessionKey keyOf(const ApprovalInfo &approval)
{
    return {approval.pillId, approval.sessionId};
}

/// Canonical text of a tool's input without what one agent adds for its user alone, and another
/// once the user has answered.
QString callKey(QJsonObject input)
{
    input.remove(QLatin1String("description"));
    input.remove(QLatin1String("answers"));
    return approvalInputKey(input);
}

QString agentIn(const QJsonObject &payload)
{
    return Json::text(payload, QLatin1String("agent_id")).value_or(QString());
}

AskedCall callOf(const ApprovalInfo &approval)
{
    return {approval.tool, callKey(approval.input), approval.agentId};
}

/// The tool call that the event tells of.
AskedCall callIn(const QJsonObject &payload)
{
    const auto tool = Json::text(payload, QLatin1String("tool_name"));
    const auto input = Json::object(payload, QLatin1String("tool_input"));
    return {tool.value_or(QString()), callKey(input.value_or(QJsonObject())), agentIn(payload)};
}

bool endsToolCall(const QString &event)
{
    return event == QLatin1String("PostToolUse") || event == QLatin1String("PostToolUseFailure");
}

bool endsSession(const QString &event)
{
    return event == QLatin1String("SessionEnd") || event == QLatin1String("Interrupt");
}

bool endsTurn(const QString &event)
{
    return event == QLatin1String("Stop") || event == QLatin1String("StopFailure")
        || event == QLatin1String("SubagentStop") || event == QLatin1String("UserPromptSubmit");
}

/// True when the event shows that a session no longer waits for an answer about the call. A
/// session and its subagents go on while one of them waits.
bool showsAnAnswer(const QString &event, const QJsonObject &payload, const AskedCall &asked)
{
    return endsSession(event) || (endsTurn(event) && agentIn(payload) == asked.agentId)
        || (endsToolCall(event) && callIn(payload) == asked);
}

/// True when whoever asks in the terminal goes on to another call, as it does once it was denied
/// one, or when the session says that it waits for a prompt.
bool goesOnToAnother(const QString &event, const QJsonObject &payload, const AskedCall &asked)
{
    const auto type = Json::text(payload, QLatin1String("notification_type"));
    return (event == QLatin1String("PreToolUse") && agentIn(payload) == asked.agentId)
        || (event == QLatin1String("Notification") && type == QLatin1String("idle_prompt"));
}

} // namespace

ApprovalDesk::ApprovalDesk(const HookContext &context, HookTasks &tasks, SessionBook &sessions,
                           ThreadGroup &writers)
    : m_context(context)
    , m_tasks(tasks)
    , m_sessions(sessions)
    , m_writers(writers)
{
}

ApprovalDesk::~ApprovalDesk() = default;

void ApprovalDesk::processPermissionRequest(FileDescriptor connection, const QJsonObject &payload)
{
    const HookOrigin origin = HookOrigin::of(payload);
    const auto route = routeOf(origin, m_context.state.anyTerminal);
    // Agents from outside have an interface of their own for this.
    if (!route || route->isExternal() || m_sessions.isPast(*route, origin)) {
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
    const std::optional<ApprovalInfo> older = state.pendingApproval;
    m_noteEnd.cancel();
    m_tasks.activeSessionId = origin.sessionId;
    m_tasks.upsertWorkspaceTask(pill, origin.projectName, origin.cwd);
    m_sessions.hear(*route, origin);
    m_sessions.setState({pill, origin.sessionId}, BotState::approval);
    const AgentDefinition *agent = AgentCatalog::ofPill(pill);
    // The same agents take an answer that goes back with the input.
    const bool takesMore = agent && agent->keepsStandingApprovals;
    const ApprovalInfo request{
        .id = ++m_lastId,
        .sessionId = origin.sessionId,
        .tool = tool,
        .inputKey = approvalInputKey(input),
        .pillId = pill,
        .agentId = agentIn(payload),
        .folder = origin.projectName,
        .input = input,
        .content = requestContent(payload),
        .grants = takesMore ? standingGrants(payload) : QList<StandingGrant>(),
        .questions = takesMore ? agentQuestions(payload) : QList<AgentQuestion>(),
    };
    state.pendingApproval = request;
    state.isPinned = true;
    m_context.sound.play(QStringLiteral("approval"));
    if (!m_focusBeforeApproval)
        m_focusBeforeApproval = state.focusId;
    state.focusId = pill;
    if (older)
        hand(*older, Then::asksInTerminal);
    Q_EMIT m_context.notifications.hookExpand(request.questions.isEmpty() ? IslandView::approval
                                                                          : IslandView::question);
    watch(std::move(connection), route->place);
}

void ApprovalDesk::sendApprovalDecision(const ApprovalAnswer &answer)
{
    if (m_source)
        this->answer(std::exchange(m_source, nullptr), replyLine(answer));
    settle(answer.decision == Decision::ask ? Then::asksInTerminal : Then::goesOn);
    m_context.island.leave(IslandView::approval);
    m_context.island.leave(IslandView::question);
}

bool ApprovalDesk::admits(const QString &event, const HookRoute &route, const HookOrigin &origin,
                          const QJsonObject &payload)
{
    const SessionKey key{route.pillId, origin.sessionId};
    const auto asked = m_sessions.askedInTerminal(key);
    const bool movesOn = asked
        && (showsAnAnswer(event, payload, *asked) || goesOnToAnother(event, payload, *asked));
    if (movesOn)
        m_sessions.moveOn(key);

    const std::optional<ApprovalInfo> approval = m_context.state.pendingApproval;
    if (!approval || keyOf(*approval) != key)
        return !asked || movesOn;

    const bool isSettled = showsAnAnswer(event, payload, callOf(*approval));
    if (isSettled)
        dismissApprovalCard(handledNote(route.place), Then::goesOn);
    return isSettled;
}

void ApprovalDesk::withdraw(const SessionKey &session)
{
    const std::optional<ApprovalInfo> approval = m_context.state.pendingApproval;
    if (approval && keyOf(*approval) == session)
        dismissApprovalCard(QStringLiteral("The agent has gone."), Then::goesOn);
}

/// Waits for the agent to hang up, since a relay writes nothing after its line, and for the time to
/// run out. Both mean this very request: a later one may well get the same descriptor.
void ApprovalDesk::watch(FileDescriptor connection, const QString &place)
{
    m_source = std::make_shared<ReadSource>(std::move(connection), [this, place] {
        dismissApprovalCard(handledNote(place), Then::goesOn);
    });
    const std::weak_ptr<ReadSource> watched = m_source;
    m_context.queue.after(cardSeconds, this, [this, watched, place] {
        if (m_source && m_source == watched.lock())
            dismissApprovalCard(waitingNote(place), Then::asksInTerminal);
    });
}

void ApprovalDesk::dismissApprovalCard(const QString &note, Then then)
{
    if (const auto source = std::exchange(m_source, nullptr))
        source->cancel();
    settle(then);
    m_context.island.say(note);
    m_noteEnd.cancel();
    m_noteEnd = m_context.queue.after(noteSeconds, this, [this] {
        // The note alone goes: not what the user or an agent has put in its place.
        if (m_context.state.view.value() == IslandView::note)
            Q_EMIT m_context.notifications.islandCollapse();
    });
}

/// Takes the request off the store.
void ApprovalDesk::settle(Then then)
{
    AppState &state = m_context.state;
    const std::optional<ApprovalInfo> approval = state.pendingApproval;
    state.pendingApproval = std::nullopt;
    state.isPinned = false;
    const QString pill = approval ? approval->pillId : QString();

    // Focus goes back unless the user moved it meanwhile or there is nothing to go back to.
    const auto prior = std::exchange(m_focusBeforeApproval, std::nullopt);
    if (prior && state.focusId.value() == pill && state.task(*prior))
        state.focusId = prior;
    if (approval)
        hand(*approval, then);
}

/// Hands the request back to its session.
void ApprovalDesk::hand(const ApprovalInfo &approval, Then then)
{
    if (then == Then::goesOn) {
        m_sessions.setState(keyOf(approval), BotState::working);
        return;
    }
    m_sessions.fallBack(keyOf(approval), callOf(approval));
    if (m_sessions.askedInTerminal(keyOf(approval)))
        m_tasks.appendStep(approval.pillId, SessionBook::waitingStep);
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
