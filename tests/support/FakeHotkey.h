#pragma once

#include "platform/Hotkey.h"

namespace tirlo {

/// A hotkey that the test presses, on a keyboard that it may have taken.
class FakeHotkey final : public Hotkey
{
public:
    void hold(const std::optional<KeyPress> &key) override
    {
        held = key;
        ++holds;
    }

    void press() { Q_EMIT pressed(); }
    void take(bool isTaken) { setTaken(isTaken); }

    std::optional<KeyPress> held;
    /// How often something was asked for.
    int holds = 0;
};

} // namespace tirlo
