#include "TimerFrameDriver.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <cmath>
#include <ctime>

namespace tirlo {

namespace {

constexpr std::int64_t nanosecondsASecond = 1'000'000'000;

std::int64_t monotonicNanoseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * nanosecondsASecond + now.tv_nsec;
}

timespec timeOf(std::int64_t nanoseconds)
{
    return {nanoseconds / nanosecondsASecond, nanoseconds % nanosecondsASecond};
}

} // namespace

TimerFrameDriver::TimerFrameDriver()
    : m_timer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_timer < 0) {
        qWarning("No timer for frames could be made: animations stand still.");
        return;
    }
    m_notifier.emplace(m_timer, QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &*m_notifier,
                     [this] { takeFrame(); });
}

TimerFrameDriver::~TimerFrameDriver()
{
    m_notifier.reset();
    if (m_timer >= 0)
        close(m_timer);
}

void TimerFrameDriver::start(double framesPerSecond)
{
    const std::int64_t period = std::llround(double(nanosecondsASecond) / framesPerSecond);
    setTimer((monotonicNanoseconds() / period + 1) * period, period);
}

void TimerFrameDriver::stop()
{
    setTimer(0, 0);
}

void TimerFrameDriver::setTimer(std::int64_t first, std::int64_t period) const
{
    const itimerspec setting{.it_interval = timeOf(period), .it_value = timeOf(first)};
    timerfd_settime(m_timer, TFD_TIMER_ABSTIME, &setting, nullptr);
}

void TimerFrameDriver::takeFrame() const
{
    // The count of expirations, read to clear it: however many were missed, one frame is drawn.
    std::uint64_t expirations = 0;
    if (read(m_timer, &expirations, sizeof expirations) == sizeof expirations && onFrame)
        onFrame();
}

} // namespace tirlo
