#pragma once

#include "EwmhWindows.h"
#include "XcbStack.h"

#include "platform/WindowList.h"

#include <QAbstractNativeEventFilter>

namespace tirlo {

/// Follows the window manager's word on which window is active and what lies in front; without X it
/// stays silent.
class XcbWindowList final : public WindowList, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// The stack outlives the list.
    explicit XcbWindowList(const XcbStack &stack);

    [[nodiscard]] bool isFullScreen(const QRectF &screen) const override;

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void readActiveWindow();
    void forget();

    const XcbStack &m_stack;
    EwmhWindows m_windows;
    RunningApplication m_active;
    /// What the clients that were looked at say of themselves, until something may have changed.
    mutable QHash<xcb_window_t, ClientState> m_states;
};

} // namespace tirlo
