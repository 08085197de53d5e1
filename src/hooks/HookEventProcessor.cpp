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

namespace tirlo {

namespace {

constexpr int longestOpening = 60;
constexpr int shownSessionCharacters = 8;
/// How long a pill shows that its turn has ended.
constexpr double finishedSeconds = 5.2;

} // namespace

HookEventProcessor::HookEventProcessor(const HookContext &context, HookTasks &tasks,
                                       ApprovalDesk &desk)
    : m_context(context)
    , m_tasks(tasks)
    , m_desk(desk)
{
}

void HookEventProcessor::processEvent(const QString &name, const QJsonObject &payload)
{
    const HookOrigin origin = HookOrigin::of(payload);
    const auto route = routeOf(origin);
    if (!route) {
        const QString &source = origin.terminal.isEmpty() ? origin.bundle : origin.terminal;
        m_context.writeLog(
            QStringLiteral("Ignored %1 from %2 (%3)").arg(name, source, origin.projectName));
        return;
    }

    const bool isFocus = m_context.state.focusId.value() == route->pillId;
    if (!m_desk.admits(name, *route, origin, payload))
        return;
    if (const Handler handler = handlerOf(name))
        (this->*handler)({payload, origin, *route, isFocus});
}

HookEventProcessor::Handler HookEventProcessor::handlerOf(const QString &name)
{
    using Self = HookEventProcessor;
    static const QHash<QString, Handler> handlers{
        {QStringLiteral("SessionStart"), &Self::startSession},
        {QStringLiteral("UserPromptSubmit"), &Self::submitPrompt},
        {QStringLiteral("PreToolUse"), &Self::useTool},
        {QStringLiteral("PostToolUse"), &Self::endTool},
        {QStringLiteral("PostToolUseFailure"), &Self::failTool},
        {QStringLiteral("Notification"), &Self::notify},
        {QStringLiteral("Stop"), &Self::stop},
        {QStringLiteral("StopFailure"), &Self::fail},
        {QStringLiteral("Interrupt"), &Self::interrupt},
        {QStringLiteral("SessionEnd"), &Self::endSession},
        {QStringLiteral("PreCompact"), &Self::compact},
        {QStringLiteral("SubagentStart"), &Self::startSubagent},
        {QStringLiteral("SubagentStop"), &Self::stopSubagent},
    };
    return handlers.value(name, nullptr);
}

void HookEventProcessor::startSession(const Event &event)
{
    activate(event);
    showOverview();
    m_context.sound.play(QStringLiteral("work"));
    const QString &label = event.route.isExternal() ? event.pill() : event.origin.projectName;
    m_context.writeLog(
        QStringLiteral("SessionStart %1 (%2)")
            .arg(label, firstCharacters(event.origin.sessionId, shownSessionCharacters)));
}

void HookEventProcessor::submitPrompt(const Event &event)
{
    activate(event);
    m_context.state.updateTask(event.pill(), BotState::thinking);
    setOutcome(event.pill(), {});
    appendOpening(event.pill(), event.text("prompt"));
    showOverview();
}

void HookEventProcessor::useTool(const Event &event)
{
    const QString tool = event.tool();
    const auto input = Json::object(event.payload, QLatin1String("tool_input"));
    activate(event);
    m_context.state.updateTask(event.pill(), BotState::working);
    m_tasks.appendStep(event.pill(), frenchStep(tool, input.value_or(QJsonObject())));
    m_context.writeLog(QStringLiteral("PreToolUse ") + tool);
}

void HookEventProcessor::endTool(const Event &event)
{
    m_context.state.updateTask(event.pill(), BotState::working);
}

void HookEventProcessor::failTool(const Event &event)
{
    m_context.state.updateTask(event.pill(), BotState::working);
    const QString error = plainText(event.text("error"));
    const QString failed = QStringLiteral("⚠ failed");
    m_tasks.appendStep(event.pill(),
                       error.isEmpty() ? failed : failed + QStringLiteral(" · ") + error);
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
        m_context.state.updateTask(event.pill(), BotState::idle);
        return;
    }
    const QString low = message.toLower();
    if (low.contains(QLatin1String("rate limit")) || low.contains(QLatin1String("limite d"))) {
        m_context.state.updateTask(event.pill(), BotState::ratelimit);
        m_context.sound.play(QStringLiteral("rate"));
    } else if (message.endsWith(u'?')) {
        m_context.state.updateTask(event.pill(), BotState::question);
        m_tasks.appendStep(event.pill(), message);
    }
}

