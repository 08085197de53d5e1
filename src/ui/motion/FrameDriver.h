#pragma once

#include <functional>

namespace tirlo {

/// What makes a FrameClock tick: a repeating timer that can be started and stopped at will.
class FrameDriver
{
public:
    virtual ~FrameDriver() = default;

    /// Calls onFrame so many times a second from now on; a running driver changes its rate.
    virtual void start(double framesPerSecond) = 0;

    /// Calls onFrame no more until the next start().
    virtual void stop() = 0;

    /// Called on the main thread once a frame; late frames are merged into one call.
    std::function<void()> onFrame;
};

} // namespace tirlo
