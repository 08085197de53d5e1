#pragma once

#include "ui/CardBackground.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

class QHBoxLayout;

namespace tirlo {

struct AgentTask;
class FocusLine;
class IconButton;
class TickerView;

/// The island's home: the agent in focus with what it is doing, and the pills of the others.
class OverviewView final : public CardBackground
{
    Q_OBJECT

public:
    explicit OverviewView(const ViewContext &context, QWidget *parent = nullptr);

    /// Brings the thing behind the task to the front.
    void openAgentTarget(const AgentTask &task);

private:
    [[nodiscard]] QWidget *makeFocus();
    void updateFocus();

    ViewContext m_context;
    FocusLine *m_head;
    IconButton *m_target;
    TickerView *m_ticker;
    QHBoxLayout *m_tickerRow;
    Observers m_observers;
};

} // namespace tirlo
