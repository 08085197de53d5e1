#pragma once

#include "ui/CardBackground.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

#include <QString>

class QHBoxLayout;

namespace tirlo {

struct AgentTask;
class FocusLine;
class IconButton;
class SessionList;
class TickerView;

/// The island's home: the agent in focus with what it is doing, or a look at each of its sessions,
/// and the pills of the others.
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
    void showSessions(bool areShown);

    ViewContext m_context;
    FocusLine *m_head;
    IconButton *m_target;
    TickerView *m_ticker;
    SessionList *m_sessions;
    QHBoxLayout *m_tickerRow;
    /// The pill whose sessions may be on show.
    QString m_focusId;
    Observers m_observers;
};

} // namespace tirlo
