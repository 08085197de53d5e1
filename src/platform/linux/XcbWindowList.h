#pragma once

#include "EwmhWindows.h"

#include "platform/WindowList.h"

#include <QAbstractNativeEventFilter>

namespace tirlo {

/// Follows the window manager's word on which window is active; without X it stays silent.
class XcbWindowList final : public WindowList, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    XcbWindowList();

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void readActiveWindow();

    EwmhWindows m_windows;
    RunningApplication m_active;
};

} // namespace tirlo
