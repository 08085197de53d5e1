#pragma once

#include "CalcomPoller.h"
#include "GithubPoller.h"
#include "N8nPoller.h"
#include "NotionPoller.h"
#include "ResendPoller.h"
#include "StripePoller.h"
#include "VercelPoller.h"

namespace tirlo {

/// The pollers of all services, one of each.
class ServicePollers
{
public:
    explicit ServicePollers(const PollerContext &context);

    /// Begins the cycles of all of them, whether the user has their keys or not.
    void start();

    N8nPoller n8n;
    VercelPoller vercel;
    ResendPoller resend;
    GithubPoller github;
    StripePoller stripe;
    CalcomPoller calcom;
    NotionPoller notion;
};

} // namespace tirlo
