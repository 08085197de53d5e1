#pragma once

#include "ui/CardBackground.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

namespace tirlo {

class AgentWho;
class TextParagraph;

/// What an agent said last, and the way to its terminal.
class FinishedView final : public CardBackground
{
    Q_OBJECT

public:
    explicit FinishedView(const ViewContext &context, QWidget *parent = nullptr);

private:
    void followTask();

    AppState &m_state;
    AgentWho *m_who;
    TextParagraph *m_title;
    Observers m_observers;
};

} // namespace tirlo
