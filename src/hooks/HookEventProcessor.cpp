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

/// What one agent says of a turn without words.
constexpr QLatin1String noResponse("[no response text]");
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
    m_sessions.changed = [this] { m_interrupts.wake(); };
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
    const Event event{payload, origin, *route, isFocus};
    if (row.begins)
        m_sessions.greet(event.session());
    if (m_sessions.isPast(*route, origin) || !m_desk.admits(name, *route, origin, payload)
        || !row.handle)
        return;
    if (row.opens)
        activate(event);
    m_sessions.hear(*route, origin);
    if (row.opens && !event.isSubagents())
        m_sessions.resume(event.session());
    (this->*row.handle)(event);
}

HookEventProcessor::Row HookEventProcessor::rowOf(const QString &name)
{
    using Self = HookEventProcessor;
    static const QHash<QString, Row> rows{
        {QStringLiteral("SessionStart"), {&Self::startSession, true, true}},
        {QStringLiteral("UserPromptSubmit"), {&Self::submitPrompt, true, true}},
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
    m_failedTool.session.reset();
    appendOpening(event, event.text("prompt"));
    showOverview();
}

void HookEventProcessor::useTool(const Event &event)
{
    const QString tool = event.tool();
    const auto input = Json::object(event.payload, QLatin1String("tool_input"));
    if (m_failedTool.session == event.session())
        m_failedTool.session.reset();
    goOn(event);
    appendStep(event, frenchStep(tool, input.value_or(QJsonObject())));
    m_context.writeLog(QStringLiteral("PreToolUse ") + tool);
}

void HookEventProcessor::endTool(const Event &event)
{
    goOn(event);
}

void HookEventProcessor::failTool(const Event &event)
{
    if (event.payload.value(QLatin1String("is_interrupt")).toBool() && !event.isSubagents()) {
        rest(event.session());
        return;
    }
    goOn(event);
    const QString error = plainText(event.text("error"));
    m_failedTool = {event.session(), error};
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
    const QString words = event.firstText({"last_assistant_message", "prompt_response", "message"});
    appendOpening(event, event.text("message"));
    m_context.sound.play(QStringLiteral("finish"));
    showEnd(event, IslandView::finished, words == noResponse ? QString() : words);

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
    if (event.isSubagents()) {
        appendStep(event, QStringLiteral("• subagent failed"));
        return;
    }
    const bool isLimited = event.text("error") == QLatin1String("rate_limit");
    m_sessions.setState(event.session(), isLimited ? BotState::ratelimit : BotState::error);
    m_context.sound.play(isLimited ? QStringLiteral("rate") : QStringLiteral("error"));
    showEnd(event, IslandView::error, failureOf(event));
}

/// The agent's own words for what went wrong, else those of the tool that failed last, else the
/// name of the error where that says anything.
QString HookEventProcessor::failureOf(const Event &event) const
{
    if (QString words = event.text("last_assistant_message"); !words.isEmpty())
        return words;
    if (m_failedTool.session == event.session() && !m_failedTool.error.isEmpty())
        return m_failedTool.error;
    const QString name = event.text("error");
    return name == QLatin1String("unknown") ? QString() : QString(name).replace(u'_', u' ');
}

void HookEventProcessor::interrupt(const Event &event)
{
    m_tasks.activeSessionId.reset();
    rest(event.session());
}

void HookEventProcessor::endSession(const Event &event)
{
    m_tasks.activeSessionId.reset();
    m_sessions.sayGoodbye(event.session());
    // The agent goes on at once, with a new session.
    if (event.text("reason") == QLatin1String("clear")) {
        rest(event.session());
        m_cleared = event.session();
        m_sessions.after(event.session(), clearedSeconds, [this, session = event.session()] {
            m_cleared.reset();
            m_sessions.end(session);
        });
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
    leaveEnd(event);
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

void HookEventProcessor::showEnd(const Event &event, IslandView view, const QString &outcome)
{
    setOutcome(event.pill(), outcome);
    m_ended.insert(event.pill(), event.origin.sessionId);
    if (event.isFocus)
        m_tasks.expandIfNeeded(view);
}

/// A session that goes on takes the end of its last turn with it. Its subagents may go on by
/// themselves.
void HookEventProcessor::leaveEnd(const Event &event)
{
    if (event.isSubagents() || m_ended.value(event.pill()) != event.origin.sessionId)
        return;
    m_ended.remove(event.pill());
    setOutcome(event.pill(), {});
    if (event.isFocus) {
        m_context.island.leave(IslandView::finished);
        m_context.island.leave(IslandView::error);
    }
}

/// The session works. A subagent that outlives the turn does not make it go on.
void HookEventProcessor::goOn(const Event &event)
{
    if (!event.isSubagents() || m_sessions.stateOf(event.session()) != BotState::finished)
        m_sessions.setState(event.session(), BotState::working);
}

/// Shows, without a card, that the agent asks where it runs.
void HookEventProcessor::waitInTerminal(const Event &event)
{
    m_sessions.setState(event.session(), BotState::approval);
    appendStep(event, SessionBook::waitingStep);
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
