#pragma once

#include "HookRouting.h"
#include "TurnRecord.h"
#include "core/model/AgentSession.h"
#include "core/model/AgentTask.h"
#include "platform/MainQueue.h"
#include "platform/ProcessWatch.h"

#include <QDateTime>
#include <QList>
#include <QObject>

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace tirlo {

class AppState;

/// Names one session of one pill.
struct SessionKey
{
    QString pill;
    QString id;

    bool operator==(const SessionKey &) const = default;
};

/// The tool call that a session asked about.
struct AskedCall
{
    QString tool;
    /// Canonical text of the tool's input, without what comes and goes between a request and the
    /// call's end.
    QString inputKey;
    /// The subagent that asked; "" for the session itself.
    QString agentId;

    bool operator==(const AskedCall &) const = default;
};

/// The sessions of each pill. It gives a pill the state of its most urgent session and that one's
/// folder for a name, and takes it away with its last one.
class SessionBook : public QObject
{
public:
    /// A session that claims to work and has not been heard of for a while.
    struct QuietWorker
    {
        SessionKey key;
        TurnRecord record;

        bool operator==(const QuietWorker &) const = default;
    };

    /// The step of a session that asks in its terminal.
    static const QString waitingStep;

    /// All three outlive the book.
    SessionBook(AppState &state, MainQueue &queue, ProcessWatch &processes);

    /// Is told of a session whose process has ended; end() then belongs to it.
    std::function<void(const SessionKey &)> processEnded;
    /// Is told after something about a session has changed.
    std::function<void()> changed;

    /// True for what was still under way when its session or its process ended.
    [[nodiscard]] bool isPast(const HookRoute &route, const HookOrigin &origin) const;

    /// Takes down that the session is there and did something; a pill has to be there for it.
    ///
    /// Without `isNews` what the agent's own account says since its last event stays to be read.
    void hear(const HookRoute &route, const HookOrigin &origin, bool isNews = true);

    /// The session goes on; true when it had shown its end until now.
    bool resume(const SessionKey &key);
    void setState(const SessionKey &key, BotState state);
    void setStep(const SessionKey &key, const QString &step);
    void end(const SessionKey &key);
    /// Takes down that the session has said goodbye: until it starts anew, what still comes of it
    /// isPast().
    void sayGoodbye(const SessionKey &key);
    void greet(const SessionKey &key);
    /// What the session does apart from asking in its terminal; idle without one.
    [[nodiscard]] BotState stateOf(const SessionKey &key) const;

    /// Does the work after so many seconds, unless the session's state changes or it ends before.
    void after(const SessionKey &key, double seconds, std::function<void()> work);

    /// The session now asks about the call in its own terminal, until moveOn().
    void fallBack(const SessionKey &key, const AskedCall &call);
    void moveOn(const SessionKey &key);
    /// What the session asks about in its terminal.
    [[nodiscard]] std::optional<AskedCall> askedInTerminal(const SessionKey &key) const;

    /// The working sessions whose turn may have ended: not heard of for so many seconds, and of an
    /// agent that tells some ends in its own account alone.
    [[nodiscard]] std::vector<QuietWorker> quietWorkers(double seconds = 0) const;

private:
    struct Record
    {
        AgentSession shown;
        /// What it does apart from asking in its terminal.
        BotState state = BotState::idle;
        std::optional<AskedCall> asked;
        double heard = 0;
        QDateTime heardAt;
        QString cwd;
        /// "" where every end of a turn is told by a hook.
        QString transcript;
        std::optional<ProcessId> process;
        bool isFollowed = false;
        /// Keeps the watch over the process; null where there is none.
        ProcessWatch::Handle watch;
        WorkItem later;

        [[nodiscard]] bool mayEndInSilence() const;
        [[nodiscard]] bool asks() const;
        [[nodiscard]] bool comesToRest() const;
    };
    /// In the order in which they were first heard of.
    using Records = std::vector<Record>;

    struct Pill
    {
        Records sessions;
        bool isExternal = false;
        /// What its most urgent session makes of it while it is not in focus.
        std::optional<PillBadge> badge;
    };

    [[nodiscard]] const Record *find(const SessionKey &key) const;
    [[nodiscard]] Record *find(const SessionKey &key);
    void makeRoom(Records &sessions);
    void follow(const SessionKey &key, Record &record, const std::optional<ProcessId> &process);
    void publish(const QString &pillId);
    [[nodiscard]] bool hasCard(const QString &pillId, const Record &record) const;
    void followBadge(const QString &pillId, Pill &pill);
    [[nodiscard]] static const Record &leadOf(const Records &sessions);
    void tellApart();
    void restLater();
    void restSilent();
    template<typename Visit>
    void forEach(Visit visit);

    AppState &m_state;
    MainQueue &m_queue;
    ProcessWatch &m_processes;
    std::map<QString, Pill> m_pills;
    /// Processes that have ended and sessions that have said so, the last ones.
    QList<ProcessId> m_past;
    QList<SessionKey> m_goodbyes;
    WorkItem m_resting;
};

} // namespace tirlo
