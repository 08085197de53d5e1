#include "SilentEndWatch.h"

#include <algorithm>
#include <utility>

namespace tirlo {

namespace {

constexpr double period = 3;
constexpr double slack = 1;
/// A session that was heard of within so many seconds works as it says.
constexpr double silence = 4;

} // namespace

SilentEndWatch::SilentEndWatch(const SessionBook &sessions, MainQueue &queue, Ended ended)
    : m_sessions(sessions)
    , m_queue(queue)
    , m_ended(std::move(ended))
{
}

void SilentEndWatch::wake()
{
    if (!m_next.isPending() && !m_sessions.quietWorkers().empty())
        m_next = m_queue.after(
            period, this, [this] { look(); }, slack);
}

void SilentEndWatch::look()
{
    // A slow disk is not asked again before it has answered.
    if (m_underWay == 0) {
        for (const SessionBook::QuietWorker &worker : m_sessions.quietWorkers(silence))
            read(worker);
    }
    wake();
}

void SilentEndWatch::read(const SessionBook::QuietWorker &worker)
{
    ++m_underWay;
    m_reader.post(
        m_queue, this, [worker] { return silentEnd(worker.record); },
        [this, worker](const SilentEnd &end) {
            --m_underWay;
            // It may have gone on while its transcript was read.
            const auto quiet = m_sessions.quietWorkers(silence);
            const bool hasEnded = end.kind != SilentEnd::Kind::none;
            if (hasEnded && std::ranges::find(quiet, worker) != quiet.end())
                m_ended(worker.key, end);
        });
}

} // namespace tirlo
