#include "ApprovalView.h"

#include "AgentWho.h"
#include "CardColumn.h"
#include "CardMetrics.h"
#include "core/AppState.h"
#include "ui/CodeBlock.h"
#include "ui/PrimaryButton.h"
#include "ui/SecondaryButton.h"

namespace tirlo {

namespace {

constexpr int headSpacing = 5;
constexpr int buttonSpacing = 8;
/// Text looks smaller than its line, so the column stands a little above the middle.
constexpr int opticalLift = 3;
/// A click on its way to one request must not answer the one that has just taken its place.
constexpr double settleSeconds = 0.4;

/// This agent keeps no standing approvals.
const QString withoutStandingApproval = QStringLiteral("agent_codex");

} // namespace

ApprovalView::ApprovalView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::amber, parent)
    , m_state(context.state)
    , m_command(new CodeBlock)
{
    const auto decide = [&actions = context.actions](const char *decision) {
        return
            [&actions, decision] { actions.sendApprovalDecision(QString::fromLatin1(decision)); };
    };
    auto *deny = new SecondaryButton(QStringLiteral("Deny"), {}, decide("deny"));
    m_always = new SecondaryButton(QStringLiteral("Always"), {}, decide("always"));
    auto *allow = new PrimaryButton(QStringLiteral("Allow"), {}, decide("allow"));
    m_buttons = {deny, m_always, allow};

    CardColumn::fill(
        this, CardMetrics::contentLeft,
        {{0, new AgentWho(m_state, QStringLiteral("needs permission"))},
         {headSpacing, m_command},
         {buttonSpacing, CardColumn::controls({deny, m_always, allow})}},
        opticalLift);

    updateRequest();
    m_observers.follow(m_state.pendingApproval, [this, &queue = context.queue] {
        const bool replacesOne = m_hasRequest && m_state.pendingApproval.value();
        updateRequest();
        enableButtons(!replacesOne);
        m_settling.cancel();
        if (replacesOne)
            m_settling = queue.after(settleSeconds, this, [this] { enableButtons(true); });
    });
}

void ApprovalView::updateRequest()
{
    const auto &request = m_state.pendingApproval.value();
    m_hasRequest = request.has_value();
    m_command->setLine(request ? request->command : QString());
    m_always->setVisible(!request || request->pillId != withoutStandingApproval);
}

void ApprovalView::enableButtons(bool areEnabled)
{
    for (QPushButton *button : m_buttons)
        button->setEnabled(areEnabled);
}

} // namespace tirlo
