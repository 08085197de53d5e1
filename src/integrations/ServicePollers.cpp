#include "ServicePollers.h"

namespace tirlo {

ServicePollers::ServicePollers(const PollerContext &context)
    : n8n(context)
    , vercel(context)
    , resend(context)
    , github(context)
    , stripe(context)
    , calcom(context)
    , notion(context)
    , m_wakeWatch(context, *this)
{
}

void ServicePollers::start()
{
    for (Poller *const poller : all())
        poller->start();
    m_wakeWatch.start();
}

std::array<Poller *, 7> ServicePollers::all()
{
    return {&n8n, &vercel, &resend, &github, &stripe, &calcom, &notion};
}

// In step with the most frequent poller, so that no wake-up is added.
ServicePollers::WakeWatch::WakeWatch(const PollerContext &context, ServicePollers &pollers)
    : Poller(context, {.firstAfterStart = 3, .interval = 15})
    , m_pollers(pollers)
{
}

void ServicePollers::WakeWatch::runCycle()
{
    for (Poller *const poller : m_pollers.all())
        poller->wake();
}

} // namespace tirlo
