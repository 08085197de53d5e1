#pragma once

#include "platform/MainQueue.h"

#include <QObject>

#include <functional>
#include <optional>

namespace tirlo {

/// Decides whether the island is out of the way, peeks out, is open or plays the greeting.
///
/// It knows nothing of windows, sizes or the store: it is fed events, runs three one-shot timers
/// and reports changes. It belongs to the main thread.
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

    /// Told of each reported change, at once, after the new state holds; may call back in.
    std::function<void(State oldState, State newState)> onTransition;

    /// True while something forbids closing; absent counts as false.
    std::function<bool()> isHeldOpen;

    /// The pointer has crossed into the island's hit area.
    void mouseEntered();

    /// The pointer has crossed out of the hit area, or is found outside after a change.
    void mouseLeft();

    /// The user clicked the island.
    void click();

    /// Closes an open island now.
    void collapse();

    /// Cancels and forgets all three timers, those that have fired included.
    void cancelTimers();

    /// Opens the island on the greeting.
    void beginGreeting();

    /// The greeting has played to its end: closes soon unless a close is already arranged.
    void greetingFinished();

    /// Makes a hidden island peek out; never closes an open one.
    void reveal();

    /// Keeps the island open on what the caller is about to show, without a report.
    void holdOpen();

    /// Follows a peeking island that was hidden by somebody else, without a report.
    void noteHidden();

private:
    void transition(State target);
    void schedulePetitHide();
    void scheduleHomeCollapse();
    void scheduleGreetCollapse(double delay);
    [[nodiscard]] bool mustStayOpen() const;

    MainQueue &m_queue;
    State m_state = State::hidden;

    // An item that has fired stays in its field: greetingFinished() asks whether one was armed.
    std::optional<WorkItem> m_petitHideWork;
    std::optional<WorkItem> m_homeCollapseWork;
    std::optional<WorkItem> m_greetCollapseWork;
};

} // namespace tirlo
