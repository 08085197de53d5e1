#pragma once

#include "platform/InputMonitor.h"

namespace tirlo {

/// An input monitor that reports what a test does in some other program.
class FakeInputMonitor final : public InputMonitor
{
public:
    void pressKey(std::uint16_t keyCode, std::uint32_t modifiers = 0)
    {
        Q_EMIT keyDown({keyCode, modifiers});
    }
};

} // namespace tirlo
