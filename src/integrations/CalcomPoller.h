#pragma once

#include "Poller.h"

namespace tirlo {

/// Keeps the bookings of the next sixty days in the user's Cal.com calendar.
class CalcomPoller final : public Poller
{
public:
    explicit CalcomPoller(const PollerContext &context);

private:
    void runCycle() override;
};

} // namespace tirlo
