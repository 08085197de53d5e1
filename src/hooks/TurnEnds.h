#pragma once

#include "HookContext.h"
#include "SessionBook.h"
#include "core/model/IslandView.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <optional>

namespace tirlo {

class HookTasks;

/// What a session's turn came to, and the card that tells of it.
///
/// The end stays with its pill until the session goes on, and a session that leaves waits with its
/// pill until nobody looks at it any more.
class TurnEnds : public QObject
{
public:
    /// All outlive this.
    TurnEnds(const HookContext &context, HookTasks &tasks, SessionBook &sessions);

    /// The turn has come to its end, with these words in Markdown; the session is at rest a while
    /// later, or gone where it does not stay. `isFocus` has the island open on it.
    void finish(const SessionKey &session, const QString &words, bool isFocus, bool stays);

    /// The turn has failed. Without words those of the tool that failed last stand for them.
    void fail(const SessionKey &session, const QString &words, bool isRateLimit, bool isFocus);

    /// The session goes on, and takes the end of its last turn with it.
    void leave(const SessionKey &session);

    /// Ends the session, once its last end has been seen.
    void end(const SessionKey &session);

    void toolFailed(const SessionKey &session, const QString &error);
    void toolBegins(const SessionKey &session);

private:
    void show(const SessionKey &session, IslandView view, const QString &words, bool isFocus);
    [[nodiscard]] bool hasCard(const SessionKey &session) const;
    void settle(const SessionKey &session, bool stays);

    HookContext m_context;
    HookTasks &m_tasks;
    SessionBook &m_sessions;
    /// By pill, the session whose turn was the last to end, until it goes on.
    QHash<QString, QString> m_ended;
    /// The last tool that failed, until its session goes on to another.
    struct
    {
        std::optional<SessionKey> session;
        QString error;
    } m_failedTool;
};

} // namespace tirlo
