#pragma once

#include <QDateTime>
#include <QPointer>

#include <functional>
#include <memory>

class QObject;

namespace tirlo {

/// A handle on one delayed action of the main queue; copies stand for the same action.
///
/// The handle may outlive the action. A default-made one stands for nothing.
class WorkItem
{
public:
    WorkItem() = default;

    /// Keeps the action from running and drops what it captured; harmless when it has run.
    void cancel();

    /// True until the action has run, was cancelled or lost its owner.
    [[nodiscard]] bool isPending() const;

private:
    friend class MainQueue;

    struct Action
    {
        std::function<void()> work;
        QPointer<const QObject> owner;
        bool hasOwner = false;
    };

    std::shared_ptr<Action> m_action;
};

/// The main thread's queue and the two clocks: the one road to time in the program.
///
/// Everything but post() belongs to the main thread.
class MainQueue
{
public:
    virtual ~MainQueue() = default;

    /// Monotonic seconds since an arbitrary origin; they stand still while the machine sleeps.
    [[nodiscard]] virtual double mediaTime() const = 0;

    /// The seconds that the machine has slept so far.
    [[nodiscard]] virtual double timeAsleep() const = 0;

    /// The present date and time of day, local.
    [[nodiscard]] virtual QDateTime wallClock() const = 0;

    /// Runs the work on the main thread soon, in the order of posting; callable from any thread.
    virtual void post(std::function<void()> work) = 0;

    /// Runs the work on the main thread once `seconds` of media time have passed.
    ///
    /// The work is dropped when `owner` is gone by then; a null owner lives for ever. It may run up
    /// to `slack` seconds later still, where one wake-up then serves several actions.
    WorkItem after(double seconds, const QObject *owner, std::function<void()> work,
                   double slack = 0);

protected:
    /// Calls `fire` on the main thread once `seconds` have passed, at most `slack` later.
    virtual void schedule(double seconds, double slack, std::function<void()> fire) = 0;
};

} // namespace tirlo
