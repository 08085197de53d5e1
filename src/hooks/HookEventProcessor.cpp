#include "HookEventProcessor.h"

#include "ApprovalDesk.h"
#include "HookTasks.h"
#include "StepWording.h"
#include "core/AppState.h"
#include "core/IslandIntents.h"
#include "core/Json.h"
#include "core/PlainText.h"
#include "core/SoundEngine.h"
#include "core/Text.h"
#include "platform/MainQueue.h"

#include <QHash>

#include <utility>

namespace tirlo {

namespace {

constexpr int longestOpening = 60;
constexpr int shownSessionCharacters = 8;
/// How long a pill shows that its turn has ended.
constexpr double finishedSeconds = 5.2;
/// How long a session that was cleared keeps its pill for the one that takes its place.
constexpr double clearedSeconds = 2;

} // namespace

HookEventProcessor::HookEventProcessor(const HookContext &context, HookTasks &tasks,
                                       SessionBook &sessions, ApprovalDesk &desk)
    : m_context(context)
    , m_tasks(tasks)
    , m_sessions(sessions)
    , m_desk(desk)
    , m_interrupts(sessions, context.queue, [this](const SessionKey &session) { rest(session); })
{
    m_sessions.processEnded = [this](const SessionKey &session) { endWithProcess(session); };
}

void HookEventProcessor::processEvent(const QString &name, const QJsonObject &payload)
{
    const HookOrigin origin = HookOrigin::of(payload);
    const auto route = routeOf(origin, m_context.state.anyTerminal);
    if (!route) {
        const QString &source = origin.terminal.isEmpty() ? origin.bundle : origin.terminal;
        m_context.writeLog(QStringLiteral("Ignored %1 from %2 (%3): the setting anyTerminal is off")
                               .arg(name, source, origin.projectName));
        return;
    }

    const bool isFocus = m_context.state.focusId.value() == route->pillId;
    const Row row = rowOf(name);
    if (m_sessions.isPast(origin) || !m_desk.admits(name, *route, origin, payload) || !row.handle)
        return;
    const Event event{payload, origin, *route, isFocus};
    if (row.opens)
        activate(event);
    m_sessions.hear(*route, origin);
    // What it had finished is past.
    if (row.opens && m_sessions.resume(event.session()))
        m_tasks.clearPillBadge(event.pill());
    (this->*row.handle)(event);
    m_interrupts.wake();
}

HookEventProcessor::Row HookEventProcessor::rowOf(const QString &name)
{
    using Self = HookEventProcessor;
    static const QHash<QString, Row> rows{
        {QStringLiteral("SessionStart"), {&Self::startSession, true}},
        {QStringLiteral("UserPromptSubmit"), {&Self::submitPrompt, true}},
        {QStringLiteral("PreToolUse"), {&Self::useTool, true}},
        {QStringLiteral("PostToolUse"), {&Self::endTool}},
        {QStringLiteral("PostToolUseFailure"), {&Self::failTool}},
        {QStringLiteral("Notification"), {&Self::notify}},
        {QStringLiteral("Stop"), {&Self::stop}},
        {QStringLiteral("StopFailure"), {&Self::fail}},
        {QStringLiteral("Interrupt"), {&Self::interrupt}},
        {QStringLiteral("SessionEnd"), {&Self::endSession}},
        {QStringLiteral("PreCompact"), {&Self::compact}},
        {QStringLiteral("SubagentStart"), {&Self::startSubagent}},
        {QStringLiteral("SubagentStop"), {&Self::stopSubagent}},
    };
    return rows.value(name, {});
}

void HookEventProcessor::startSession(const Event &event)
{
    // The same session, amid its turn, with less to remember.
    if (event.text("source") == QLatin1String("compact"))
        return;
    takePlaceOfCleared(event);
    showOverview();
    m_context.sound.play(QStringLiteral("work"));
    const QString &label = event.route.isExternal() ? event.pill() : event.origin.projectName;
    m_context.writeLog(
        QStringLiteral("SessionStart %1 (%2)")
            .arg(label, firstCharacters(event.origin.sessionId, shownSessionCharacters)));
}

void HookEventProcessor::submitPrompt(const Event &event)
{
    m_sessions.setState(event.session(), BotState::thinking);
    setOutcome(event.pill(), {});
    appendOpening(event, event.text("prompt"));
    showOverview();
}

void HookEventProcessor::useTool(const Event &event)
{
    const QString tool = event.tool();
    const auto input = Json::object(event.payload, QLatin1String("tool_input"));
    m_sessions.setState(event.session(), BotState::working);
    appendStep(event, frenchStep(tool, input.value_or(QJsonObject())));
    m_context.writeLog(QStringLiteral("PreToolUse ") + tool);
}

void HookEventProcessor::endTool(const Event &event)
{
    m_sessions.setState(event.session(), BotState::working);
}

void HookEventProcessor::failTool(const Event &event)
{
    m_sessions.setState(event.session(), BotState::working);
    const QString error = plainText(event.text("error"));
    const QString failed = QStringLiteral("⚠ failed");
    appendStep(event, error.isEmpty() ? failed : failed + QStringLiteral(" · ") + error);
}

void HookEventProcessor::notify(const Event &event)
{
    const QString message = event.text("message");
    const QString type = event.text("notification_type");
    // The agent asks in its own terminal, or waits there for a prompt.
    if (type == QLatin1String("permission_prompt") || type == QLatin1String("ToolPermission")) {
        waitInTerminal(event);
        return;
    }
    if (type == QLatin1String("idle_prompt")) {
        rest(event.session());
        return;
    }
    const QString low = message.toLower();
    if (low.contains(QLatin1String("rate limit")) || low.contains(QLatin1String("limite d"))) {
        m_sessions.setState(event.session(), BotState::ratelimit);
        m_context.sound.play(QStringLiteral("rate"));
    } else if (message.endsWith(u'?')) {
        m_sessions.setState(event.session(), BotState::question);
        appendStep(event, message);
    }
}

void HookEventProcessor::stop(const Event &event)
{
    m_sessions.setState(event.session(), BotState::finished);
    setOutcome(event.pill(),
               event.firstText({"last_assistant_message", "prompt_response", "message"}));
    appendOpening(event, event.text("message"));
    m_context.sound.play(QStringLiteral("finish"));
    showEnd(event, IslandView::finished, PillBadge::finished);

    m_sessions.after(event.session(), finishedSeconds,
                     [this, session = event.session(), isExternal = event.route.isExternal()] {
                         if (isExternal)
                             m_sessions.end(session);
                         else
                             rest(session);
                     });
}

void HookEventProcessor::fail(const Event &event)
{
    // A subagent's failure is one step of the turn, which goes on.
    if (!event.text("agent_id").isEmpty()) {
        appendStep(event, QStringLiteral("• subagent failed"));
        return;
    }
    const bool isLimited = event.text("error") == QLatin1String("rate_limit");
    m_sessions.setState(event.session(), isLimited ? BotState::ratelimit : BotState::error);
    setOutcome(event.pill(), event.firstText({"last_assistant_message", "error"}));
    m_context.sound.play(isLimited ? QStringLiteral("rate") : QStringLiteral("error"));
    showEnd(event, IslandView::error, PillBadge::error);
}

void HookEventProcessor::interrupt(const Event &event)
{
    m_tasks.activeSessionId.reset();
    rest(event.session());
}

void HookEventProcessor::endSession(const Event &event)
{
    m_tasks.activeSessionId.reset();
    // The agent goes on at once, with a new session.
    if (event.text("reason") == QLatin1String("clear")) {
        rest(event.session());
        m_cleared = event.session();
        m_sessions.after(event.session(), clearedSeconds,
                         [this, session = event.session()] { m_sessions.end(session); });
        return;
    }
    m_sessions.end(event.session());
}

void HookEventProcessor::compact(const Event &event)
{
    appendStep(event, QStringLiteral("Résume · contexte"));
}

void HookEventProcessor::startSubagent(const Event &event)
{
    appendStep(event, QStringLiteral("+ subagent"));
}

void HookEventProcessor::stopSubagent(const Event &event)
{
    appendStep(event, QStringLiteral("• subagent done"));
}

void HookEventProcessor::activate(const Event &event)
{
    m_tasks.activeSessionId = event.origin.sessionId;
    // What it had finished is past, and the card would show the new step.
    if (event.isFocus) {
        m_context.island.leave(IslandView::finished);
        m_context.island.leave(IslandView::error);
    }
    if (event.route.isExternal())
        m_tasks.upsertExternalAgent(event.pill(), *event.route.externalAgent);
    else
        m_tasks.upsertWorkspaceTask(event.pill(), event.origin.projectName, event.origin.cwd);
}

void HookEventProcessor::showOverview()
{
    if (m_context.state.isPresent)
        m_tasks.expandIfNeeded(IslandView::overview);
}

void HookEventProcessor::showEnd(const Event &event, IslandView view, PillBadge badge)
{
    if (event.isFocus)
        m_tasks.expandIfNeeded(view);
    else
        m_tasks.setPillBadge(event.pill(), badge);
}

/// Shows, without a card, that the agent asks where it runs.
void HookEventProcessor::waitInTerminal(const Event &event)
{
    m_sessions.setState(event.session(), BotState::approval);
    appendStep(event, SessionBook::waitingStep);
    if (!event.isFocus)
        m_tasks.setPillBadge(event.pill(), PillBadge::approval);
}

/// Keeps what the turn came to, for the card that tells of its end.
void HookEventProcessor::setOutcome(const QString &pill, const QString &markdown)
{
    m_context.state.editTask(
        pill, [words = plainText(markdown)](AgentTask &task) { task.outcome = words; });
}

void HookEventProcessor::appendStep(const Event &event, const QString &step)
{
    m_tasks.appendStep(event.pill(), step);
    m_sessions.setStep(event.session(), step);
}

/// Appends how an agent's or the user's text begins; nothing for an empty one.
void HookEventProcessor::appendOpening(const Event &event, const QString &text)
{
    if (!text.isEmpty())
        appendStep(event, firstCharacters(text, longestOpening));
}

/// Lets the session that was cleared go, and with it what it did, once another has come.
void HookEventProcessor::takePlaceOfCleared(const Event &event)
{
    const std::optional<SessionKey> cleared = std::exchange(m_cleared, std::nullopt);
    if (!cleared || cleared->pill != event.pill())
        return;
    if (*cleared == event.session())
        return rest(*cleared);
    m_sessions.end(*cleared);
    m_context.state.editTask(event.pill(), [](AgentTask &task) {
        if (task.sessions.size() > 1)
            return;
        task.steps.clear();
        task.stepIndex = 0;
        task.outcome.clear();
    });
}

/// The session does nothing any more, and has nothing to show for it.
void HookEventProcessor::rest(const SessionKey &session)
{
    m_sessions.moveOn(session);
    m_sessions.setState(session, BotState::idle);
    m_tasks.clearPillBadge(session.pill);
}

/// Ends a session that could not say so itself.
void HookEventProcessor::endWithProcess(const SessionKey &session)
{
    m_context.writeLog(QStringLiteral("Process gone [%1]").arg(session.pill));
    if (m_tasks.activeSessionId == session.id)
        m_tasks.activeSessionId.reset();
    m_desk.withdraw(session);
    m_sessions.end(session);
}

QString HookEventProcessor::Event::text(const char *key) const
{
    return Json::text(payload, QLatin1String(key)).value_or(QString());
}

QString HookEventProcessor::Event::firstText(std::initializer_list<const char *> keys) const
{
    for (const char *key : keys) {
        if (QString found = text(key); !found.isEmpty())
            return found;
    }
    return {};
}

QString HookEventProcessor::Event::tool() const
{
    return Json::text(payload, QLatin1String("tool_name")).value_or(QStringLiteral("Tool"));
}

} // namespace tirlo
