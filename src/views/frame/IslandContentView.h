#pragma once

#include "CardPresence.h"
#include "core/model/IslandView.h"
#include "ui/motion/FrameClock.h"
#include "views/ViewContext.h"

#include <QWidget>

#include <optional>
#include <vector>

namespace tirlo {

class IslandHeader;

/// The expanded island's content: the header, and below it the card of the present view.
///
/// All cards are in the tree for good; only the selected one takes the pointer, and once the others
/// have gone it alone is shown.
class IslandContentView final : public QWidget
{
    Q_OBJECT

public:
    explicit IslandContentView(const ViewContext &context, QWidget *parent = nullptr);

    /// Puts the view's card in the place of the present one; `moves` is false when nobody sees it.
    void showCard(IslandView view, bool moves);

    /// Lays the present card out on an island of that height in points, this view's own origin at
    /// its top.
    void setIslandHeight(int height);

    /// Whether the present card can be seen as a whole, as far as this view goes.
    [[nodiscard]] bool isCardWhole() const;

Q_SIGNALS:
    /// A frame of cards on their way has been shown.
    void cardsMoved();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeCard();
    void frame(double time);
    [[nodiscard]] std::optional<CardPresence> &selected();

    const AppState &m_state;
    FrameClock &m_clock;
    IslandHeader *m_header;
    /// One a view, in the order of the views; none for a view without a card.
    std::vector<std::optional<CardPresence>> m_cards;
    IslandView m_view;
    int m_islandHeight = 0;
    FrameClock::Subscription m_frames;
};

} // namespace tirlo
