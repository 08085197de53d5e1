#pragma once

#include "ui/Observers.h"

#include <QObject>

namespace tirlo {

class Applications;
class AppState;
class Island;
class IslandPanel;

/// Who has the keyboard: the island while its user types into it or goes round its controls, else
/// the window that had it before.
///
/// Nothing on the island has the focus until the user has moved it there, so that no key answers
/// what has just come.
class IslandKeyboard final : public QObject
{
    Q_OBJECT

public:
    /// All of these outlive this object.
    IslandKeyboard(AppState &state, Island &island, IslandPanel &panel, Applications &applications);

    /// Gives the open island the keyboard to go round it, or back when it has it.
    void toggle();

    /// Gives the keyboard back to whoever had it before the island.
    void giveBack();

    /// Takes or gives back what the card on show, if one can be seen, has need of.
    void followCard();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void give();
    bool keyPressed(int key, bool isRepeated);

    AppState &m_state;
    Island &m_island;
    IslandPanel &m_panel;
    Applications &m_applications;
    /// The user has given the island the keyboard, and it keeps it from card to card.
    bool m_isGiven = false;
    Observers m_observers;
};

} // namespace tirlo
