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
{
}

void ServicePollers::start()
{
    n8n.start();
    vercel.start();
    resend.start();
    github.start();
    stripe.start();
    calcom.start();
    notion.start();
}

} // namespace tirlo
