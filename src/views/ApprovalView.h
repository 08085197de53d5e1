#pragma once

#include "ViewContext.h"
#include "ui/CardBackground.h"
#include "ui/Observers.h"

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
    CodeBlock *m_command;
    QPushButton *m_always;
    Observers m_observers;
};

} // namespace tirlo
