#pragma once

#include "model/IslandView.h"

class QString;

namespace tirlo {

/// What the user's clicks, answers to them and the end of a card ask of the island.
///
/// The island alone decides on its mode and view. What happens without the user is told to it by
/// the notifications instead, so that it can be kept quiet. None of these opens a closed island.
class IslandIntents
{
public:
    /// Turns to the card.
    virtual void show(IslandView card) = 0;

    /// Falls back from the card to the one that the island opens on by itself; while another is on
    /// show it does nothing.
    virtual void leave(IslandView card) = 0;

    /// Turns to the note card with that text.
    virtual void say(const QString &note) = 0;

protected:
    ~IslandIntents() = default;
};

} // namespace tirlo
