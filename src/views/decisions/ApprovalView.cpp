#include "ApprovalView.h"

#include "core/AgentCatalog.h"
#include "core/AppState.h"
#include "platform/MainQueue.h"
#include "ui/CodeBlock.h"
#include "ui/PrimaryButton.h"
#include "ui/SecondaryButton.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"
#include "views/overview/AgentWho.h"

#include <optional>
#include <utility>

namespace tirlo {

namespace {

constexpr int headSpacing = 5;
constexpr int buttonSpacing = 8;
/// Text looks smaller than its line, so the column stands a little above the middle.
constexpr int opticalLift = 3;
/// A click on its way to one request must not answer the next, which has just taken its place.
constexpr double settleSeconds = 0.4;

/// Whether the request may be allowed for good; so it looks too while there is none.
bool offersAlways(const std::optional<ApprovalInfo> &request)
{
    const AgentDefinition *agent = request ? AgentCatalog::ofPill(request->pillId) : nullptr;
    return !agent || agent->keepsStandingApprovals;
}

} // namespace

ApprovalView::ApprovalView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::amber, parent)
    , m_state(context.state)
    , m_queue(context.queue)
    , m_command(new CodeBlock)
    , m_hasRequest(context.state.pendingApproval.value().has_value())
{
    const auto decide = [this, &actions = context.actions](Decision decision) {
        return [this, &actions, decision] {
            if (m_queue.mediaTime() >= m_settledAt)
                actions.sendApprovalDecision(decision);
        };
    };
    m_always = new SecondaryButton(QStringLiteral("Always"), {}, decide(Decision::always));

    CardColumn::fill(
        this, CardMetrics::contentLeft,
        {{0, new AgentWho(m_state, QStringLiteral("needs permission"))},
         {headSpacing, m_command},
         {buttonSpacing,
          CardColumn::controls(
              {new SecondaryButton(QStringLiteral("Deny"), {}, decide(Decision::deny)), m_always,
               new PrimaryButton(QStringLiteral("Allow"), {}, decide(Decision::allow))})}},
        opticalLift);

    updateRequest();
    m_observers.follow(m_state.pendingApproval, [this] {
        // It may also have gone a moment before the next one came.
        if (std::exchange(m_hasRequest, m_state.pendingApproval.value().has_value()))
            m_settledAt = m_queue.mediaTime() + settleSeconds;
        updateRequest();
    });
}

void ApprovalView::updateRequest()
{
    const auto &request = m_state.pendingApproval.value();
    m_command->setLine(request ? request->command : QString());
    m_always->setVisible(offersAlways(request));
}

} // namespace tirlo