void HookEventProcessor::stop(const Event &event)
{
    m_context.state.updateTask(event.pill(), BotState::finished);
    setOutcome(event.pill(),
               event.firstText({"last_assistant_message", "prompt_response", "message"}));
    appendOpening(event.pill(), event.text("message"));
    m_context.sound.play(QStringLiteral("finish"));
    showEnd(event, IslandView::finished, PillBadge::finished);

    // Only a request calls this off: a prompt within those seconds loses its state all the same.
    m_context.queue.after(finishedSeconds, this,
                          [this, pill = event.pill(), isExternal = event.route.isExternal(),
                           requests = m_desk.requestsOf(event.pill())] {
                              if (m_desk.requestsOf(pill) != requests)
                                  return;
                              if (isExternal) {
                                  m_context.state.removeTask(pill);
                                  return;
                              }
                              m_context.state.updateTask(pill, BotState::idle);
                              m_tasks.clearPillBadge(pill);
                          });
}

void HookEventProcessor::fail(const Event &event)
{
    // A subagent's failure is one step of the turn, which goes on.
    if (!event.text("agent_id").isEmpty()) {
        m_tasks.appendStep(event.pill(), QStringLiteral("• subagent failed"));
        return;
    }
    const bool isLimited = event.text("error") == QLatin1String("rate_limit");
    m_context.state.updateTask(event.pill(), isLimited ? BotState::ratelimit : BotState::error);
    setOutcome(event.pill(), event.firstText({"last_assistant_message", "error"}));
    m_context.sound.play(isLimited ? QStringLiteral("rate") : QStringLiteral("error"));
    showEnd(event, IslandView::error, PillBadge::error);
}

void HookEventProcessor::interrupt(const Event &event)
{
    m_tasks.activeSessionId.reset();
    m_context.state.updateTask(event.pill(), BotState::idle);
    m_tasks.clearPillBadge(event.pill());
}

void HookEventProcessor::endSession(const Event &event)
{
    m_tasks.activeSessionId.reset();
    m_context.state.removeTask(event.pill());
}

void HookEventProcessor::compact(const Event &event)
{
    m_tasks.appendStep(event.pill(), QStringLiteral("Résume · contexte"));
}

void HookEventProcessor::startSubagent(const Event &event)
{
    m_tasks.appendStep(event.pill(), QStringLiteral("+ subagent"));
}

void HookEventProcessor::stopSubagent(const Event &event)
{
    m_tasks.appendStep(event.pill(), QStringLiteral("• subagent done"));
}

void HookEventProcessor::activate(const Event &event)
{
    m_tasks.activeSessionId = event.origin.sessionId;
    // What it had finished is past, and the card would show the new step.
    if (event.isFocus)
        m_context.island.leave(IslandView::finished);
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
    m_context.state.updateTask(event.pill(), BotState::approval);
    m_tasks.appendStep(event.pill(), QStringLiteral("Waiting in the terminal"));
    if (!event.isFocus)
        m_tasks.setPillBadge(event.pill(), PillBadge::approval);
}

/// Keeps what the turn came to, for the card that tells of its end.
void HookEventProcessor::setOutcome(const QString &pill, const QString &markdown)
{
    m_context.state.editTask(
        pill, [words = plainText(markdown)](AgentTask &task) { task.outcome = words; });
}

/// Appends how an agent's or the user's text begins; nothing for an empty one.
void HookEventProcessor::appendOpening(const QString &pill, const QString &text)
{
    if (!text.isEmpty())
        m_tasks.appendStep(pill, firstCharacters(text, longestOpening));
}

QString HookEventProcessor::Event::text(const char *key) const
{
    return Json::text(payload, QLatin1String(key)).value_or(QString());
}

QString HookEventProcessor::Event::firstText(std::initializer_list<const char *> keys) const
{
    for (const char *key : keys) {
        if (const QString found = text(key); !found.isEmpty())
            return found;
    }
    return {};
}

QString HookEventProcessor::Event::tool() const
{
    return Json::text(payload, QLatin1String("tool_name")).value_or(QStringLiteral("Tool"));
}

} // namespace tirlo
