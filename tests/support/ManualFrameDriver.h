#pragma once

#include "platform/MainQueue.h"
#include "ui/motion/FrameDriver.h"

namespace tirlo {

/// Drives frames by a main queue: moving a manual queue's time on draws the frames that fall due.
class ManualFrameDriver final : public FrameDriver
{
public:
    explicit ManualFrameDriver(MainQueue &queue)
        : m_queue(queue)
    {
    }
    ~ManualFrameDriver() override { m_next.cancel(); }

    void start(double framesPerSecond) override
    {
        rate = framesPerSecond;
        ++starts;
        isRunning = true;
        arm();
    }

    void stop() override
    {
        isRunning = false;
        m_next.cancel();
    }

    double rate = 0;
    int starts = 0;
    bool isRunning = false;

private:
    void arm()
    {
        m_next.cancel();
        m_next = m_queue.after(1 / rate, nullptr, [this] {
            arm();
            onFrame();
        });
    }

    MainQueue &m_queue;
    WorkItem m_next;
};

} // namespace tirlo
