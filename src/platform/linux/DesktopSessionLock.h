#pragma once

#include "BusLocker.h"
#include "XcbLocker.h"

#include "platform/SessionLock.h"

namespace tirlo {

/// A session is locked when either the buses tell so or a program covers the screen and has the
/// keyboard.
class DesktopSessionLock final : public SessionLock
{
    Q_OBJECT

public:
    /// Both outlive this object.
    DesktopSessionLock(const XcbStack &stack, MainQueue &queue);

    [[nodiscard]] bool isLocked() const override
    {
        return m_buses.isLocked() || m_windows.isLocked();
    }

private:
    BusLocker m_buses;
    XcbLocker m_windows;
};

} // namespace tirlo
