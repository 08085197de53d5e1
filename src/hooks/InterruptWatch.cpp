#include "InterruptWatch.h"

#include "TranscriptTail.h"

#include <algorithm>
#include <utility>

namespace tirlo {

namespace {

constexpr double period = 3;
constexpr double slack = 1;
/// A session that was heard of within so many seconds works as it says.
constexpr double silence = 4;

} // namespace

InterruptWatch::InterruptWatch(const SessionBook &sessions, MainQueue &queue,
                               std::function<void(const SessionKey &)> interrupted)
    : m_sessions(sessions)
    , m_queue(queue)
    , m_interrupted(std::move(interrupted))
{
}

void InterruptWatch::wake()
{
    if (!m_next.isPending() && !m_sessions.quietWorkers().empty())
        m_next = m_queue.after(
            period, this, [this] { look(); }, slack);
}

void InterruptWatch::look()
{
    // A slow disk is not asked again before it has answered.
    if (m_underWay == 0) {
        for (const SessionBook::QuietWorker &worker : m_sessions.quietWorkers(silence))
            read(worker);
    }
    wake();
}

void InterruptWatch::read(const SessionBook::QuietWorker &worker)
{
    ++m_underWay;
    m_reader.post(
        m_queue, this, [worker] { return endsInInterrupt(worker.transcript, worker.heard); },
        [this, worker](bool isInterrupted) {
            --m_underWay;
            // It may have gone on while its transcript was read.
            const auto quiet = m_sessions.quietWorkers(silence);
            if (isInterrupted && std::ranges::find(quiet, worker) != quiet.end())
                m_interrupted(worker.key);
        });
}

} // namespace tirlo
