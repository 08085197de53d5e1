#pragma once

#include "SessionBook.h"
#include "platform/BackgroundWorker.h"
#include "platform/MainQueue.h"

#include <QObject>

#include <functional>

namespace tirlo {

/// Notices that the user broke a turn off in an agent that fires no hook for it, by the end of the
/// session's transcript.
///
/// It looks now and then while a session claims to work and is silent, and not otherwise.
class InterruptWatch : public QObject
{
public:
    /// Calls `interrupted` on the main thread; the book and the queue outlive the watch.
    InterruptWatch(const SessionBook &sessions, MainQueue &queue,
                   std::function<void(const SessionKey &)> interrupted);

    /// Begins to look, if a session works, until none does.
    void wake();

private:
    void look();
    void read(const SessionBook::QuietWorker &worker);

    const SessionBook &m_sessions;
    MainQueue &m_queue;
    const std::function<void(const SessionKey &)> m_interrupted;
    WorkItem m_next;
    int m_underWay = 0;
    BackgroundWorker m_reader;
};

} // namespace tirlo
