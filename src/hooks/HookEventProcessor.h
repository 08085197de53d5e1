#pragma once

#include "HookContext.h"
#include "HookRouting.h"
#include "SessionBook.h"
#include "SilentEndWatch.h"
#include "TurnEnds.h"
#include "core/model/AgentTask.h"
#include "core/model/IslandView.h"

#include <QJsonObject>
#include <QObject>

namespace tirlo {

class ApprovalDesk;
class HookTasks;

/// Turns the events of agents into pills, their states and steps, sounds and an opening island.
class HookEventProcessor : public QObject
{
public:
    HookEventProcessor(const HookContext &context, HookTasks &tasks, SessionBook &sessions,
                       ApprovalDesk &desk);

    /// Handles one event that is no permission request; unknown names and sources do nothing.
    void processEvent(const QString &name, const QJsonObject &payload);

private:
    struct Event
    {
        const QJsonObject &payload;
        const HookOrigin &origin;
        const HookRoute &route;
        /// The pill was in focus when the event came.
        bool isFocus;

        [[nodiscard]] const QString &pill() const { return route.pillId; }
        [[nodiscard]] SessionKey session() const { return {route.pillId, origin.sessionId}; }
        [[nodiscard]] QString text(const char *key) const;
        /// The first of these that is there and not empty.
        [[nodiscard]] QString firstText(std::initializer_list<const char *> keys) const;
        [[nodiscard]] QString tool() const;
        /// It ends a turn of which there is nothing to say, whether that was broken off or failed.
        [[nodiscard]] bool isWordless() const;
        /// It is a subagent's, whose turn is not the session's.
        [[nodiscard]] bool isSubagents() const { return !text("agent_id").isEmpty(); }
    };
    struct Row
    {
        void (HookEventProcessor::*handle)(const Event &);
        /// It shows that the session is alive, so that its pill has to be there.
        bool opens = false;
        /// It is how a session starts, or starts anew.
        bool begins = false;
    };

    [[nodiscard]] static Row rowOf(const QString &name);

    void startSession(const Event &event);
    void submitPrompt(const Event &event);
    void useTool(const Event &event);
    void endTool(const Event &event);
    void failTool(const Event &event);
    void notify(const Event &event);
    void stop(const Event &event);
    void fail(const Event &event);
    void interrupt(const Event &event);
    void endSession(const Event &event);
    void compact(const Event &event);
    void startSubagent(const Event &event);
    void stopSubagent(const Event &event);

    /// Makes the session the active one and sees that its pill is there.
    void activate(const Event &event);
    void showOverview();
    void goOn(const Event &event);
    void waitInTerminal(const Event &event);
    void appendStep(const Event &event, const QString &step);
    void appendOpening(const Event &event, const QString &text);
    void takePlaceOfCleared(const Event &event);
    void rest(const SessionKey &session);
    void endWithProcess(const SessionKey &session);
    void endInSilence(const SessionKey &session, const SilentEnd &end);

    HookContext m_context;
    HookTasks &m_tasks;
    SessionBook &m_sessions;
    ApprovalDesk &m_desk;
    TurnEnds m_ends;
    SilentEndWatch m_silentEnds;
    /// The session that was cleared a moment ago.
    std::optional<SessionKey> m_cleared;
};

} // namespace tirlo
