#pragma once

#include "ui/CardBackground.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

namespace tirlo {

class TextLabel;

/// A short message; whoever set it takes it away.
class NoteView final : public CardBackground
{
    Q_OBJECT

public:
    explicit NoteView(const ViewContext &context, QWidget *parent = nullptr);

private:
    void updateMessage();

    AppState &m_state;
    TextLabel *m_message;
    Observers m_observers;
};

} // namespace tirlo
