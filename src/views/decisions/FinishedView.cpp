#include "FinishedView.h"

#include "core/AgentCatalog.h"
#include "core/AppState.h"
#include "core/Notifications.h"
#include "ui/PrimaryButton.h"
#include "ui/SecondaryButton.h"
#include "ui/Style.h"
#include "ui/TextParagraph.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"
#include "views/overview/AgentWho.h"
#include "views/overview/TerminalRule.h"

namespace tirlo {

namespace {

constexpr int titleSpacing = 4;
constexpr int buttonSpacing = 6;
constexpr int mostLines = 2;

} // namespace

FinishedView::FinishedView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::green, parent)
    , m_state(context.state)
    , m_who(new AgentWho(context.state, QStringLiteral("finished")))
    , m_title(new TextParagraph(Style::font(Style::bodySize, QFont::DemiBold), Style::primaryText,
                                mostLines))
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
                     {{0, m_who},
                      {titleSpacing, m_title},
                      {buttonSpacing, CardColumn::controls({terminal, dismiss})}});

    followTask();
    m_observers.follow(m_state.tasks, [this] { followTask(); });
    m_observers.follow(m_state.focusId, [this] { followTask(); });
}

/// Shows what the agent itself said last.
void FinishedView::followTask()
{
    const auto task = m_state.focusTask();
    if (task)
        m_who->nameSession(task->id, task->outcomeFolder);
    else
        m_who->followFocus();
    const AgentDefinition *agent = task ? AgentCatalog::ofPill(task->id) : nullptr;
    m_who->setLabel(agent ? agent->name + QStringLiteral(" finished") : QStringLiteral("finished"));
    const bool hasSpoken = task && !task->outcome.isEmpty();
    m_title->showText(hasSpoken ? task->outcome : QStringLiteral("Session finished"));
}

} // namespace tirlo
