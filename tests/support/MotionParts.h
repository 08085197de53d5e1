#pragma once

#include "support/FakeScreens.h"
#include "support/ManualFrameDriver.h"
#include "support/StoreParts.h"
#include "ui/motion/FrameClock.h"

#include <QCoreApplication>

namespace tirlo {

/// The store and the services around it, and frames that are drawn as their time passes.
struct MotionParts : StoreParts
{
    /// Lets frames pass, each painted.
    void play(double seconds)
    {
        for (int i = 0; i < int(seconds * 60 + 0.5); ++i) {
            queue.advance(1.0 / 60);
            QCoreApplication::processEvents();
        }
    }

    ManualFrameDriver driver{queue};
    FrameClock frames{queue, driver};
    FakeScreens screens;
};

} // namespace tirlo
