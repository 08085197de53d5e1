#pragma once

#include "ui/CardBackground.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

namespace tirlo {

class TextLabel;

/// What an agent did last, and the way to its terminal.
class FinishedView final : public CardBackground
{
    Q_OBJECT

public:
    explicit FinishedView(const ViewContext &context, QWidget *parent = nullptr);

private:
    void updateTitle();

    AppState &m_state;
    TextLabel *m_title;
    Observers m_observers;
};

} // namespace tirlo
