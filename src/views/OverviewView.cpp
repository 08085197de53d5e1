#include "OverviewView.h"

#include "AgentPillsView.h"
#include "CardMetrics.h"
#include "FocusLine.h"
#include "TickerView.h"
#include "core/AppState.h"

#include <QVBoxLayout>

namespace tirlo {

namespace {

constexpr int focusWidth = 322;
constexpr int focusRight = 12;
constexpr int tickerSpacing = 6;

} // namespace

OverviewView::OverviewView(const ViewContext &context, QWidget *parent)
    : CardBackground(std::nullopt, parent)
    , m_state(context.state)
    , m_head(new FocusLine)
    , m_ticker(new TickerView)
{
    auto *focus = new QVBoxLayout;
    focus->setContentsMargins(0, 0, focusRight, 0);
    focus->setSpacing(tickerSpacing);
    focus->addStretch();
    focus->addWidget(m_head);
    focus->addWidget(m_ticker);
    focus->addStretch();

    auto *left = new QWidget;
    left->setFixedWidth(focusWidth);
    left->setLayout(focus);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(CardMetrics::contentLeft, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(left);
    row->addWidget(new AgentPillsView(context), 1);

    updateFocus();
    m_observers.follow(m_state.tasks, [this] { updateFocus(); });
    m_observers.follow(m_state.focusId, [this] { updateFocus(); });
}

void OverviewView::updateFocus()
{
    const auto task = m_state.focusTask();
    m_head->setTask(task);
    m_ticker->setTask(task);
}

} // namespace tirlo
