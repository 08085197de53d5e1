#include "ErrorView.h"

#include "core/AgentCatalog.h"
#include "core/AppState.h"
#include "core/Notifications.h"
#include "ui/SecondaryButton.h"
#include "ui/Style.h"
#include "ui/TextParagraph.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"
#include "views/overview/AgentTargets.h"
#include "views/overview/AgentWho.h"

namespace tirlo {

namespace {

constexpr int lineSpacing = 4;
constexpr int buttonSpacing = 6;
constexpr int mostLines = 2;

} // namespace

ErrorView::ErrorView(const ViewContext &context, QWidget *parent)
    : CardBackground(Wash::red, parent)
    , m_state(context.state)
    , m_who(new AgentWho(context.state, QStringLiteral("stopped")))
    , m_words(new TextParagraph(Style::font(Style::bodySize), Style::failureText, mostLines))
{
    auto *open = new SecondaryButton(QStringLiteral("Look into it"), {}, [context] {
        if (const auto task = context.state.focusTask())
            AgentTargets::lookInto(*task, context);
        Q_EMIT context.notifications.islandCollapse();
    });
    auto *dismiss = new SecondaryButton(QStringLiteral("Dismiss"), {}, [context] {
        Q_EMIT context.notifications.islandCollapse();
    });

    CardColumn::fill(this, CardMetrics::contentLeft,
                     {{0, m_who},
                      {lineSpacing, m_words},
                      {buttonSpacing, CardColumn::controls({open, dismiss})}});
    followTask();
    m_observers.follow(m_state.tasks, [this] { followTask(); });
    m_observers.follow(m_state.focusId, [this] { followTask(); });
}

/// Shows the error in the agent's own words.
void ErrorView::followTask()
{
    const auto task = m_state.focusTask();
    if (task)
        m_who->nameSession(task->id, task->outcomeFolder);
    else
        m_who->followFocus();
    const AgentDefinition *agent = task ? AgentCatalog::ofPill(task->id) : nullptr;
    m_who->setLabel(agent ? agent->name + QStringLiteral(" stopped") : QStringLiteral("stopped"));
    if (task && !task->outcome.isEmpty())
        m_words->showText(task->outcome);
    else if (task && !agent && !task->steps.isEmpty())
        m_words->showText(task->steps.last());
    else
        m_words->showText(QStringLiteral("The turn failed."));
}

} // namespace tirlo
