#pragma once

#include "N8nAnswers.h"
#include "Poller.h"
#include "ServicePill.h"

#include <QStringList>

namespace tirlo {

/// Watches the user's n8n instance for the newest execution of a workflow that has ended.
///
/// Instances differ in the API they offer, so a cycle tries one address after another and tells in
/// a log what came of it.
class N8nPoller final : public Poller
{
public:
    explicit N8nPoller(const PollerContext &context);

private:
    void runCycle() override;
    /// Asks for the newest execution at the address number `idx`, then at those behind it.
    void tryList(const QStringList &urls, const QString &apiKey, const QString &base,
                 qsizetype idx);
    void handleListing(const N8n::Listing &listing, const QString &apiKey, const QString &base);
    /// Asks for one execution at the address number `idx`, then at those behind it.
    void fetchDetail(const QStringList &urls, const QString &apiKey, bool success, qsizetype idx);
    /// Tells of an execution that has ended.
    void handleExecution(bool success, const QString &name, const std::optional<QString> &detail);
    void writeLog(const QString &line) const;

    ServicePill m_pill;
    QString m_lastExecutionId;
};

} // namespace tirlo
