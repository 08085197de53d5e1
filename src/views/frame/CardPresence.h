#pragma once

#include "ui/motion/Animated.h"

class QWidget;

namespace tirlo {

class FrameClock;
class PresenceEffect;

/// How much of a card is there while it comes or goes.
///
/// The one that goes fades first; the one that comes waits for that and then settles on a spring.
/// A card that is wholly gone is hidden, and one that goes no longer takes the pointer.
class CardPresence
{
public:
    /// The card is gone at first; it outlives this object.
    explicit CardPresence(QWidget &card);

    /// Sets the card on its way; `moves` is false for a change that nobody sees.
    void setSelected(bool isSelected, bool moves, const FrameClock &clock);

    /// Shows the card as it is at that time; true once it has arrived or is gone.
    bool showAt(double time);

    /// Whether a selected card can be seen as it will be; it may still settle by a hair.
    [[nodiscard]] bool isWhole(double time) const;

    [[nodiscard]] QWidget &card() const { return m_card; }

private:
    QWidget &m_card;
    PresenceEffect *m_effect;
    Animated<double> m_opacity;
    Animated<double> m_scale;
};

} // namespace tirlo
