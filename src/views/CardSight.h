#pragma once

#include <optional>

namespace tirlo {

class MainQueue;

/// Since when the card on show has been wholly in sight.
///
/// A button of a request acts only once the user can have seen it: a click that was on its way to
/// something else must not decide.
class CardSight
{
public:
    /// The queue outlives this object.
    explicit CardSight(const MainQueue &queue);

    /// The card has come to rest, whole; told again it changes nothing.
    void arrived();

    /// The card moves, fades, or gives way to another.
    void moves() { m_arrival.reset(); }

    /// The card shows something else from now on.
    void showsAnother();

    /// Whether the card, with what it shows, has been wholly in sight for 0.4 seconds.
    [[nodiscard]] bool hasBeenSeen() const;

private:
    const MainQueue &m_queue;
    // On the media clock.
    std::optional<double> m_arrival;
    double m_change = 0;
};

} // namespace tirlo
