#include "Poller.h"

#include "core/KeychainStore.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

/// The share of the interval by which a cycle may be late so that cycles wake the machine together.
constexpr double slackShare = 0.1;

/// Bytes that are read well within the time of a frame.
constexpr qsizetype shortBody = 128 * 1024;

} // namespace

Poller::Poller(const PollerContext &context, Schedule schedule)
    : m_context(context)
    , m_schedule(schedule)
{
}

void Poller::start()
{
    m_context.keychain.whenLoaded(&m_life, [this] {
        if (!m_timer.isPending())
            scheduleCycle(m_context.queue.mediaTime() + m_schedule.firstAfterStart, 0);
    });
}

std::optional<QString> Poller::key(QLatin1String item) const
{
    const auto value = m_context.keychain.get(item);
    return value && !value->isEmpty() ? value : std::nullopt;
}

void Poller::scheduleCycle(double deadline, double slack)
{
    const auto cycle = [this, deadline] {
        // Cycles that were slept through are skipped, and those to come keep their rhythm.
        const double late = m_context.queue.mediaTime() - deadline;
        const double cycles = std::floor(std::max(0.0, late) / m_schedule.interval) + 1;
        scheduleCycle(deadline + cycles * m_schedule.interval, m_schedule.interval * slackShare);
        poll();
    };
    m_timer = m_context.queue.after(deadline - m_context.queue.mediaTime(), &m_life, cycle, slack);
}

void Poller::handOver(qsizetype bodySize, std::function<Acceptance()> read)
{
    if (bodySize <= shortBody) {
        read()();
        return;
    }
    m_reader.post([&queue = m_context.queue, life = QPointer(&m_life), read = std::move(read)] {
        queue.post([life, accept = read()] {
            if (life)
                accept();
        });
    });
}

} // namespace tirlo
