#pragma once

#include "ui/CardBackground.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

namespace tirlo {

class AgentWho;
class TextParagraph;

/// What went wrong, in the words of who failed, and the way to it.
class ErrorView final : public CardBackground
{
    Q_OBJECT

public:
    explicit ErrorView(const ViewContext &context, QWidget *parent = nullptr);

private:
    void followTask();

    AppState &m_state;
    AgentWho *m_who;
    TextParagraph *m_words;
    Observers m_observers;
};

} // namespace tirlo
