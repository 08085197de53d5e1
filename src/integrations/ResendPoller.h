#pragma once

#include "Poller.h"

namespace tirlo {

/// Keeps the latest mails sent through the user's Resend account, and their number.
class ResendPoller final : public Poller
{
public:
    explicit ResendPoller(const PollerContext &context);

private:
    void runCycle() override;
};

} // namespace tirlo
