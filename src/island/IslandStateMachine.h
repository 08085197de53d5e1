#pragma once

#include "platform/MainQueue.h"

#include <QObject>

#include <functional>
#include <optional>

namespace tirlo {

/// Decides whether the island is out of the way, peeks out, is open or plays the greeting.
///
/// It knows nothing of windows, cards or the store: it is fed events, runs one timer at a time and
/// reports every change. It belongs to the main thread.
class IslandStateMachine final : public QObject
{
    Q_OBJECT

public:
    enum class State {
        /// Tucked into the notch.
        hidden,
        /// A small tab around the notch.
        petit,
        /// Open on a card.
        home,
        /// Open on the greeting.
        tirlo,
    };
    Q_ENUM(State)

    /// Seconds from the pointer leaving until `home` falls back to `petit`.
    static constexpr double homeToPetitDelay = 15.0;
    /// Seconds from the pointer leaving until `petit` falls back to `hidden`.
    static constexpr double petitToHiddenDelay = 60.0;
    /// Seconds from the end of the greeting until the island closes.
    static constexpr double greetAutoCollapseDelay = 0.6;
    /// Seconds from the pointer entering during the greeting until the island closes.
    static constexpr double greetHoverCollapseDelay = 10.0;

    /// The queue must outlive the machine.
    explicit IslandStateMachine(MainQueue &queue, QObject *parent = nullptr);

    [[nodiscard]] State state() const { return m_state; }

    /// Told of each change, at once, after the new state holds.
    std::function<void(State oldState, State newState)> onTransition;

    /// True while something forbids closing; absent counts as false.
    std::function<bool()> isHeldOpen;

    /// The pointer has crossed into the island's hit area.
    void mouseEntered();

    /// The pointer has crossed out of the hit area.
    void mouseLeft();

    /// The user goes round the open island with the keys: it does not fall back meanwhile.
    void keyboardEntered();

    /// The keys go elsewhere again.
    void keyboardLeft();

    /// Opens the island, and ends the greeting; an open one forgets that it was about to close.
    void open();

    /// Falls back in a while, as if the pointer had just left, unless it or the keyboard is on the
    /// island or something holds that open.
    void startWaiting();

    /// Closes an open island now, unless something holds it open.
    void collapse();

    /// Tucks a peeking island away.
    void hide();

    /// Opens the island on the greeting.
    void beginGreeting();

    /// The greeting has played to its end: closes soon unless a close is already arranged.
    void greetingFinished();

    /// Makes a hidden island peek out; never closes an open one.
    void reveal();

private:
    void transition(State target);
    void fallBackIn(double seconds, State target);
    void stopWaiting();
    [[nodiscard]] bool mustStayOpen() const;

    MainQueue &m_queue;
    State m_state = State::hidden;
    bool m_isPointerIn = false;
    bool m_isKeyboardIn = false;
    /// One that has run stays: greetingFinished() asks whether one was armed.
    std::optional<WorkItem> m_fallBack;
};

} // namespace tirlo
