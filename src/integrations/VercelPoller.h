#pragma once

#include "Poller.h"
#include "ServicePill.h"
#include "core/model/Services.h"

namespace tirlo {

/// Watches the deployments of the user's Vercel projects and tells of the newest that has ended.
class VercelPoller final : public Poller
{
public:
    explicit VercelPoller(const PollerContext &context);

private:
    void runCycle() override;
    /// Reacts to what a cycle brought: at least one deployment, newest first.
    void handleDeployments(const QList<VercelDeployment> &list);

    ServicePill m_pill;
    QString m_lastDeploymentId;
};

} // namespace tirlo
