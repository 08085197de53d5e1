#pragma once

#include "ViewContext.h"
#include "core/model/Enumerations.h"
#include "ui/Observers.h"

#include <QWidget>

#include <vector>

namespace tirlo {

class IslandHeader;

/// The expanded island's content: the header, and below it the card of the present view.
///
/// All cards are in the tree for good; only the selected one is shown and takes the pointer.
class IslandContentView final : public QWidget
{
    Q_OBJECT

public:
    explicit IslandContentView(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void selectCard();
    void placeCard();

    AppState &m_state;
    IslandHeader *m_header;
    /// One a view, in the order of the views; null for a view without a card.
    std::vector<QWidget *> m_cards;
    QWidget *m_selected = nullptr;
    Observers m_observers;
};

} // namespace tirlo
