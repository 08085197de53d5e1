#pragma once

#include "ui/CardBackground.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

class QPushButton;

namespace tirlo {

class CodeBlock;

/// The card on which a waiting agent gets its permission, or not.
class ApprovalView final : public CardBackground
{
    Q_OBJECT

public:
    explicit ApprovalView(const ViewContext &context, QWidget *parent = nullptr);

private:
    void updateRequest();

    AppState &m_state;
    const MainQueue &m_queue;
    CodeBlock *m_command;
    QPushButton *m_always;
    bool m_hasRequest;
    /// Media time from which a click means the request on show.
    double m_settledAt = 0;
    Observers m_observers;
};

} // namespace tirlo
