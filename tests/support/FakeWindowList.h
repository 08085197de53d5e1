#pragma once

#include "platform/WindowList.h"

namespace tirlo {

/// A window list in which a test brings applications to the front.
class FakeWindowList final : public WindowList
{
public:
    void activate(const RunningApplication &application)
    {
        Q_EMIT applicationActivated(application);
    }
};

} // namespace tirlo
