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
/// How long the agent's own account is looked into before a turn without words counts as over.
constexpr double wordlessSeconds = 9;
/// How long a session that was cleared keeps its pill for the one that takes its place.
constexpr double clearedSeconds = 2;

} // namespace

HookEventProcessor::HookEventProcessor(const HookContext &context, HookTasks &tasks,
                                       SessionBook &sessions, ApprovalDesk &desk)
    : m_context(context)
    , m_tasks(tasks)
    , m_sessions(sessions)
    , m_desk(desk)
    , m_ends(context, tasks, sessions)
    , m_silentEnds(
          sessions, context.queue,
          [this](const SessionKey &session, const SilentEnd &end) { endInSilence(session, end); })
{
    m_sessions.changed = [this] { m_silentEnds.wake(); };
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
    m_sessions.hear(*route, origin, !event.isWordless());
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
    m_ends.toolBegins(event.session());
    appendOpening(event, event.text("prompt"));
    showOverview();
}

void HookEventProcessor::useTool(const Event &event)
{
    const QString tool = event.tool();
    const auto input = Json::object(event.payload, QLatin1String("tool_input"));
    m_ends.toolBegins(event.session());
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
    m_ends.toolFailed(event.session(), error);
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
    const QString words = event.firstText({"last_assistant_message", "prompt_response", "message"});
    // Its agent's own account tells whether it was broken off or has failed.
    if (event.isWordless()) {
        m_sessions.after(event.session(), wordlessSeconds,
                         [this, session = event.session()] { rest(session); });
        return;
    }
    appendOpening(event, event.text("message"));
    m_ends.finish(event.session(), words, event.isFocus, !event.route.isExternal());
}

void HookEventProcessor::fail(const Event &event)
{
    // A subagent's failure is one step of the turn, which goes on.
    if (event.isSubagents()) {
        appendStep(event, QStringLiteral("• subagent failed"));
        return;
    }
    const QString error = event.text("error");
    QString words = event.text("last_assistant_message");
    // The name of an error says little, but more than nothing.
    if (words.isEmpty() && error != QLatin1String("unknown"))
        words = QString(error).replace(u'_', u' ');
    m_ends.fail(event.session(), words, error == QLatin1String("rate_limit"), event.isFocus);
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
    m_ends.end(event.session());
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
    // Its subagents may go on by themselves.
    if (!event.isSubagents())
        m_ends.leave(event.session());
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
    m_ends.end(session);
}

/// A turn of whose end the agent's own account tells alone.
void HookEventProcessor::endInSilence(const SessionKey &session, const SilentEnd &end)
{
    if (end.kind == SilentEnd::Kind::brokenOff) {
        rest(session);
        return;
    }
    m_sessions.moveOn(session);
    m_ends.fail(session, end.words, end.isRateLimit,
                m_context.state.focusId.value() == session.pill);
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

bool HookEventProcessor::Event::isWordless() const
{
    return text("prompt_response") == noResponse;
}

QString HookEventProcessor::Event::tool() const
{
    return Json::text(payload, QLatin1String("tool_name")).value_or(QStringLiteral("Tool"));
}

} // namespace tirlo
