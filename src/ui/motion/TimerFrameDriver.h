#pragma once

#include "FrameDriver.h"

#include <QSocketNotifier>

#include <cstdint>
#include <optional>

namespace tirlo {

/// Drives frames by a kernel timer; make it on the main thread.
///
/// Frames lie on one fixed grid of the monotonic clock: Qt's own timers know whole milliseconds
/// only, and most refresh rates don't fit those. A frame allocates nothing.
class TimerFrameDriver final : public FrameDriver
{
public:
    TimerFrameDriver();
    ~TimerFrameDriver() override;
    TimerFrameDriver(const TimerFrameDriver &) = delete;
    TimerFrameDriver &operator=(const TimerFrameDriver &) = delete;

    void start(double framesPerSecond) override;
    void stop() override;

private:
    void setTimer(std::int64_t first, std::int64_t period) const;
    void takeFrame() const;

    int m_timer = -1;
    std::optional<QSocketNotifier> m_notifier;
};

} // namespace tirlo
