#pragma once

#include "ViewContext.h"
#include "platform/MainQueue.h"
#include "ui/CardBackground.h"
#include "ui/Observers.h"

#include <array>

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
    void enableButtons(bool areEnabled);

    AppState &m_state;
    CodeBlock *m_command;
    QPushButton *m_always;
    std::array<QPushButton *, 3> m_buttons{};
    bool m_hasRequest = false;
    WorkItem m_settling;
    Observers m_observers;
};

} // namespace tirlo
