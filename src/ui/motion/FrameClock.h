#pragma once

#include "Animation.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace tirlo {

class FrameDriver;
class MainQueue;

/// Ticks at the screen's rate while, and only while, somebody is subscribed.
///
/// It belongs to the main thread.
class FrameClock
{
    class Registry;

public:
    /// Takes the media time in seconds.
    using Callback = std::function<void(double mediaTime)>;

    /// Keeps a callback ticking for as long as it lives.
    ///
    /// It may be dropped inside the callback, and may outlive the clock.
    class Subscription
    {
    public:
        Subscription() = default;
        Subscription(Subscription &&other) noexcept;
        Subscription &operator=(Subscription &&other) noexcept;
        ~Subscription();

        /// Ends the ticking, at once even within a frame.
        void reset();

        /// True until reset() or the end of the clock.
        [[nodiscard]] bool isActive() const;

    private:
        friend class FrameClock;

        std::weak_ptr<Registry> m_registry;
        std::uint64_t m_id = 0;
    };

    /// Queue and driver must outlive the clock, which takes the driver's onFrame for itself.
    FrameClock(const MainQueue &queue, FrameDriver &driver);
    ~FrameClock();
    FrameClock(const FrameClock &) = delete;
    FrameClock &operator=(const FrameClock &) = delete;

    /// Calls back once a frame, beginning with the next one.
    [[nodiscard]] Subscription subscribe(Callback callback);

    /// The present media time, for an animation that begins outside a frame.
    [[nodiscard]] double now() const;

    /// Sets the frames a second to the screen's refresh rate; 60 at first, and for a rate outside
    /// 1...1000.
    void setRate(double framesPerSecond);

    /// Set when the desktop asks its programs not to animate.
    void setReducesMotion(bool reduces) { m_reducesMotion = reduces; }

    [[nodiscard]] bool reducesMotion() const { return m_reducesMotion; }

    /// The animation itself, or none while motion is to be reduced.
    [[nodiscard]] Animation permitted(const Animation &animation) const;

private:
    const MainQueue &m_queue;
    std::shared_ptr<Registry> m_registry;
    bool m_reducesMotion = false;
};

} // namespace tirlo
