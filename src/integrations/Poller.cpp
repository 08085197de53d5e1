#include "Poller.h"

#include "core/KeychainStore.h"

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

/// The share of the interval by which a cycle may be late so that cycles wake the machine together.
constexpr double slackShare = 0.1;

/// Seconds; two clocks that are read one after the other differ by less.
constexpr double shortestSleep = 1;

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

void Poller::wake()
{
    if (!m_timer.isPending() || m_context.queue.timeAsleep() - m_timeAsleep < shortestSleep)
        return;
    // As at the start, which leaves the network time to come up and spreads the load.
    m_timer.cancel();
    start();
}

void Poller::poll()
{
    ++m_cycle;
    runCycle();
}

std::optional<QString> Poller::key(QLatin1String item) const
{
    const auto value = m_context.keychain.get(item);
    return value && !value->isEmpty() ? value : std::nullopt;
}

void Poller::scheduleCycle(double deadline, double slack)
{
    const auto cycle = [this, deadline] {
        // What a stopped program has missed is skipped, and the cycles to come keep their rhythm.
        const double late = m_context.queue.mediaTime() - deadline;
        const double cycles = std::floor(std::max(0.0, late) / m_schedule.interval) + 1;
        scheduleCycle(deadline + cycles * m_schedule.interval, m_schedule.interval * slackShare);
        poll();
    };
    m_timeAsleep = m_context.queue.timeAsleep();
    m_timer = m_context.queue.after(deadline - m_context.queue.mediaTime(), &m_life, cycle, slack);
}

void Poller::send(const HttpRequest &request, const Reading &read,
                  const std::function<void(const HttpReply &)> &fail, Wanted wanted)
{
    const auto isWanted = [this, wanted, cycle = m_cycle] {
        if (wanted == Wanted::newest && cycle < m_answeredCycle)
            return false;
        m_answeredCycle = std::max(m_answeredCycle, cycle);
        return true;
    };
    const auto accept = [isWanted](const Acceptance &acceptance) {
        if (isWanted() && acceptance)
            acceptance();
    };
    m_context.http.send(request, &m_life, [=, this](const HttpReply &reply) {
        if (reply.status == 200 && reply.error.isEmpty()) {
            m_reader.postIfLong(
                m_context.queue, &m_life, reply.body.size(), [=] { return read(reply.body); },
                accept);
        } else if (isWanted() && fail) {
            fail(reply);
        }
    });
}

} // namespace tirlo
