#pragma once

#include "ViewContext.h"
#include "ui/CardBackground.h"
#include "ui/Observers.h"

namespace tirlo {

class FocusLine;
class TickerView;

/// The island's home: the agent in focus with what it is doing, and the pills of the others.
class OverviewView final : public CardBackground
{
    Q_OBJECT

public:
    explicit OverviewView(const ViewContext &context, QWidget *parent = nullptr);

private:
    void updateFocus();

    AppState &m_state;
    FocusLine *m_head;
    TickerView *m_ticker;
    Observers m_observers;
};

} // namespace tirlo
