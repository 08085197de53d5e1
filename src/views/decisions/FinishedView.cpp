#include "FinishedView.h"

#include "core/AppState.h"
#include "core/Notifications.h"
#include "ui/PrimaryButton.h"
#include "ui/SecondaryButton.h"
#include "ui/TextLabel.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"
#include "views/overview/AgentWho.h"
#include "views/overview/TerminalRule.h"

namespace tirlo {

namespace {

constexpr int titleSpacing = 5;
constexpr int buttonSpacing = 9;

} // namespace

FinishedView::FinishedView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::green, parent)
    , m_state(context.state)
    , m_title(CardColumn::title())
{
    Notifications *notifications = &context.notifications;
    Applications *applications = &context.applications;
    auto *terminal
        = new PrimaryButton(QStringLiteral("Open terminal"), {}, [notifications, applications] {
              TerminalRule::open(*applications);
              Q_EMIT notifications->islandCollapse();
          });
    auto *dismiss = new SecondaryButton(
        QStringLiteral("Dismiss"), {}, [notifications] { Q_EMIT notifications->islandCollapse(); });

    CardColumn::fill(this, CardMetrics::contentLeft,
                     {{0, new AgentWho(m_state, QStringLiteral("Claude Code finished"))},
                      {titleSpacing, m_title},
                      {buttonSpacing, CardColumn::controls({terminal, dismiss})}});

    updateTitle();
    m_observers.follow(m_state.tasks, [this] { updateTitle(); });
    m_observers.follow(m_state.focusId, [this] { updateTitle(); });
}

void FinishedView::updateTitle()
{
    const auto task = m_state.focusTask();
    const bool hasSteps = task && !task->steps.isEmpty();
    m_title->setLine(hasSteps ? task->steps.last() : QStringLiteral("Session finished"));
}

} // namespace tirlo
