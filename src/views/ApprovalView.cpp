#include "ApprovalView.h"

#include "AgentWho.h"
#include "CardMetrics.h"
#include "core/AppState.h"
#include "ui/CodeBlock.h"
#include "ui/PrimaryButton.h"
#include "ui/SecondaryButton.h"
#include "ui/Style.h"

#include <QHBoxLayout>

namespace tirlo {

namespace {

constexpr int headSpacing = 5;
constexpr int buttonSpacing = 8;
/// Text looks smaller than its line, so the column stands a little above the middle.
constexpr int opticalLift = 3;

/// This agent keeps no standing approvals.
const QString withoutStandingApproval = QStringLiteral("agent_codex");

} // namespace

ApprovalView::ApprovalView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::amber, parent)
    , m_state(context.state)
    , m_who(new AgentWho(QStringLiteral("needs permission")))
    , m_command(new CodeBlock)
{
    const auto decide = [&actions = context.actions](const char *decision) {
        return
            [&actions, decision] { actions.sendApprovalDecision(QString::fromLatin1(decision)); };
    };
    m_always = new SecondaryButton(QStringLiteral("Always"), {}, decide("always"));

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(Style::controlSpacing);
    buttons->addWidget(new SecondaryButton(QStringLiteral("Deny"), {}, decide("deny")));
    buttons->addWidget(m_always);
    buttons->addWidget(new PrimaryButton(QStringLiteral("Allow"), {}, decide("allow")));
    buttons->addStretch();

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(CardMetrics::contentLeft, 0, CardMetrics::contentRight, opticalLift);
    column->setSpacing(0);
    column->addStretch();
    column->addWidget(m_who);
    column->addSpacing(headSpacing);
    column->addWidget(m_command);
    column->addSpacing(buttonSpacing);
    column->addLayout(buttons);
    column->addStretch();

    updateWho();
    updateRequest();
    m_observers.follow(m_state.tasks, [this] { updateWho(); });
    m_observers.follow(m_state.focusId, [this] { updateWho(); });
    m_observers.follow(m_state.pendingApproval, [this] { updateRequest(); });
}

void ApprovalView::updateWho()
{
    m_who->setTask(m_state.focusTask());
}

void ApprovalView::updateRequest()
{
    const auto &request = m_state.pendingApproval.value();
    m_command->setLine(request ? request->command : QString());
    m_always->setVisible(!request || request->pillId != withoutStandingApproval);
}

} // namespace tirlo
