#pragma once

#include "SessionBook.h"
#include "TurnRecord.h"
#include "platform/BackgroundWorker.h"
#include "platform/MainQueue.h"

#include <QObject>

#include <functional>

namespace tirlo {

/// Notices that a turn has ended of which no hook tells, since its user broke it off or its service
/// refused, by the agent's own account of the session.
///
/// It looks now and then while a session claims to work and is silent, and not otherwise.
class SilentEndWatch : public QObject
{
public:
    using Ended = std::function<void(const SessionKey &, const SilentEnd &)>;

    /// Calls `ended` on the main thread; the book and the queue outlive the watch.
    SilentEndWatch(const SessionBook &sessions, MainQueue &queue, Ended ended);

    /// Begins to look, if a session works, until none does.
    void wake();

private:
    void look();
    void read(const SessionBook::QuietWorker &worker);

    const SessionBook &m_sessions;
    MainQueue &m_queue;
    const Ended m_ended;
    WorkItem m_next;
    int m_underWay = 0;
    BackgroundWorker m_reader;
};

} // namespace tirlo
