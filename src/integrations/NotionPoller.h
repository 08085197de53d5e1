#pragma once

#include "Poller.h"

namespace tirlo {

/// Keeps the pages and databases of the user's Notion workspace that were edited last.
class NotionPoller final : public Poller
{
public:
    explicit NotionPoller(const PollerContext &context);

private:
    void runCycle() override;
};

} // namespace tirlo
