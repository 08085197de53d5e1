#include "DesktopSessionLock.h"

namespace tirlo {

DesktopSessionLock::DesktopSessionLock(const XcbStack &stack, MainQueue &queue)
    : m_windows(stack, queue)
{
    connect(&m_buses, &BusLocker::changed, this, &SessionLock::changed);
    connect(&m_windows, &XcbLocker::changed, this, &SessionLock::changed);
}

} // namespace tirlo
