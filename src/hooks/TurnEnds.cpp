#include "TurnEnds.h"

#include "HookTasks.h"
#include "core/AppState.h"
#include "core/IslandIntents.h"
#include "core/PlainText.h"
#include "core/SoundEngine.h"

#include <algorithm>

namespace tirlo {

namespace {

/// How long a pill shows that its turn has ended.
constexpr double finishedSeconds = 5.2;

bool isEnd(IslandView view)
{
    return view == IslandView::finished || view == IslandView::error;
}

} // namespace

TurnEnds::TurnEnds(const HookContext &context, HookTasks &tasks, SessionBook &sessions)
    : m_context(context)
    , m_tasks(tasks)
    , m_sessions(sessions)
{
}

void TurnEnds::finish(const SessionKey &session, const QString &words, bool isFocus, bool stays)
{
    m_sessions.setState(session, BotState::finished);
    m_context.sound.play(QStringLiteral("finish"));
    show(session, IslandView::finished, words, isFocus);
    m_sessions.after(session, finishedSeconds, [this, session, stays] { settle(session, stays); });
}

void TurnEnds::fail(const SessionKey &session, const QString &words, bool isRateLimit, bool isFocus)
{
    m_sessions.setState(session, isRateLimit ? BotState::ratelimit : BotState::error);
    m_context.sound.play(isRateLimit ? QStringLiteral("rate") : QStringLiteral("error"));
    const bool hasTool = words.isEmpty() && m_failedTool.session == session;
    show(session, IslandView::error, hasTool ? m_failedTool.error : words, isFocus);
}

void TurnEnds::leave(const SessionKey &session)
{
    if (m_ended.value(session.pill) != session.id)
        return;
    const bool hadCard = hasCard(session);
    m_ended.remove(session.pill);
    m_context.state.editTask(session.pill, [](AgentTask &task) {
        task.outcome.clear();
        task.outcomeFolder.clear();
    });
    if (hadCard)
        m_context.island.leave(m_context.state.view);
}

void TurnEnds::end(const SessionKey &session)
{
    const bool isOpen = m_context.state.mode == IslandMode::expanded;
    if (isOpen && hasCard(session))
        m_sessions.after(session, finishedSeconds, [this, session] { end(session); });
    else
        m_sessions.end(session);
}

void TurnEnds::toolFailed(const SessionKey &session, const QString &error)
{
    m_failedTool = {session, error};
}

void TurnEnds::toolBegins(const SessionKey &session)
{
    if (m_failedTool.session == session)
        m_failedTool.session.reset();
}

void TurnEnds::show(const SessionKey &session, IslandView view, const QString &words, bool isFocus)
{
    m_ended.insert(session.pill, session.id);
    m_context.state.editTask(session.pill, [&, words = plainText(words)](AgentTask &task) {
        task.outcome = words;
        const auto own = std::ranges::find(task.sessions, session.id, &AgentSession::id);
        task.outcomeFolder = own == task.sessions.end() ? QString() : own->folder;
    });
    if (isFocus)
        m_tasks.expandIfNeeded(view);
}

/// Whether the island's card is that of the end of the session's turn.
bool TurnEnds::hasCard(const SessionKey &session) const
{
    const AppState &state = m_context.state;
    const std::optional<AgentTask> task = state.focusTask();
    return isEnd(state.view) && task && task->id == session.pill
        && m_ended.value(session.pill) == session.id;
}

/// The session shows its end no longer.
void TurnEnds::settle(const SessionKey &session, bool stays)
{
    if (!stays)
        return end(session);
    m_sessions.moveOn(session);
    m_sessions.setState(session, BotState::idle);
}

} // namespace tirlo
