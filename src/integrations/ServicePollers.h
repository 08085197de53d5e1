#pragma once

#include "CalcomPoller.h"
#include "GithubPoller.h"
#include "N8nPoller.h"
#include "NotionPoller.h"
#include "ResendPoller.h"
#include "StripePoller.h"
#include "VercelPoller.h"

#include <array>

namespace tirlo {

/// The pollers of all services, one of each.
class ServicePollers
{
public:
    explicit ServicePollers(const PollerContext &context);

    /// Begins the cycles of all of them, whether the user has their keys or not.
    ///
    /// When the machine has slept, they begin anew.
    void start();

    N8nPoller n8n;
    VercelPoller vercel;
    ResendPoller resend;
    GithubPoller github;
    StripePoller stripe;
    CalcomPoller calcom;
    NotionPoller notion;

private:
    /// Looks now and then whether the machine has slept, which no timer notices.
    class WakeWatch final : public Poller
    {
    public:
        WakeWatch(const PollerContext &context, ServicePollers &pollers);

    private:
        void runCycle() override;

        ServicePollers &m_pollers;
    };

    [[nodiscard]] std::array<Poller *, 7> all();

    WakeWatch m_wakeWatch;
};

} // namespace tirlo
