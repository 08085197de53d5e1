#pragma once

#include "IslandStateMachine.h"
#include "IslandWriter.h"
#include "core/IslandIntents.h"
#include "ui/Observers.h"

#include <QSet>

namespace tirlo {

class Notifications;
class SoundEngine;

/// The island as such: how far it is open and on which card. Nothing else writes either.
///
/// Its mode is that of its state machine at every moment. It follows the tasks and the waiting
/// request in the store, hears the notifications, and does what the program and the desktop ask.
class Island final : public QObject, public IslandIntents
{
    Q_OBJECT

public:
    /// A hidden island; all of these outlive it.
    Island(AppState &state, Notifications &notifications, SoundEngine &sounds, MainQueue &queue);

    /// Opens on the greeting; where that could not be seen it only peeks out.
    void greet();

    /// Opens on the card, as the user asks it to from outside; it stays until the pointer has been
    /// on it. In a locked session nobody can ask, and nothing opens.
    void open(IslandView card);

    /// Closes to the compact form, unless a permission request holds it open.
    void collapse();

    /// A click on the island: opens a closed one.
    void click();

    void pointerEntered();
    void pointerLeft();

    /// The user goes round the open island with the keys, which holds it open like the pointer.
    void keyboardEntered();
    void keyboardLeft();

    void show(IslandView card) override;
    void leave(IslandView card) override;
    void say(const QString &note) override;

private:
    void openForEvent(IslandView card);
    void transition(IslandStateMachine::State from, IslandStateMachine::State to);
    void followTasks();
    void followRequest();
    void followLock();
    void followFullScreen();
    void followSight();
    void beDizzy();
    void recover(IslandView previous);

    /// The card that the island opens on by itself.
    [[nodiscard]] IslandView defaultView() const;
    [[nodiscard]] bool hasRequest() const;
    [[nodiscard]] bool isHeldOpen() const;
    [[nodiscard]] QSet<QString> taskIds() const;

    AppState &m_state;
    Notifications &m_notifications;
    SoundEngine &m_sounds;
    MainQueue &m_queue;

    IslandWriter m_writer;
    IslandStateMachine m_machine;
    QSet<QString> m_knownTasks;
    /// It is open, and may be seen.
    bool m_isSeenOpen = false;
    WorkItem m_recovery;
    Observers m_observers;
};

} // namespace tirlo
