#include "NoteView.h"

#include "core/AppState.h"
#include "ui/TextLabel.h"
#include "views/CardColumn.h"
#include "views/CardMetrics.h"

#include <QVBoxLayout>

namespace tirlo {

NoteView::NoteView(const ViewContext &context, QWidget *parent)
    : CardBackground(std::nullopt, parent)
    , m_state(context.state)
    , m_message(CardColumn::title())
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(CardMetrics::noteContentLeft, 0, CardMetrics::contentRight, 0);
    column->addWidget(m_message);

    updateMessage();
    m_observers.follow(m_state.noteMessage, [this] { updateMessage(); });
}

void NoteView::updateMessage()
{
    m_message->setLine(m_state.noteMessage.value().value_or(QString()));
}

} // namespace tirlo
