#include "OverviewView.h"

#include "AgentPillsView.h"
#include "AgentTargets.h"
#include "FocusLine.h"
#include "SessionList.h"
#include "TickerView.h"
#include "core/AppState.h"
#include "ui/Color.h"
#include "ui/IconButton.h"
#include "ui/Style.h"
#include "ui/TextButton.h"
#include "views/CardMetrics.h"

#include <QVBoxLayout>

#include <utility>

namespace tirlo {

namespace {

constexpr int focusWidth = 322;
constexpr int tickerSpacing = 6;
/// Room right of the ticker, and right of it and the button.
constexpr int focusRight = 12;
constexpr int focusRightWithTarget = 36;
constexpr int targetSide = 18;
/// Three of the sessions.
constexpr int sessionsHeight = 60;

IconButtonStyle targetStyle()
{
    return {.color = Style::targetMark,
            .hoveredColor = Style::hoveredText,
            .fill = withOpacity(Style::white, Style::raisedOpacity),
            .hoveredFill = withOpacity(Style::white, Style::hoveredOpacity),
            .iconSide = 8,
            .radius = 6};
}

} // namespace

OverviewView::OverviewView(const ViewContext &context, QWidget *parent)
    : CardBackground(std::nullopt, parent)
    , m_context(context)
    , m_head(new FocusLine)
    , m_target(new IconButton({targetSide, targetSide}, targetStyle()))
    , m_ticker(new TickerView(context.queue, context.frames))
    , m_sessions(new SessionList)
    , m_tickerRow(new QHBoxLayout)
{
    m_sessions->setFixedHeight(sessionsHeight);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(CardMetrics::contentLeft, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(makeFocus());
    row->addWidget(new AgentPillsView(context), 1);

    connect(m_target, &IconButton::clicked, this, [this] {
        if (const auto task = m_context.state.focusTask())
            openAgentTarget(*task);
    });
    connect(&m_head->sessionsButton(), &TextButton::toggled, this, &OverviewView::showSessions);
    showSessions(false);
    updateFocus();
    m_observers.follow(m_context.state.tasks, [this] { updateFocus(); });
    m_observers.follow(m_context.state.focusId, [this] { updateFocus(); });
}

void OverviewView::openAgentTarget(const AgentTask &task)
{
    AgentTargets::open(task, m_context);
}

QWidget *OverviewView::makeFocus()
{
    auto *headRow = new QHBoxLayout;
    headRow->setSpacing(focusRightWithTarget - focusRight - targetSide);
    headRow->addWidget(m_head);
    headRow->addWidget(m_target);
    m_tickerRow->addWidget(m_ticker);
    m_tickerRow->addWidget(m_sessions);

    auto *column = new QVBoxLayout;
    column->setContentsMargins(0, 0, focusRight, 0);
    column->setSpacing(tickerSpacing);
    column->addStretch();
    column->addLayout(headRow);
    column->addLayout(m_tickerRow);
    column->addStretch();

    auto *focus = new QWidget;
    focus->setFixedWidth(focusWidth);
    focus->setLayout(column);
    return focus;
}

void OverviewView::updateFocus()
{
    const auto task = m_context.state.focusTask();
    // The next one in focus shows what it does first.
    if (std::exchange(m_focusId, task ? task->id : QString()) != m_focusId)
        m_head->sessionsButton().setChecked(false);
    m_head->setTask(task);
    m_sessions->setSessions(task && m_head->sessionsButton().isChecked() ? task->sessions
                                                                         : QList<AgentSession>());
    m_ticker->setTask(task);
    m_target->setVisible(task.has_value());
    m_tickerRow->setContentsMargins(0, 0, task ? focusRightWithTarget - focusRight : 0, 0);
    if (!task)
        return;
    const QString meaning = AgentTargets::description(*task);
    if (meaning != m_target->accessibleName())
        m_target->setIcon(QLatin1String("arrow-up-right"), meaning);
}

/// The look at each session takes the live line's place.
void OverviewView::showSessions(bool areShown)
{
    m_ticker->setVisible(!areShown);
    m_sessions->setVisible(areShown);
    const auto task = m_context.state.focusTask();
    m_sessions->setSessions(areShown && task ? task->sessions : QList<AgentSession>());
}

} // namespace tirlo
